/**
 * Serves a display the conversations of one source: look-ups, deletion, marking as read, search.
 *
 * It keeps no conversations; those it gives out belong to the source and are valid until the source reports a
 * change. Source, observers and item factory are not owned: the source is taken off, with setSource(), before it
 * or the provider is destroyed, and its list is still given out after that (see there). Before there was a source
 * look-ups give null; without one requests do nothing. Of the changes of a source only those of its whole list are
 * passed on; who shows rows also observes the aggregator. UI thread only.
 */
#pragma once

#include "ConversationAPI/ConversationListProviderIfc.h"
#include "ConversationAPI/SearchableConversationSourceIfc.h"

#include <string>
#include <vector>

namespace ConversationAPI
{
class ConversationItemFactory;

class ConversationListProvider : public ConversationListProviderIfc, public SearchableConversationSourceIfc
{
  public:
    explicit ConversationListProvider(ConversationItemFactory* itemFactory);
    ~ConversationListProvider() override;

    ConversationListProvider(const ConversationListProvider&) = delete;
    ConversationListProvider& operator=(const ConversationListProvider&) = delete;

    void conversationUpdated(Conversation*) override {}
    void conversationsChanged() override;
    void removeActiveItemForCall(const std::string&, ConversationSourceIfc*) override {}
    bool hasConversationWithConversationId(const std::string& conversationId) override;
    void conversationSourcesReady() override {}

    void addObserver(ConversationObserver* observer) override;
    void removeObserver(ConversationObserver* observer) override;
    void start() override;

    /**
     * Null takes the source off: its list is still given out, as it stands then, and has to live until there is another
     * source or nobody asks the provider or starts it any more. `notify`: the observers are told of the list.
     */
    void setSource(ConversationSourceIfc* source, bool notify) override;

    /** Null before there was a source. */
    ConversationList* getConversations() const override;
    Conversation* getConversation(unsigned int index) const override;
    Conversation* getConversation(std::string callId) const override;
    Conversation* getConversationByConversationID(const std::string& conversationId) override;
    Conversation* getConversationByContact(const std::string& firstName, const std::string& lastName,
                                           const std::string& number) const override;
    Conversation* getDirectConversationByContact(const std::string& firstName, const std::string& lastName,
                                                 const std::string& number) const override;
    Conversation* getConversationForUser(const std::string& userId) const override;
    void deleteConversation(const std::string& conversationId) override;
    void deleteConversations() override;

    /** Ids in list order, empty when nothing matches. */
    std::vector<std::string> getMatchingConversationIds(std::string searchString) override;

    /** The provider always answers at once. */
    void getMatchingConversationIds(const std::string&, const std::string&, ConversationSearchObserverIfc*) override {}
    void cancelSearch(const std::string&) override {}
    virtual ConversationSourceIfc* getConversationSource();
    bool markAllMissedCallsRead() override;
    unsigned getSourceTypeWithPriority() const override { return 1; }

  private:
    std::vector<ConversationObserver*> observers_;
    ConversationSourceIfc* source_ = nullptr;
    ConversationList* list_ = nullptr;
    ConversationItemFactory* itemFactory_;
};
} // namespace ConversationAPI
