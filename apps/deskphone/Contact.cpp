#include "Contact.h"

#include "platform/ClientUtils.h"

#include <array>

namespace Deskphone
{
namespace
{
struct Field
{
    const char* element;
    std::string Contact::*value;
};

constexpr std::array<Field, 7> FIELDS{{{"UniqueID", &Contact::contactId},
                                       {"Firstname", &Contact::first},
                                       {"Surname", &Contact::last},
                                       {"Office", &Contact::work},
                                       {"Office2", &Contact::work2},
                                       {"Mobile", &Contact::mobile},
                                       {"Private", &Contact::home}}};

std::string element(const std::string& name, const std::string& value)
{
    return '<' + name + '>' + ClientUtils::escapeXMLString(value) + "</" + name + '>';
}

std::string message(const std::string& reason, const std::string& entry)
{
    return R"(<?xml version="1.0" encoding="utf-8"?><Schema name="PhoneBook">)" + element("ReasonForMessage", reason) +
           "<Entry>" + entry + "</Entry></Schema>";
}
} // namespace

std::string writeRequest(const Contact& contact)
{
    std::string entry;
    for (const Field& field : FIELDS)
    {
        const bool isNewOnesId = field.value == &Contact::contactId && contact.contactId.empty();
        entry += isNewOnesId ? "" : element(field.element, contact.*field.value);
    }
    return message("write_request", entry + element("DefaultNumber", "0"));
}

std::string readRequest(const std::string& contactId)
{
    return message("read_request", element("UniqueID", contactId));
}

Contact contactOf(const std::string& message)
{
    Contact contact;
    for (const Field& field : FIELDS)
    {
        contact.*field.value =
            ClientUtils::unescapeXMLString(ClientUtils::extractValueFromXMLString(message, field.element));
    }
    return contact;
}
} // namespace Deskphone
