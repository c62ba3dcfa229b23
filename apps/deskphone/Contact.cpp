#include "Contact.h"

#include "platform/ClientUtils.h"

namespace Deskphone
{
namespace
{
constexpr const char* ID = "UniqueID";

/** Its value is the type of the number, as a number. */
constexpr const char* MAIN_NUMBER = "DefaultNumber";

std::string element(const std::string& name, const std::string& value)
{
    return '<' + name + '>' + ClientUtils::escapeXMLString(value) + "</" + name + '>';
}

std::string valueOf(const std::string& message, const std::string& element)
{
    return ClientUtils::unescapeXMLString(ClientUtils::extractValueFromXMLString(message, element));
}

std::string message(const std::string& reason, const std::string& entry)
{
    return R"(<?xml version="1.0" encoding="utf-8"?><Schema name="PhoneBook">)" + element("ReasonForMessage", reason) +
           "<Entry>" + entry + "</Entry></Schema>";
}

/** A code that no type has names no number, as 0 does. */
CallPartyIdentifier::PhoneNumberIconType typeOf(const std::string& code)
{
    const int type = ClientUtils::stoi(code);
    const bool isKnown = type >= CallPartyIdentifier::NO_ICON && type <= CallPartyIdentifier::MOBILE;
    return isKnown ? static_cast<CallPartyIdentifier::PhoneNumberIconType>(type) : CallPartyIdentifier::NO_ICON;
}
} // namespace

std::string writeRequest(const Contact& contact)
{
    std::string entry = contact.contactId.empty() ? "" : element(ID, contact.contactId);
    for (const ContactField& field : CONTACT_FIELDS)
    {
        entry += element(field.element, contact.*field.value);
    }
    return message("write_request", entry + element(MAIN_NUMBER, ClientUtils::itos(contact.mainNumber)));
}

std::string readRequest(const std::string& contactId)
{
    return message("read_request", element(ID, contactId));
}

Contact contactOf(const std::string& message)
{
    Contact contact;
    contact.contactId = valueOf(message, ID);
    for (const ContactField& field : CONTACT_FIELDS)
    {
        contact.*field.value = valueOf(message, field.element);
    }
    contact.mainNumber = typeOf(valueOf(message, MAIN_NUMBER));
    return contact;
}
} // namespace Deskphone
