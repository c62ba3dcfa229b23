/**
 * Presents an aggregator as a source, so that a list provider can serve its list.
 *
 * Look-ups and requests go to the aggregator; when it tells its observers that the whole list changed, those of
 * this source are told conversationsChanged(). Nothing is owned: the aggregator outlives this object, and
 * observers are taken off it before it is destroyed. UI thread only.
 */
#pragma once

#include "ConversationAPI/ConversationObserver.h"
#include "ConversationAPI/ConversationSourceIfc.h"

#include <string>
#include <vector>

namespace ConversationAPI
{
class ConversationAggregatorIfc;

class AggregatorConversationSource : public ConversationSourceIfc, public ConversationObserver
{
  public:
    explicit AggregatorConversationSource(ConversationAggregatorIfc& aggregator);
    ~AggregatorConversationSource() override;

    AggregatorConversationSource(const AggregatorConversationSource&) = delete;
    AggregatorConversationSource& operator=(const AggregatorConversationSource&) = delete;

    ConversationList* getConversations() const override;
    Conversation* getConversation(const std::string& conversationId) override;
    void addObserver(ConversationSourceObserverIfc* observer) override;
    void removeObserver(ConversationSourceObserverIfc* observer) override;
    Conversation* getConversationForUser(const std::string& user) override;
    std::vector<std::string> getInUseConversationIds() override;
    void clearSearchResults() override;

    /** The aggregator hears of the voicemail number from the application. */
    void voiceMailChanged(const std::string&, const std::string&) override {}
    void deleteConversation(const std::string& conversationId) override;
    void deleteConversations() override;

    /** The source type of a call history. */
    int getSourceType() override { return 1; }
    void conversationUpdated(Conversation*) override {}
    void markAllMissedCallsRead() override;

    void conversationListChanged(ConversationList* list) override;
    void conversationPresenceUpdated(Conversation*) override {}
    void conversationUpdatedAndMoved(Conversation*, int) override {}
    void newConversation(Conversation*, int) override {}
    void conversationDeleted(Conversation*) override {}

  private:
    ConversationAggregatorIfc& aggregator_;
    std::vector<ConversationSourceObserverIfc*> observers_;
};
} // namespace ConversationAPI
