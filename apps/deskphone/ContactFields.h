/** A contact as the fields of a trace's event. */
#pragma once

#include "Contact.h"

namespace Deskphone
{
class EventFields;
class FieldWriter;

Contact readContact(EventFields& fields, const std::string& contactId);
void writeContact(FieldWriter& fields, const Contact& contact);
} // namespace Deskphone
