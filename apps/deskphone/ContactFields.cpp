#include "ContactFields.h"

#include "EventFields.h"
#include "FieldWriter.h"

namespace Deskphone
{
Contact readContact(EventFields& fields, const std::string& contactId)
{
    Contact contact;
    contact.contactId = contactId;
    for (const ContactField& field : CONTACT_FIELDS)
    {
        contact.*field.value = fields.text(field.name);
    }
    contact.mainNumber = fields.choice("mainNumber", EventFields::partyTypes(), CallPartyIdentifier::NO_ICON);
    return contact;
}

void writeContact(FieldWriter& fields, const Contact& contact)
{
    fields.text("contactId", contact.contactId);
    for (const ContactField& field : CONTACT_FIELDS)
    {
        fields.text(field.name, contact.*field.value);
    }
    fields.choice("mainNumber", EventFields::partyTypes(), contact.mainNumber);
}
} // namespace Deskphone
