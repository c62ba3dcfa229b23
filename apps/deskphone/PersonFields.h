/** Somebody whom a directory knows, as the fields of a trace's event and as the directories tell of people. */
#pragma once

#include "Contact.h"
#include "platform/DirectoryServiceIfc.h"
#include "platform/WSIServiceIfc.h"

namespace Deskphone
{
class EventFields;
class FieldWriter;

class PersonFields
{
  public:
    explicit PersonFields(EventFields& fields);

    void write(FieldWriter& fields) const;

    /** An entry of a search's results, without the keys that it has no value for. */
    PhonebookSearchResults::Entry entry() const;

    /** One hit, without its search id. */
    DirectoryContact hit() const;

    /** A contact of the web service, without its ids. */
    WSIItem webContact() const;

  private:
    Contact person_;
};
} // namespace Deskphone
