#include "sources/ContactFields.h"

#include "ConversationAPI/Conversation.h"

#include <algorithm>
#include <utility>

namespace ConversationAPI
{
namespace
{
constexpr const char* NICKNAME_RESULTS = "NICKNAME_RESULTS";
constexpr const char* NICKNAME = "Nickname";

using Field = std::string DirectoryContact::*;

/** What a search answers under which key. */
constexpr std::pair<const char*, Field> ENTRY_KEYS[] = {
    {"Surname", &DirectoryContact::lastName},    {"Firstname", &DirectoryContact::firstName},
    {"Office", &DirectoryContact::workNumber1},  {"Office2", &DirectoryContact::workNumber2},
    {"Mobile", &DirectoryContact::mobileNumber}, {"Private", &DirectoryContact::homeNumber},
    {"Email", &DirectoryContact::email},         {"Company", &DirectoryContact::company},
    {"JobFunction", &DirectoryContact::role},    {"Address", &DirectoryContact::address1},
    {"Address2", &DirectoryContact::address2},   {"Avatar", &DirectoryContact::picturePath},
    {NICKNAME, &DirectoryContact::nickname},     {"ContactSource", &DirectoryContact::contactSource}};

/** The facts of a person; the others tell how the person was found. */
constexpr Field PERSONAL_FIELDS[] = {
    &DirectoryContact::firstName,   &DirectoryContact::lastName,     &DirectoryContact::workNumber1,
    &DirectoryContact::workNumber2, &DirectoryContact::mobileNumber, &DirectoryContact::homeNumber,
    &DirectoryContact::email,       &DirectoryContact::company,      &DirectoryContact::address1,
    &DirectoryContact::address2,    &DirectoryContact::role,         &DirectoryContact::picturePath};

bool isWSIContact(const Conversation* conversation)
{
    return conversation && conversation->getContactSource() == Conversation::WSI_CONTACT;
}
} // namespace

std::array<MainNumber, CONTACT_NUMBER_SLOTS> numbersOf(const DirectoryContact& contact)
{
    return {{{contact.workNumber1, CallPartyIdentifier::WORK_1},
             {contact.workNumber2, CallPartyIdentifier::WORK_2},
             {contact.mobileNumber, CallPartyIdentifier::MOBILE},
             {contact.homeNumber, CallPartyIdentifier::HOME}}};
}

MainNumber firstNumberOf(const DirectoryContact& contact)
{
    const auto numbers = numbersOf(contact);
    const auto first =
        std::find_if(numbers.begin(), numbers.end(), [](const MainNumber& one) { return !one.number.empty(); });
    return first == numbers.end() ? MainNumber() : *first;
}

bool namesNobody(const DirectoryContact& contact)
{
    return contact.nickname.empty() && std::all_of(std::begin(PERSONAL_FIELDS), std::end(PERSONAL_FIELDS),
                                                   [&contact](Field field) { return (contact.*field).empty(); });
}

bool entryIsNicknameResults(const PhonebookSearchResults::Entry& entry)
{
    const auto nickname = entry.find(NICKNAME);
    return entry.count(NICKNAME_RESULTS) != 0 || (nickname != entry.end() && nickname->second == NICKNAME_RESULTS);
}

DirectoryContact contactOfEntry(const PhonebookSearchResults::Entry& entry, const std::string& searchId)
{
    DirectoryContact contact;
    contact.searchId = searchId;
    for (const auto& [key, field] : ENTRY_KEYS)
    {
        const auto value = entry.find(key);
        if (value != entry.end())
        {
            contact.*field = value->second;
        }
    }
    return contact;
}

DirectoryContact contactOfWSIItem(const WSIItem& item)
{
    DirectoryContact contact;
    contact.searchId = item.searchId;
    contact.firstName = item.firstName;
    contact.lastName = item.lastName;
    contact.workNumber1 = item.workNumber1;
    contact.workNumber2 = item.workNumber2;
    contact.mobileNumber = item.mobileNumber;
    contact.homeNumber = item.homeNumber;
    contact.email = item.email;
    contact.company = item.company;
    contact.address1 = item.address1;
    contact.address2 = item.address2;
    contact.role = item.role;
    return contact;
}

DirectoryContact contactOfConversation(const Conversation& conversation)
{
    DirectoryContact contact;
    contact.searchId = conversation.getSearchId();
    contact.firstName = conversation.getFirstName();
    contact.lastName = conversation.getLastName();
    contact.workNumber1 = conversation.getWorkNumber1();
    contact.workNumber2 = conversation.getWorkNumber2();
    contact.mobileNumber = conversation.getMobileNumber();
    contact.homeNumber = conversation.getHomeNumber();
    contact.email = conversation.getEmail();
    contact.company = conversation.getCompany();
    contact.address1 = conversation.getAddress1();
    contact.address2 = conversation.getAddress2();
    contact.role = conversation.getRole();
    contact.picturePath = conversation.getContactImagePath();
    contact.contactSource = conversation.getOrderedContactSourceAsString();
    return contact;
}

bool isOnlyWSIContactPresent(const Conversation* known, const DirectoryContact& hit)
{
    return isWSIContact(known) && hit.firstName.empty() && hit.lastName.empty() && hit.email.empty();
}

bool wsiContactNeedsUpdateWithLdap(const Conversation* known, const DirectoryContact& hit)
{
    if (!isWSIContact(known))
    {
        return false;
    }
    const DirectoryContact has = contactOfConversation(*known);
    return std::any_of(std::begin(PERSONAL_FIELDS), std::end(PERSONAL_FIELDS),
                       [&](Field field) { return !(hit.*field).empty() && hit.*field != has.*field; });
}

DirectoryContact completedBy(DirectoryContact hit, const DirectoryContact& known)
{
    for (const Field field : PERSONAL_FIELDS)
    {
        if ((hit.*field).empty())
        {
            hit.*field = known.*field;
        }
    }
    if (hit.contactSource.empty())
    {
        hit.contactSource = known.contactSource;
    }
    return hit;
}

DirectoryContact completedBy(DirectoryContact hit, const Conversation& known)
{
    return completedBy(std::move(hit), contactOfConversation(known));
}
} // namespace ConversationAPI
