/**
 * Combines the conversations of several sources into one list in which each remote party stands once.
 *
 * It owns the conversations of its list, which are copies of the sources' own; factory, sources and observers
 * are not owned. The application takes sources and observers off, or destroys the aggregator first. What it
 * gives out is valid until observers were told conversationDeleted() of it, or until everything is combined anew,
 * which they are told by conversationListChanged() once the sources are ready. A copy of what only a source has
 * (getConversationByConversationID()) is valid until clearTemporaryConversations(), until the row of its id goes, or,
 * when it was asked for again, until the next combining.
 *
 * Everything runs on the UI thread. Observers are told in the order in which they were added and may call back,
 * remove themselves or others, and change the list: a combining that they ask for runs once, after the outermost
 * notification, and what was dropped lives until then. docs/observers.md says more.
 */
#pragma once

#include "ConversationAPI/ConversationAggregatorIfc.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/NotificationRound.h"

#include <memory>
#include <string>
#include <vector>

namespace ConversationAPI
{
class CombinedRows;
class ConversationList;
class ConversationSources;
class DisplayObservers;
class RowIds;
class TemporaryConversations;

class ConversationAggregator : public ConversationAggregatorIfc
{
  public:
    ConversationAggregator();
    explicit ConversationAggregator(ConversationItemFactory* factory);
    ~ConversationAggregator() override;

    ConversationAggregator(const ConversationAggregator&) = delete;
    ConversationAggregator& operator=(const ConversationAggregator&) = delete;

    void conversationUpdated(Conversation* conversation) override;
    void conversationsChanged() override;
    void removeActiveItemForCall(const std::string& callId, ConversationSourceIfc* source) override;
    bool hasConversationWithConversationId(const std::string& conversationId) override;

    /** From the first time on, observers are told of changes of the whole list. */
    void conversationSourcesReady() override;

    void setConversationItemFactory(ConversationItemFactory* factory) override;
    void addObserver(ConversationObserver* observer) override;
    void removeObserver(ConversationObserver* observer) override;
    void start() override;
    void setSourcesInPreferredOrder(ConversationSourceIfc* first, ConversationSourceIfc* second,
                                    bool combineNow) override;
    void setSources(std::vector<ConversationSourceIfc*> sources, bool combineNow) override;
    void clearTemporaryConversations() override;
    void makeTemporaryConversationPermanent(Conversation* conversation) override;
    void makeConversationPermanent(const std::string& conversationId) override;
    Conversation* getConversationThatHasAnyNumberMatching(const std::string& number) const override;

    /** Deletes history; the contact itself only when its row has no history. */
    void deleteConversation(const std::string& conversationId) override;
    void deleteConversations() override;
    bool markAllMissedCallsRead() override;

    ConversationList* getConversations() const override { return list_.get(); }
    Conversation* getConversation(unsigned int index) const override;
    Conversation* getConversation(std::string callId) const override;

    /** Of the list, or else of a source: then it is a copy, which is not in the list. */
    Conversation* getConversationByConversationID(const std::string& conversationId) override;
    Conversation* getConversationByContact(const std::string& firstName, const std::string& lastName,
                                           const std::string& number) const override;
    Conversation* getDirectConversationByContact(const std::string& firstName, const std::string& lastName,
                                                 const std::string& number) const override;
    Conversation* getConversationForUser(const std::string& userId) const override;

    /** 1 for the order of names whenever the whole list is told; everything else for live calls, then newest. */
    virtual void setSortType(int sortType);

    /** The mailbox has another number: the rows of both are made anew. */
    void voiceMailChanged(const std::string& oldNumber, const std::string& newNumber);

  private:
    using Rows = std::vector<Conversation*>;

    void rebuild();
    void combineSources();
    Rows mergeIntoRows(const ConversationList& source);
    void copyUnmergedConversationsInto(const Rows& unmerged, RowIds& ids, Rows& groupCalls);

    /** For interested parties; none of the library's interfaces hears of it yet. */
    void notifySourceSubscribed() {}

    void updatePresence(const Conversation& update);
    void updateSourcesWithContact(Conversation& contact);
    Conversation* findConversation(const std::string& conversationId);
    Conversation* findListed(const std::string& conversationId) const;
    Conversation* cloneTogether(const Rows& conversations);
    void removeConversationWithNumber(const std::string& number);
    void notifyObserversOfConversationsChanged();

    const std::unique_ptr<ConversationSources> sources_;
    const std::unique_ptr<ConversationList> list_;
    const std::unique_ptr<DisplayObservers> observers_; ///< behind the list, of whose rows they are told
    const std::unique_ptr<TemporaryConversations> temporaries_;
    ConversationItemFactory* itemFactory_;
    bool sourcesReady_ = false;
    int sortType_ = 0;
    const std::unique_ptr<CombinedRows> rows_;
    NotificationRound round_;
};
} // namespace ConversationAPI
