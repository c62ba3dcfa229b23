#include "ContactGrouping.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationItemAggregator.h"
#include "ConversationAPI/DirectoryServiceConversationSource.h"
#include "ConversationAPI/RandomCachingConversationIDGenerator.h"

#include <algorithm>
#include <iterator>

namespace Deskphone
{
using ConversationAPI::Conversation;

ContactGrouping::ContactGrouping(ConversationAPI::DirectoryServiceConversationSource& contacts,
                                 ConversationAPI::ConversationItemAggregator& history,
                                 ConversationAPI::RandomCachingConversationIDGenerator& ids)
    : contacts_(contacts), history_(history), ids_(ids)
{
}

void ContactGrouping::conversationUpdated(Conversation* contact)
{
    const bool isNew = known_.insert(contact->getConversationId()).second;
    if (isNew && !contacts_.findWSIIdForConversationID(contact->getConversationId()).empty())
    {
        makeIdKnown(*contact);
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
    ConversationAPI::ConversationItem* item = contact.initialItem();
    if (item && !ids_.remembers(*item))
    {
        ids_.remember(contact.getConversationId(), item);
    }
}

void ContactGrouping::conversationsChanged()
{
    const auto& list = *contacts_.getConversations();
    const std::vector<Conversation*> contacts(list.begin(), list.end());
    Ids present;
    std::transform(contacts.begin(), contacts.end(), std::inserter(present, present.end()),
                   [](const Conversation* contact) { return contact->getConversationId(); });
    Ids gone;
    std::set_difference(known_.begin(), known_.end(), present.begin(), present.end(), std::inserter(gone, gone.end()));
    known_ = std::move(present);
    if (letGo(gone))
    {
        history_.conversationItemsChanged();
    }
    history_.contactsUpdated(contacts);
}

/** The generator would give all numbers of a contact that it remembers the one identifier again. */
bool ContactGrouping::letGo(const Ids& goneContacts)
{
    bool hadHistory = false;
    for (const std::string& id : goneContacts)
    {
        const Conversation* history = history_.getConversation(id);
        if (history && history->initialItem())
        {
            ids_.updateCache(id, history->initialItem());
            hadHistory = true;
        }
    }
    return hadHistory;
}
} // namespace Deskphone
