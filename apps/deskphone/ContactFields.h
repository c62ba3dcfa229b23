/** A contact as the fields of a trace's event, and as the options of a command. */
#pragma once

#include "Contact.h"

#include <array>

namespace Deskphone
{
class EventFields;
class FieldWriter;

struct ContactField
{
    const char* name;
    const char* meaning;
    std::string Contact::*value;
};

/** All that there is of a contact beside its id. */
inline constexpr std::array<ContactField, 6> CONTACT_FIELDS{{{"first", "First name", &Contact::first},
                                                             {"last", "Last name", &Contact::last},
                                                             {"work", "Number at work", &Contact::work},
                                                             {"work2", "Second number at work", &Contact::work2},
                                                             {"mobile", "Mobile number", &Contact::mobile},
                                                             {"home", "Number at home", &Contact::home}}};

Contact readContact(EventFields& fields, const std::string& contactId);
void writeContact(FieldWriter& fields, const Contact& contact);
} // namespace Deskphone
