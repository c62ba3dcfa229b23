#include "NetworkEntries.h"

#include "ConversationAPI/BroadsoftServiceConversationItemSource.h"
#include "ConversationAPI/Conversation.h"

#include <algorithm>

namespace Deskphone
{
using ConversationAPI::BroadsoftServiceConversationItemSource;
using ConversationAPI::Conversation;

namespace
{
NetworkEntry entryOf(const Conversation& conversation)
{
    const ConversationAPI::ConversationItem& item = *conversation.shownItem();
    return {item.getState(), item.getItemId()};
}

/** The source's conversations, each of one entry. */
std::vector<const Conversation*> conversationsOf(BroadsoftServiceConversationItemSource& source)
{
    std::vector<const Conversation*> conversations;
    for (const std::string& id : source.getInUseConversationIds())
    {
        const Conversation* conversation = source.getConversation(id);
        if (conversation && conversation->shownItem())
        {
            conversations.push_back(conversation);
        }
    }
    return conversations;
}
} // namespace

/** Ids of other kinds and of the journal may be the same: the number must be the row's, too. */
std::vector<NetworkEntry> networkEntriesOf(BroadsoftServiceConversationItemSource& source, const Conversation& row)
{
    const std::vector<std::string> ids = row.getJournalServiceEntries();
    std::vector<NetworkEntry> entries;
    for (const Conversation* conversation : conversationsOf(source))
    {
        NetworkEntry entry = entryOf(*conversation);
        const bool isRows = std::find(ids.begin(), ids.end(), entry.callLogId) != ids.end();
        if (isRows && conversation->shownItem()->isNonActiveCall() &&
            row.hasAnyNumberMatching(conversation->getNumber()))
        {
            entries.push_back(std::move(entry));
        }
    }
    return entries;
}

void deleteNetworkEntries(BroadsoftServiceConversationItemSource& source, const std::vector<NetworkEntry>& entries)
{
    for (const NetworkEntry& entry : entries)
    {
        const std::vector<const Conversation*> all = conversationsOf(source);
        const auto found = std::find_if(all.begin(), all.end(),
                                        [&entry](const Conversation* one)
                                        {
                                            const NetworkEntry other = entryOf(*one);
                                            return other.state == entry.state && other.callLogId == entry.callLogId;
                                        });
        if (found != all.end())
        {
            source.deleteConversation((*found)->getConversationId());
        }
    }
}
} // namespace Deskphone
