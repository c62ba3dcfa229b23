/**
 * Chooses which aggregator, the local one or the cloud's, the user interface sees.
 *
 * It keeps the event observers attached to the current aggregator and decides whether that or the list provider
 * answers queries; some always go to the aggregator, see useConversationAggregator() of the interface. Nothing is
 * owned; whoever owns aggregators, provider and observers destroys them after the switch. Queries and requests go
 * straight on, without a test: they may be made only when there is a current aggregator (the normal one as soon as it
 * is added, the cloud's as soon as it is switched to) and the provider, if it is to answer, was added before it was
 * told to. UI thread only.
 */
#pragma once

#include "ConversationAPI/AggregatorSwitchIfc.h"

#include <vector>

namespace ConversationAPI
{
class ConversationHandlerIfc;

class AggregatorSwitch : public AggregatorSwitchIfc
{
  public:
    void addNormalAggregator(ConversationAggregatorIfc* aggregator) override;
    void addQuorvelAggregator(ConversationAggregatorIfc* aggregator) override;
    void addConversationListProvider(ConversationListProviderIfc* provider) override;
    void useConversationAggregator() override;
    void useConversationListProvider() override;
    void addConversationList(ConversationObserver* observer, const std::string& listState) override;

    /** Once each. Before there is an aggregator, observers are attached by the first switch to another one. */
    void addConversationEventObserver(ConversationObserver* observer) override;

    /**
     * Not the opposite of adding. An observer that was added stays attached and is taken along by every switch.
     * Asked to remove one that was not added, the switch takes that one off the current aggregator and forgets
     * the observer added last, which stays attached to the current aggregator. So observers that are added here
     * live as long as the switch; whoever wants to leave earlier observes an aggregator or the provider itself.
     */
    void removeConversationEventObserver(ConversationObserver* observer) override;
    void addConversationEventObserverToProvider(ConversationObserver* observer) override;
    void clearTemporaryConversations() override;
    void makeTemporaryConversationPermanent(Conversation* conversation) override;
    void makeConversationPermanent(const std::string& conversationId) override;
    void conversationsChanged() override;
    Conversation* getConversationThatHasAnyNumberMatching(const std::string& number) const override;
    ConversationList* getConversations() const override;
    Conversation* getConversation(unsigned int index) const override;
    Conversation* getConversation(std::string callId) const override;
    Conversation* getConversationByConversationIDFromAggregator(const std::string& conversationId) override;
    Conversation* getConversationByConversationIDFromConversationHandler(const std::string& conversationId) override;
    Conversation* getConversationByContact(const std::string& firstName, const std::string& lastName,
                                           const std::string& number) const override;
    Conversation* getDirectConversationByContact(const std::string& firstName, const std::string& lastName,
                                                 const std::string& number) const override;
    Conversation* getConversationForUser(const std::string& userId) const override;
    void deleteConversation(const std::string& conversationId) override;
    void deleteConversations() override;
    bool markAllMissedCallsRead() override;
    std::string getCurrentConversationState() const override;
    void useNormalConversationAggregator() override;
    void useQuorvelConversationAggregator() override;

  private:
    void switchMode(ConversationAggregatorIfc* aggregator);
    bool aggregatorAnswers() const;

    ConversationAggregatorIfc* current_ = nullptr;
    ConversationAggregatorIfc* normal_ = nullptr;
    ConversationAggregatorIfc* cloud_ = nullptr;
    ConversationHandlerIfc* handler_ = nullptr;
    ConversationListProviderIfc* provider_ = nullptr;
    std::vector<ConversationObserver*> eventObservers_;
};
} // namespace ConversationAPI
