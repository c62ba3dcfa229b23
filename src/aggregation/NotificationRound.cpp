#include "ConversationAPI/NotificationRound.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationList.h"

#include <utility>

namespace ConversationAPI
{
NotificationRound::NotificationRound(std::function<void(bool)> rebuild, std::function<void()> tellList)
    : rebuild_(std::move(rebuild)), tellList_(std::move(tellList))
{
}

NotificationRound::~NotificationRound() = default;

NotificationRound::Scope::Scope(NotificationRound& round) : round_(round)
{
    ++round_.depth_;
}

NotificationRound::Scope::~Scope()
{
    if (round_.depth_ == 1)
    {
        round_.finish();
    }
    --round_.depth_;
}

void NotificationRound::rebuild(bool tellObservers)
{
    isRebuildAsked_ = true;
    areObserversToBeTold_ = areObserversToBeTold_ || tellObservers;
    if (depth_ == 0)
    {
        const Scope scope(*this);
    }
}

void NotificationRound::retire(Conversation* conversation)
{
    retired_.emplace_back(conversation);
    if (depth_ == 0)
    {
        retired_.clear();
    }
}

void NotificationRound::retireFrom(ConversationList& list, Conversation* conversation)
{
    if (conversation && list.contains(conversation))
    {
        list.pop(conversation);
        retire(conversation);
    }
}

/** Still counts as a notification: what is asked for meanwhile is done by the next turn of the loop. */
void NotificationRound::finish()
{
    retired_.clear();
    while (isRebuildAsked_ || isListAsked_)
    {
        isListAsked_ = false;
        if (std::exchange(isRebuildAsked_, false))
        {
            rebuild_(std::exchange(areObserversToBeTold_, false));
        }
        else
        {
            tellList_();
        }
        retired_.clear();
    }
}
} // namespace ConversationAPI
