/**
 * The one door through which the telephone's user interface reaches conversations.
 *
 * Nothing that is handed over is owned. UI thread only.
 */
#pragma once

#include <string>

namespace ConversationAPI
{
class Conversation;
class ConversationAggregatorIfc;
class ConversationList;
class ConversationListProviderIfc;
class ConversationObserver;

class AggregatorSwitchIfc
{
  public:
    virtual ~AggregatorSwitchIfc() = default;

    /** It answers from now on, also when another one or the provider did. */
    virtual void addNormalAggregator(ConversationAggregatorIfc* aggregator) = 0;
    virtual void addQuorvelAggregator(ConversationAggregatorIfc* aggregator) = 0;
    virtual void addConversationListProvider(ConversationListProviderIfc* provider) = 0;

    /**
     * Who gives the list, looks up by index, contact, user and id (...FromConversationHandler()), deletes and marks as
     * read from now on: whichever aggregator is the current one, or the provider. Always the current aggregator's are
     * call ids, numbers, ids (...FromAggregator()), temporary conversations and conversationsChanged().
     */
    virtual void useConversationAggregator() = 0;
    virtual void useConversationListProvider() = 0;

    /** Attaches an observer to the aggregator of this state for good; other states do nothing. */
    virtual void addConversationList(ConversationObserver* observer, const std::string& listState) = 0;

    /** The observer is attached to whichever aggregator is the current one. */
    virtual void addConversationEventObserver(ConversationObserver* observer) = 0;

    /** Does not detach an observer that was added; see AggregatorSwitch. */
    virtual void removeConversationEventObserver(ConversationObserver* observer) = 0;

    /** Does nothing before a provider was added. */
    virtual void addConversationEventObserverToProvider(ConversationObserver* observer) = 0;

    virtual void clearTemporaryConversations() = 0;
    virtual void makeTemporaryConversationPermanent(Conversation* conversation) = 0;
    virtual void makeConversationPermanent(const std::string& conversationId) = 0;
    virtual void conversationsChanged() = 0;
    virtual Conversation* getConversationThatHasAnyNumberMatching(const std::string& number) const = 0;
    virtual ConversationList* getConversations() const = 0;
    virtual Conversation* getConversation(unsigned int index) const = 0;

    /** By call control's id of a live call. */
    virtual Conversation* getConversation(std::string callId) const = 0;
    virtual Conversation* getConversationByConversationIDFromAggregator(const std::string& conversationId) = 0;
    virtual Conversation* getConversationByConversationIDFromConversationHandler(const std::string& conversationId) = 0;

    /** By first name, last name and number of the contact. */
    virtual Conversation* getConversationByContact(const std::string& firstName, const std::string& lastName,
                                                   const std::string& number) const = 0;
    virtual Conversation* getDirectConversationByContact(const std::string& firstName, const std::string& lastName,
                                                         const std::string& number) const = 0;
    virtual Conversation* getConversationForUser(const std::string& userId) const = 0;
    virtual void deleteConversation(const std::string& conversationId) = 0;
    virtual void deleteConversations() = 0;
    virtual bool markAllMissedCallsRead() = 0;

    /** "QuorvelConversationListState" for the cloud's list, else "ConversationListState". */
    virtual std::string getCurrentConversationState() const = 0;
    virtual void useNormalConversationAggregator() = 0;
    virtual void useQuorvelConversationAggregator() = 0;
};
} // namespace ConversationAPI
