#include "PersonFields.h"

#include "EventFields.h"
#include "FieldWriter.h"

namespace Deskphone
{
namespace
{
struct Field
{
    const char* name; ///< in a trace
    const char* key;  ///< in an entry
    std::string DirectoryContact::*ofHit;
    std::string WSIItem::*ofWebContact;
};

constexpr Field FIELDS[] = {
    {"first", "Firstname", &DirectoryContact::firstName, &WSIItem::firstName},
    {"last", "Surname", &DirectoryContact::lastName, &WSIItem::lastName},
    {"work", "Office", &DirectoryContact::workNumber1, &WSIItem::workNumber1},
    {"work2", "Office2", &DirectoryContact::workNumber2, &WSIItem::workNumber2},
    {"mobile", "Mobile", &DirectoryContact::mobileNumber, &WSIItem::mobileNumber},
    {"home", "Private", &DirectoryContact::homeNumber, &WSIItem::homeNumber},
    {"email", "Email", &DirectoryContact::email, &WSIItem::email},
    {"company", "Company", &DirectoryContact::company, &WSIItem::company},
};
} // namespace

PersonFields::PersonFields(EventFields& fields)
{
    static_assert(std::size(FIELDS) == std::tuple_size_v<decltype(values_)>);
    for (std::size_t i = 0; i < values_.size(); ++i)
    {
        values_[i] = fields.text(FIELDS[i].name);
    }
}

void PersonFields::write(FieldWriter& fields) const
{
    for (std::size_t i = 0; i < values_.size(); ++i)
    {
        fields.text(FIELDS[i].name, values_[i]);
    }
}

PhonebookSearchResults::Entry PersonFields::entry() const
{
    PhonebookSearchResults::Entry entry;
    for (std::size_t i = 0; i < values_.size(); ++i)
    {
        if (!values_[i].empty())
        {
            entry[FIELDS[i].key] = values_[i];
        }
    }
    return entry;
}

DirectoryContact PersonFields::hit() const
{
    DirectoryContact hit;
    for (std::size_t i = 0; i < values_.size(); ++i)
    {
        hit.*FIELDS[i].ofHit = values_[i];
    }
    return hit;
}

WSIItem PersonFields::webContact() const
{
    WSIItem contact;
    for (std::size_t i = 0; i < values_.size(); ++i)
    {
        contact.*FIELDS[i].ofWebContact = values_[i];
    }
    return contact;
}
} // namespace Deskphone
