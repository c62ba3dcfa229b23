#include "aggregation/ItemSources.h"

#include "ConversationAPI/ConversationItem.h"
#include "ConversationAPI/ConversationItemSourceIfc.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace ConversationAPI
{
bool ItemSources::add(ConversationItemSourceIfc* source, ConversationItemSourceObserverIfc& observer)
{
    if (!source)
    {
        return false;
    }
    sources_.push_back(source);
    source->setObserver(&observer);
    return hasItems(*source);
}

bool ItemSources::remove(ConversationItemSourceIfc* source)
{
    if (!source)
    {
        return false;
    }
    source->clearObserver();
    sources_.erase(std::remove(sources_.begin(), sources_.end(), source), sources_.end());
    return hasItems(*source);
}

/** Items that are asked for only to see whether there are any belong to who asked. */
bool ItemSources::hasItems(ConversationItemSourceIfc& source)
{
    const std::vector<ConversationItem*> items = source.getConversationItems();
    for (const ConversationItem* item : items)
    {
        delete item;
    }
    return !items.empty();
}

bool ItemSources::haveCall(const std::string& callId)
{
    bool isThere = false;
    const auto look = [&](ConversationItemSourceIfc& source)
    {
        if (source.getItemSourceType() == ConversationItemSourceIfc::LIVE_CALLS)
        {
            for (ConversationItem* item : source.getConversationItems())
            {
                const std::unique_ptr<ConversationItem> call(item);
                isThere = isThere || (call && call->getCallId() == callId);
            }
        }
    };
    forEach(look);
    return isThere;
}

std::vector<ConversationItem*> ItemSources::getConversationItems()
{
    std::vector<ConversationItem*> all;
    forEach(
        [&all](ConversationItemSourceIfc& source)
        {
            const std::vector<ConversationItem*> items = source.getConversationItems();
            all.reserve(all.size() + items.size());
            std::copy_if(items.begin(), items.end(), std::back_inserter(all),
                         [](const ConversationItem* item) { return item != nullptr; });
        });
    return all;
}
} // namespace ConversationAPI
