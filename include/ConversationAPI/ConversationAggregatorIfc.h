/**
 * A combined list of conversations as whoever switches between several of them sees it.
 *
 * Sources, observers and the item factory are not owned. Conversations stay the aggregator's. UI thread only.
 */
#pragma once

#include "ConversationAPI/ConversationHandlerIfc.h"
#include "ConversationAPI/ConversationSourceObserverIfc.h"

#include <string>
#include <vector>

namespace ConversationAPI
{
class ConversationItemFactory;
class ConversationObserver;
class ConversationSourceIfc;

class ConversationAggregatorIfc : public ConversationSourceObserverIfc, public ConversationHandlerIfc
{
  public:
    virtual void setConversationItemFactory(ConversationItemFactory* factory) = 0;

    /** An observer that is added twice is told twice, and has to be removed twice. */
    virtual void addObserver(ConversationObserver* observer) = 0;
    virtual void removeObserver(ConversationObserver* observer) = 0;

    /** Tells the observers the list, once the sources are ready. */
    virtual void start() = 0;

    /** The sources from now on; one may be null. What the first one says of a party comes first. */
    virtual void setSourcesInPreferredOrder(ConversationSourceIfc* first, ConversationSourceIfc* second,
                                            bool combineNow) = 0;
    virtual void setSources(std::vector<ConversationSourceIfc*> sources, bool combineNow) = 0;

    /** Forgets what was only looked up or found by a search. */
    virtual void clearTemporaryConversations() = 0;

    /** Makes a row of the list of a conversation that was only looked up. */
    virtual void makeTemporaryConversationPermanent(Conversation* conversation) = 0;
    virtual void makeConversationPermanent(const std::string& conversationId) = 0;

    /** In comparable form; null for "" and when nobody has the number. */
    virtual Conversation* getConversationThatHasAnyNumberMatching(const std::string& number) const = 0;
};
} // namespace ConversationAPI
