#include "ConversationAPI/ActiveCallConversationItemSource.h"

#include "ConversationAPI/ConversationItem.h"
#include "ConversationAPI/ConversationItemFactory.h"
#include "ConversationAPI/ConversationItemSourceObserverIfc.h"
#include "Log.h"

#include <memory>

namespace ConversationAPI
{
namespace
{
constexpr const char* ACTIVE_CALL_SOURCE_LOG_FILE = "./src/ActiveCallConversationItemSource";
}

ActiveCallConversationItemSource::ActiveCallConversationItemSource(ConversationItemFactory* itemFactory)
    : itemFactory_(itemFactory)
{
}

void ActiveCallConversationItemSource::activeCallEvent(const ActiveCall& call)
{
    const std::string callId = call.getCallId();
    CONVERSATION_LOG(ACTIVE_CALL_SOURCE_LOG_FILE, 5, "activeCallEvent() for callId='%s', call.getState()=%s",
                     callId.c_str(), activeCallStateToString(call.getState()));
    if (!callId.empty())
    {
        if (callNotCached(callId))
        {
            addCallToCache(call);
        }
        else
        {
            updateCachedCall(call);
        }
    }
    CONVERSATION_LOG(ACTIVE_CALL_SOURCE_LOG_FILE, 5, "activeCallEvent() end for callId='%s'", callId.c_str());
}

void ActiveCallConversationItemSource::addCallToCache(const ActiveCall& call)
{
    calls_.emplace(call.getCallId(), call);
    if (observer_)
    {
        ConversationItem* item = createItemFromCache(call);
        CONVERSATION_LOG(ACTIVE_CALL_SOURCE_LOG_FILE, 5,
                         "activeCallEvent() notifying observer of new item item.getCallId()='%s'",
                         item->getCallId().c_str());
        observer_->newConversationItem(item);
    }
}

void ActiveCallConversationItemSource::updateCachedCall(const ActiveCall& call)
{
    ActiveCall& cached = calls_[call.getCallId()];
    if (!cached.needsUpdatingFrom(call))
    {
        return;
    }
    CONVERSATION_LOG(ACTIVE_CALL_SOURCE_LOG_FILE, 5,
                     "ActiveCallConversationItemSource::activeCallEvent() updating call with number='%s' "
                     "firstname='%s' lastname='%s' to number='%s' firstname='%s' lastname='%s'",
                     cached.number().c_str(), cached.firstname().c_str(), cached.lastname().c_str(),
                     call.number().c_str(), call.firstname().c_str(), call.lastname().c_str());
    const bool statesOnly = cached.areStatesOnlyDifference(call);
    cached.updateFrom(call);
    if (!observer_)
    {
        return;
    }
    std::unique_ptr<ConversationItem> item(createItemFromCache(call));
    CONVERSATION_LOG(ACTIVE_CALL_SOURCE_LOG_FILE, 5,
                     "ActiveCallConversationItemSource::activeCallEvent() notifying observer of changed item "
                     "item.getCallId()='%s'",
                     item->getCallId().c_str());
    if (statesOnly)
    {
        observer_->conversationItemChanged(item.release());
        return;
    }
    const std::string callId = call.getCallId();
    observer_->removeActiveConversationItemForCall(callId);
    // Whoever was told of the removal may have changed or ended the call, or taken this source off.
    if (observer_ && callIsCached(callId))
    {
        item.reset(createItemFromCache(call));
        observer_->newConversationItem(item.release());
    }
}

/** The item shows the cached record; only the number to call back is the event's. */
ConversationItem* ActiveCallConversationItemSource::createItemFromCache(const ActiveCall& call)
{
    ConversationItem* item = itemFactory_->getActiveCallConversationItem(calls_[call.getCallId()]);
    item->setLastPhoneNumber(call.number());
    return item;
}

void ActiveCallConversationItemSource::clearActiveCallEvent(const std::string& callId)
{
    const std::string id = callId;
    CONVERSATION_LOG(ACTIVE_CALL_SOURCE_LOG_FILE, 5, "clearActiveCallEvent() for callId='%s'", id.c_str());
    if (calls_.erase(id) != 0)
    {
        CONVERSATION_LOG(ACTIVE_CALL_SOURCE_LOG_FILE, 5, "clearActiveCallEvent() found callId='%s'", id.c_str());
        if (observer_ && !observer_->removeActiveConversationItemForCall(id))
        {
            CONVERSATION_LOG(ACTIVE_CALL_SOURCE_LOG_FILE, 5,
                             "clearActiveCallEvent() observer failed to remove active item, calling "
                             "conversationItemsChanged()");
            if (observer_)
            {
                observer_->conversationItemsChanged();
            }
        }
    }
    CONVERSATION_LOG(ACTIVE_CALL_SOURCE_LOG_FILE, 5, "clearActiveCallEvent() end for callId='%s'", id.c_str());
}

void ActiveCallConversationItemSource::callDetailsUpdatedEvent(const ActiveCall&) {}

bool ActiveCallConversationItemSource::callIsCached(const std::string& callId) const
{
    return calls_.count(callId) != 0;
}

bool ActiveCallConversationItemSource::callNotCached(const std::string& callId) const
{
    return !callIsCached(callId);
}

std::vector<ConversationItem*> ActiveCallConversationItemSource::getConversationItems()
{
    std::vector<ConversationItem*> items;
    for (const auto& entry : calls_)
    {
        items.push_back(createItemFromCache(entry.second));
    }
    return items;
}

void ActiveCallConversationItemSource::reloadCalls(const std::vector<std::string>&) {}

void ActiveCallConversationItemSource::deleteAllCalls() {}

void ActiveCallConversationItemSource::deleteCalls(const std::vector<std::string>&) {}

void ActiveCallConversationItemSource::setObserver(ConversationItemSourceObserverIfc* observer)
{
    observer_ = observer;
}

void ActiveCallConversationItemSource::clearObserver()
{
    observer_ = nullptr;
}

int ActiveCallConversationItemSource::getItemSourceType()
{
    return LIVE_CALLS;
}

bool ActiveCallConversationItemSource::ageAllMissedCalls(const std::vector<std::string>&)
{
    return true;
}
} // namespace ConversationAPI
