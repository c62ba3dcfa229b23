#include "lists/NumberIndex.h"

#include "ConversationAPI/Conversation.h"

#include <algorithm>
#include <utility>

namespace ConversationAPI
{
namespace
{
/** Each may keep the details of a contact that have changed since. */
constexpr std::size_t MOST_CHANGES = 65'536;
} // namespace

void NumberIndex::associate(const std::string& number, Conversation* conversation)
{
    if (number.empty() || !conversation)
    {
        return;
    }
    const CopyOnWrite<ContactDetails>& contact = conversation->contactDetails();
    const auto slot = std::find_if(ALL_CONTACT_NUMBER_SLOTS.begin(), ALL_CONTACT_NUMBER_SLOTS.end(),
                                   [&](ContactNumberSlot one) { return contact->numbers.at(one) == number; });
    if (slot != ALL_CONTACT_NUMBER_SLOTS.end())
    {
        note({conversation, contact, {}, *slot});
    }
    else
    {
        note({conversation, {}, SharedText(number)});
    }
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): the analyser does not follow the count of owners.
}

void NumberIndex::associate(Conversation* conversation)
{
    if (changes_.empty() && numbers_.empty())
    {
        first_.push_back(conversation);
    }
    else if (conversation->contactDetails().isSet())
    {
        note({conversation, conversation->contactDetails(), {}});
    }
}

void NumberIndex::remove(const std::string& number)
{
    note({nullptr, {}, SharedText(number)});
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): the analyser does not follow the count of owners.
}

/** Of conversations that are deleted after clear(), nothing is known any more. */
void NumberIndex::remove(Conversation* conversation)
{
    if (!first_.empty()) // others may have lost numbers to it, and it cannot be asked for them later
    {
        gone_.emplace(conversation, conversation->contactDetails());
    }
    if (!first_.empty() || !changes_.empty() || !numbers_.empty())
    {
        note({conversation, {}, {}});
    }
}

void NumberIndex::clear()
{
    first_.clear();
    gone_.clear();
    changes_.clear();
    numbers_.clear();
    claims_.clear();
}

Conversation* NumberIndex::find(const std::string& number) const
{
    applyChanges();
    const auto found = numbers_.find(number);
    return found == numbers_.end() ? nullptr : found->second;
}

void NumberIndex::note(Change change)
{
    changes_.push_back(std::move(change));
    if (changes_.size() >= MOST_CHANGES)
    {
        applyChanges();
    }
}

void NumberIndex::applyChanges() const
{
    for (Conversation* conversation : first_)
    {
        const auto gone = gone_.find(conversation);
        const auto& contact = gone == gone_.end() ? conversation->contactDetails() : gone->second;
        associateContact(*contact, CONTACT_NUMBER_SLOTS, conversation);
    }
    first_.clear();
    gone_.clear();
    for (const Change& change : changes_)
    {
        apply(change);
    }
    changes_.clear();
}

void NumberIndex::apply(const Change& change) const
{
    if (!change.conversation)
    {
        removeNow(change.number.str());
    }
    else if (change.contact.isSet())
    {
        associateContact(*change.contact, change.slot, change.conversation);
    }
    else if (!change.number.empty())
    {
        associateNumberWithConversation("", change.number.str(), change.conversation);
    }
    else
    {
        removeNow(change.conversation);
    }
}

void NumberIndex::associateContact(const ContactDetails& contact, unsigned slot, Conversation* conversation) const
{
    if (slot < CONTACT_NUMBER_SLOTS)
    {
        associateNumberWithConversation("", contact.numbers.at(slot), conversation);
        return;
    }
    associateNumberWithConversation("work1", contact.numbers.at(WORK_1_SLOT), conversation);
    associateNumberWithConversation("work2", contact.numbers.at(WORK_2_SLOT), conversation);
    associateNumberWithConversation("mobile", contact.numbers.at(MOBILE_SLOT), conversation);
    associateNumberWithConversation("home", contact.numbers.at(HOME_SLOT), conversation);
}

/** Whose number it was loses it. What kind of number it is has always been told, and never been kept. */
void NumberIndex::associateNumberWithConversation(const char*, const std::string& number,
                                                  Conversation* conversation) const
{
    if (number.empty())
    {
        return;
    }
    const auto [known, isNew] = numbers_.emplace(number, conversation);
    if (!isNew && known->second == conversation)
    {
        return;
    }
    if (!isNew)
    {
        forgetClaim(*known);
        known->second = conversation;
    }
    claims_[conversation].push_back(&*known);
}

void NumberIndex::removeNow(const std::string& number) const
{
    const auto known = numbers_.find(number);
    if (known != numbers_.end())
    {
        forgetClaim(*known);
        numbers_.erase(known);
    }
}

void NumberIndex::removeNow(Conversation* conversation) const
{
    const auto claims = claims_.find(conversation);
    if (claims == claims_.end())
    {
        return;
    }
    for (const Numbers::pointer number : claims->second)
    {
        numbers_.erase(numbers_.find(number->first));
    }
    claims_.erase(claims);
}

void NumberIndex::forgetClaim(Numbers::value_type& number) const
{
    Claims& claims = claims_[number.second];
    claims.erase(std::remove(claims.begin(), claims.end(), &number), claims.end());
}
} // namespace ConversationAPI
