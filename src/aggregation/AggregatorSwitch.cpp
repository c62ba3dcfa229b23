#include "ConversationAPI/AggregatorSwitch.h"

#include "ConversationAPI/ConversationAggregatorIfc.h"
#include "ConversationAPI/ConversationListProviderIfc.h"
#include "Observers.h"

namespace ConversationAPI
{
namespace
{
constexpr const char* LOCAL_STATE = "ConversationListState";
constexpr const char* CLOUD_STATE = "QuorvelConversationListState";
} // namespace

void AggregatorSwitch::addNormalAggregator(ConversationAggregatorIfc* aggregator)
{
    current_ = aggregator;
    normal_ = aggregator;
    useConversationAggregator();
}

void AggregatorSwitch::addQuorvelAggregator(ConversationAggregatorIfc* aggregator)
{
    cloud_ = aggregator;
}

void AggregatorSwitch::addConversationListProvider(ConversationListProviderIfc* provider)
{
    provider_ = provider;
}

void AggregatorSwitch::useConversationAggregator()
{
    handler_ = current_;
}

void AggregatorSwitch::useConversationListProvider()
{
    handler_ = provider_;
}

void AggregatorSwitch::addConversationList(ConversationObserver* observer, const std::string& listState)
{
    ConversationAggregatorIfc* aggregator = listState == LOCAL_STATE   ? normal_
                                            : listState == CLOUD_STATE ? cloud_
                                                                       : nullptr;
    if (aggregator)
    {
        aggregator->addObserver(observer);
    }
}

void AggregatorSwitch::addConversationEventObserver(ConversationObserver* observer)
{
    if (addOnce(eventObservers_, observer) && current_)
    {
        current_->addObserver(observer);
    }
}

/** The test is the wrong way round on purpose: user interfaces rely on it that observers that were added stay. */
void AggregatorSwitch::removeConversationEventObserver(ConversationObserver* observer)
{
    if (isAmong(eventObservers_, observer))
    {
        return;
    }
    if (!eventObservers_.empty())
    {
        eventObservers_.pop_back();
    }
    if (current_)
    {
        current_->removeObserver(observer);
    }
}

void AggregatorSwitch::addConversationEventObserverToProvider(ConversationObserver* observer)
{
    if (provider_)
    {
        provider_->addObserver(observer);
    }
}

void AggregatorSwitch::clearTemporaryConversations()
{
    current_->clearTemporaryConversations();
}

void AggregatorSwitch::makeTemporaryConversationPermanent(Conversation* conversation)
{
    current_->makeTemporaryConversationPermanent(conversation);
}

void AggregatorSwitch::makeConversationPermanent(const std::string& conversationId)
{
    current_->makeConversationPermanent(conversationId);
}

void AggregatorSwitch::conversationsChanged()
{
    current_->conversationsChanged();
}

Conversation* AggregatorSwitch::getConversationThatHasAnyNumberMatching(const std::string& number) const
{
    return current_->getConversationThatHasAnyNumberMatching(number);
}

ConversationList* AggregatorSwitch::getConversations() const
{
    return handler_->getConversations();
}

Conversation* AggregatorSwitch::getConversation(unsigned int index) const
{
    return handler_->getConversation(index);
}

Conversation* AggregatorSwitch::getConversation(std::string callId) const
{
    return current_->getConversation(callId);
}

Conversation* AggregatorSwitch::getConversationByConversationIDFromAggregator(const std::string& conversationId)
{
    return current_->getConversationByConversationID(conversationId);
}

Conversation*
AggregatorSwitch::getConversationByConversationIDFromConversationHandler(const std::string& conversationId)
{
    return handler_->getConversationByConversationID(conversationId);
}

Conversation* AggregatorSwitch::getConversationByContact(const std::string& firstName, const std::string& lastName,
                                                         const std::string& number) const
{
    return handler_->getConversationByContact(firstName, lastName, number);
}

Conversation* AggregatorSwitch::getDirectConversationByContact(const std::string& firstName,
                                                               const std::string& lastName,
                                                               const std::string& number) const
{
    return handler_->getDirectConversationByContact(firstName, lastName, number);
}

Conversation* AggregatorSwitch::getConversationForUser(const std::string& userId) const
{
    return handler_->getConversationForUser(userId);
}

void AggregatorSwitch::deleteConversation(const std::string& conversationId)
{
    handler_->deleteConversation(conversationId);
}

void AggregatorSwitch::deleteConversations()
{
    handler_->deleteConversations();
}

bool AggregatorSwitch::markAllMissedCallsRead()
{
    return handler_->markAllMissedCallsRead();
}

/** Before any aggregator was added the state is the cloud's, too. */
std::string AggregatorSwitch::getCurrentConversationState() const
{
    return current_ == cloud_ ? CLOUD_STATE : LOCAL_STATE;
}

void AggregatorSwitch::useNormalConversationAggregator()
{
    if (aggregatorAnswers())
    {
        handler_ = normal_;
    }
    if (current_ != normal_)
    {
        switchMode(normal_);
    }
}

void AggregatorSwitch::useQuorvelConversationAggregator()
{
    if (!cloud_)
    {
        return;
    }
    if (aggregatorAnswers())
    {
        handler_ = cloud_;
    }
    if (current_ != cloud_)
    {
        switchMode(cloud_);
    }
}

void AggregatorSwitch::switchMode(ConversationAggregatorIfc* aggregator)
{
    if (current_)
    {
        tellEach(eventObservers_, [this](ConversationObserver& observer) { current_->removeObserver(&observer); });
    }
    current_ = aggregator;
    if (current_)
    {
        tellEach(eventObservers_, [this](ConversationObserver& observer) { current_->addObserver(&observer); });
    }
}

bool AggregatorSwitch::aggregatorAnswers() const
{
    return handler_ == static_cast<ConversationHandlerIfc*>(current_);
}
} // namespace ConversationAPI
