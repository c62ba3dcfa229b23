#include "ConversationAPI/AggregatorConversationSource.h"

#include "ConversationAPI/ConversationAggregatorIfc.h"
#include "ConversationAPI/ConversationList.h"
#include "Observers.h"

namespace ConversationAPI
{
AggregatorConversationSource::AggregatorConversationSource(ConversationAggregatorIfc& aggregator)
    : aggregator_(aggregator)
{
    aggregator_.addObserver(this);
}

AggregatorConversationSource::~AggregatorConversationSource()
{
    aggregator_.removeObserver(this);
}

ConversationList* AggregatorConversationSource::getConversations() const
{
    return aggregator_.getConversations();
}

Conversation* AggregatorConversationSource::getConversation(const std::string& conversationId)
{
    return aggregator_.getConversationByConversationID(conversationId);
}

void AggregatorConversationSource::addObserver(ConversationSourceObserverIfc* observer)
{
    addOnce(observers_, observer);
}

void AggregatorConversationSource::removeObserver(ConversationSourceObserverIfc* observer)
{
    removeOne(observers_, observer);
}

Conversation* AggregatorConversationSource::getConversationForUser(const std::string& user)
{
    return aggregator_.getConversationForUser(user);
}

std::vector<std::string> AggregatorConversationSource::getInUseConversationIds()
{
    std::vector<std::string> ids;
    if (const ConversationList* list = aggregator_.getConversations())
    {
        list->getInUseConversationIds(ids);
    }
    return ids;
}

void AggregatorConversationSource::clearSearchResults()
{
    aggregator_.clearTemporaryConversations();
}

void AggregatorConversationSource::deleteConversation(const std::string& conversationId)
{
    aggregator_.deleteConversation(conversationId);
}

void AggregatorConversationSource::deleteConversations()
{
    aggregator_.deleteConversations();
}

void AggregatorConversationSource::markAllMissedCallsRead()
{
    aggregator_.markAllMissedCallsRead();
}

void AggregatorConversationSource::conversationListChanged(ConversationList*)
{
    tellEach(observers_, [](ConversationSourceObserverIfc& observer) { observer.conversationsChanged(); });
}
} // namespace ConversationAPI
