#include "sources/CallLogConversations.h"

#include "ConversationAPI/Conversation.h"

#include <optional>

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

void CallLogConversations::removeAndDeleteAll()
{
    shown_.clear();
    all_.removeAndDeleteAll();
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
