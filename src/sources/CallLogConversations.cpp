#include "sources/CallLogConversations.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/NotificationRound.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace ConversationAPI
{
namespace
{
/** The only calls that the filter lets pass; nothing for a filter that lets everything pass. */
std::optional<ConversationItemState> stateOfFilter(const std::string& filter)
{
    if (filter == "CvuDispIF.Missed")
    {
        return ConversationItemState::MISSED;
    }
    if (filter == "CvuDispIF.Received")
    {
        return ConversationItemState::RECEIVED;
    }
    if (filter == "CvuDispIF.Dialled")
    {
        return ConversationItemState::DIALLED;
    }
    return std::nullopt;
}
} // namespace

CallLogConversations::~CallLogConversations()
{
    shown_.clear();
}

void CallLogConversations::retireAll(NotificationRound& round)
{
    const std::vector<Conversation*> gone(all_.begin(), all_.end());
    shown_.clear();
    all_.clear();
    std::for_each(gone.begin(), gone.end(), [&round](Conversation* conversation) { round.retire(conversation); });
}

void CallLogConversations::show(const std::string& filter)
{
    const std::optional<ConversationItemState> wanted = stateOfFilter(filter);
    shown_.clear();
    for (Conversation* conversation : all_)
    {
        if (!wanted || conversation->getState() == *wanted)
        {
            shown_.push_back(conversation);
        }
    }
}
} // namespace ConversationAPI
