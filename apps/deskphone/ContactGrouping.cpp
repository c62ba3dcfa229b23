#include "ContactGrouping.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationItemAggregator.h"
#include "ConversationAPI/DirectoryServiceConversationSource.h"
#include "ConversationAPI/RandomCachingConversationIDGenerator.h"

#include <algorithm>
#include <utility>

namespace Deskphone
{
using ConversationAPI::ContactDetails;
using ConversationAPI::ContactNumbers;
using ConversationAPI::Conversation;

namespace
{
bool hasLostNumber(const ContactDetails& before, const ContactDetails& now)
{
    const ContactNumbers numbers = before.numbers.four();
    return std::any_of(numbers.begin(), numbers.end(),
                       [&now](const std::string& number) { return !number.empty() && !now.numbers.has(number); });
}
} // namespace

ContactGrouping::ContactGrouping(ConversationAPI::DirectoryServiceConversationSource& contacts,
                                 ConversationAPI::ConversationItemAggregator& history,
                                 ConversationAPI::RandomCachingConversationIDGenerator& ids)
    : contacts_(contacts), history_(history), ids_(ids)
{
}

/** Calls that go on stand on their own numbers, too: only anew does each find where it belongs now. */
void ContactGrouping::conversationUpdated(Conversation* contact)
{
    const auto [known, isNew] = known_.try_emplace(contact->getConversationId());
    const Details before = std::exchange(known->second, contact->contactDetails());
    if (isNew && !contacts_.findWSIIdForConversationID(contact->getConversationId()).empty())
    {
        makeIdKnown(*contact);
    }
    if (hasLostNumber(*before, *contact->contactDetails()))
    {
        history_.conversationItemsChanged();
    }
}

/**
 * The web service gives its contacts ids of its own, of which the generator knows nothing: the contact's next call
 * would get another one, and a row beside the contact's. It may have one from the phonebook's message of a contact that
 * was saved, which nobody uses.
 */
void ContactGrouping::makeIdKnown(Conversation& contact)
{
    ids_.garbageCollect();
    const ConversationAPI::ConversationItem* item = contact.shownItem();
    if (item && !ids_.remembers(*item))
    {
        ids_.remember(contact.getConversationId(), item);
    }
}

void ContactGrouping::conversationsChanged()
{
    const auto& list = *contacts_.getConversations();
    const std::vector<Conversation*> contacts(list.begin(), list.end());
    Contacts present;
    for (const Conversation* contact : contacts)
    {
        present.emplace(contact->getConversationId(), contact->contactDetails());
    }
    bool isHistoryStale = false;
    for (const auto& [id, before] : known_)
    {
        const auto now = present.find(id);
        const bool isAffected = now == present.end() ? letGo(id) : hasLostNumber(*before, *now->second);
        isHistoryStale = isAffected || isHistoryStale;
    }
    known_ = std::move(present);
    if (isHistoryStale)
    {
        history_.contactsReplaced(contacts);
    }
    else
    {
        history_.contactsUpdated(contacts);
    }
}

/** The generator would give all numbers of a contact that it remembers the one identifier again. */
bool ContactGrouping::letGo(const std::string& goneContact)
{
    const Conversation* history = history_.getConversation(goneContact);
    if (history && history->shownItem())
    {
        ids_.updateCache(goneContact, history->initialItem());
        return true;
    }
    return false;
}
} // namespace Deskphone
