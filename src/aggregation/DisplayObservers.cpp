#include "aggregation/DisplayObservers.h"

#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationObserver.h"
#include "ConversationAPI/NotificationRound.h"
#include "Observers.h"

namespace ConversationAPI
{
void DisplayObservers::add(ConversationObserver* observer)
{
    if (observer)
    {
        observers_.push_back(observer);
    }
}

void DisplayObservers::remove(ConversationObserver* observer)
{
    removeOne(observers_, observer);
}

template <typename Notification>
void DisplayObservers::tell(Notification notification)
{
    const NotificationRound::Scope round(round_);
    tellEach(observers_, notification);
}

template <typename Notification>
void DisplayObservers::tellOf(Conversation* row, Notification notification)
{
    tell(
        [&](ConversationObserver& observer)
        {
            const std::size_t index = list_.indexOf(row);
            if (index < list_.size())
            {
                notification(observer, static_cast<int>(index));
            }
        });
}

void DisplayObservers::listChanged()
{
    tell([this](ConversationObserver& observer) { observer.conversationListChanged(&list_); });
}

void DisplayObservers::presenceUpdated(Conversation* row)
{
    tellOf(row, [row](ConversationObserver& observer, int) { observer.conversationPresenceUpdated(row); });
}

void DisplayObservers::created(Conversation* row)
{
    tellOf(row, [row](ConversationObserver& observer, int index) { observer.newConversation(row, index); });
}

void DisplayObservers::updatedAndMoved(Conversation* row)
{
    tellOf(row, [row](ConversationObserver& observer, int index) { observer.conversationUpdatedAndMoved(row, index); });
}

void DisplayObservers::updatedAndMoved(Conversation* row, unsigned index)
{
    tellOf(row, [row, index](ConversationObserver& observer, int)
           { observer.conversationUpdatedAndMoved(row, static_cast<int>(index)); });
}

void DisplayObservers::deleted(Conversation* row)
{
    tellOf(row, [row](ConversationObserver& observer, int) { observer.conversationDeleted(row); });
}
} // namespace ConversationAPI
