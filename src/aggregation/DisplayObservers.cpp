#include "aggregation/DisplayObservers.h"

#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationObserver.h"
#include "ConversationAPI/NotificationRound.h"
#include "Observers.h"

#include <utility>

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
void DisplayObservers::tellOf(Conversation* row, Notification notification)
{
    const NotificationRound::Scope round(round_);
    if (isTellingOfRow_)
    {
        round_.tellListAtEnd();
    }
    const bool wasTelling = std::exchange(isTellingOfRow_, true);
    tellEach(observers_,
             [&](ConversationObserver& observer)
             {
                 const std::size_t index = list_.indexOf(row);
                 if (index < list_.size())
                 {
                     notification(observer, static_cast<int>(index));
                 }
             });
    isTellingOfRow_ = wasTelling;
}

void DisplayObservers::listChanged()
{
    const NotificationRound::Scope round(round_);
    tellEach(observers_, [this](ConversationObserver& observer) { observer.conversationListChanged(&list_); });
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
    if (leaving_.insert(row).second)
    {
        tellOf(row, [row](ConversationObserver& observer, int) { observer.conversationDeleted(row); });
        leaving_.erase(row);
    }
}
} // namespace ConversationAPI
