#include "sources/PhonebookMessage.h"

#include "platform/ClientUtils.h"

#include <algorithm>

namespace ConversationAPI
{
namespace
{
constexpr const char* HEAD = "<?xml version=\"1.0\" encoding=\"utf-8\"?><Schema name=\"PhoneBook\">";
constexpr const char* TAIL = "</Entry></Schema>";

std::string extractParam(const std::string& xml, const char* key)
{
    return ClientUtils::extractValueFromXMLString(xml, key);
}

std::string extractEscapedParam(const std::string& xml, const char* key)
{
    return ClientUtils::unescapeXMLString(extractParam(xml, key));
}

std::string element(const std::string& key, const std::string& value)
{
    return "<" + key + ">" + ClientUtils::escapeXMLString(value) + "</" + key + ">";
}

std::string opening(const char* reason)
{
    return HEAD + element("ReasonForMessage", reason) + "<Entry>";
}

/** Codes are number types; that of no number has the phonebook's reader look for the first that there is. */
std::string codeOf(CallPartyIdentifier::PhoneNumberIconType type)
{
    return ClientUtils::itos(type);
}

std::string fileNameOf(const std::string& full)
{
    std::string path;
    std::string fileName;
    ClientUtils::spiltFilenameAndPath(full, path, fileName);
    return fileName;
}
} // namespace

PhonebookEntry readPhonebookEntry(const std::string& xml)
{
    PhonebookEntry entry;
    DirectoryContact& contact = entry.contact;
    contact.firstName = extractEscapedParam(xml, "Firstname");
    contact.lastName = extractEscapedParam(xml, "Surname");
    contact.workNumber1 = extractEscapedParam(xml, "Office");
    contact.workNumber2 = extractEscapedParam(xml, "Office2");
    contact.mobileNumber = extractEscapedParam(xml, "Mobile");
    contact.homeNumber = extractEscapedParam(xml, "Private");
    entry.defaultNumber = extractParam(xml, "DefaultNumber");
    contact.picturePath = extractEscapedParam(xml, "Picture");
    contact.email = extractEscapedParam(xml, "Email");
    contact.company = extractEscapedParam(xml, "Company");
    contact.address1 = extractEscapedParam(xml, "Address");
    contact.address2 = extractEscapedParam(xml, "Address2");
    contact.role = extractEscapedParam(xml, "JobFunction");
    entry.externalId = extractEscapedParam(xml, "ExternalID");
    contact.contactSource = extractEscapedParam(xml, "ContactSource");
    entry.uniqueId = extractEscapedParam(xml, "UniqueID");
    return entry;
}

MainNumber defaultNumberOf(const PhonebookEntry& entry)
{
    if (entry.defaultNumber == codeOf(CallPartyIdentifier::NO_ICON))
    {
        return firstNumberOf(entry.contact);
    }
    const auto numbers = numbersOf(entry.contact);
    const auto meant =
        std::find_if(numbers.begin(), numbers.end(),
                     [&entry](const MainNumber& one) { return entry.defaultNumber == codeOf(one.type); });
    return meant == numbers.end() ? MainNumber() : *meant;
}

std::string writeRequest(const DirectoryContact& contact, const std::string& contactId)
{
    std::string xml = opening("write_request");
    xml += element("Surname", contact.lastName) + element("Firstname", contact.firstName);
    xml += element("Office", contact.workNumber1) + element("Mobile", contact.mobileNumber);
    xml += element("Private", contact.homeNumber) + element("Email", contact.email);
    xml += element("Group", "");
    xml += element("DefaultNumber", codeOf(firstNumberOf(contact).type));
    xml += element("Company", contact.company) + element("Office2", contact.workNumber2);
    xml += element("Address", contact.address1) + element("Address2", contact.address2);
    xml += element("JobFunction", contact.role);
    xml += element("VoiceDial", "");
    xml += element("Picture", fileNameOf(contact.picturePath));
    xml += contactId.empty() ? "" : element("UniqueID", contactId);
    xml += element("ContactSource", contact.contactSource);
    return xml + TAIL;
}

std::string readRequest(const std::string& contactId)
{
    return opening("read_request") + element("UniqueID", contactId) + TAIL;
}
} // namespace ConversationAPI
