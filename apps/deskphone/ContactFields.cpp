#include "ContactFields.h"

#include "EventFields.h"
#include "FieldWriter.h"

namespace Deskphone
{
Contact readContact(EventFields& fields, const std::string& contactId)
{
    return {contactId,           fields.text("first"), fields.text("last"),
            fields.text("work"), fields.text("work2"), fields.text("mobile"),
            fields.text("home")};
}

void writeContact(FieldWriter& fields, const Contact& contact)
{
    fields.text("contactId", contact.contactId);
    fields.text("first", contact.first);
    fields.text("last", contact.last);
    fields.text("work", contact.work);
    fields.text("work2", contact.work2);
    fields.text("mobile", contact.mobile);
    fields.text("home", contact.home);
}
} // namespace Deskphone
