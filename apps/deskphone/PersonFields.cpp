#include "PersonFields.h"

#include "EventFields.h"
#include "FieldWriter.h"

namespace Deskphone
{
namespace
{
struct Field
{
    std::string Contact::*value;
    std::string DirectoryContact::*ofHit;
    std::string WSIItem::*ofWebContact;
};

constexpr Field FIELDS[] = {
    {&Contact::first, &DirectoryContact::firstName, &WSIItem::firstName},
    {&Contact::last, &DirectoryContact::lastName, &WSIItem::lastName},
    {&Contact::work, &DirectoryContact::workNumber1, &WSIItem::workNumber1},
    {&Contact::work2, &DirectoryContact::workNumber2, &WSIItem::workNumber2},
    {&Contact::mobile, &DirectoryContact::mobileNumber, &WSIItem::mobileNumber},
    {&Contact::home, &DirectoryContact::homeNumber, &WSIItem::homeNumber},
    {&Contact::email, &DirectoryContact::email, &WSIItem::email},
    {&Contact::company, &DirectoryContact::company, &WSIItem::company},
    {&Contact::address, &DirectoryContact::address1, &WSIItem::address1},
    {&Contact::address2, &DirectoryContact::address2, &WSIItem::address2},
    {&Contact::role, &DirectoryContact::role, &WSIItem::role},
};
} // namespace

PersonFields::PersonFields(EventFields& fields)
{
    for (const ContactField& field : CONTACT_FIELDS)
    {
        person_.*field.value = field.isOfPerson ? fields.text(field.name) : "";
    }
}

void PersonFields::write(FieldWriter& fields) const
{
    for (const ContactField& field : CONTACT_FIELDS)
    {
        fields.text(field.name, person_.*field.value);
    }
}

PhonebookSearchResults::Entry PersonFields::entry() const
{
    PhonebookSearchResults::Entry entry;
    for (const ContactField& field : CONTACT_FIELDS)
    {
        if (!(person_.*field.value).empty())
        {
            entry[field.element] = person_.*field.value;
        }
    }
    return entry;
}

DirectoryContact PersonFields::hit() const
{
    DirectoryContact hit;
    for (const Field& field : FIELDS)
    {
        hit.*field.ofHit = person_.*field.value;
    }
    return hit;
}

WSIItem PersonFields::webContact() const
{
    WSIItem contact;
    for (const Field& field : FIELDS)
    {
        contact.*field.ofWebContact = person_.*field.value;
    }
    return contact;
}
} // namespace Deskphone
