/**
 * Turns the items of all item sources into conversations, one for each remote party.
 *
 * It observes its item sources and is itself a source of conversations. It owns the conversations in its list
 * and every item handed to it; factory, sources and observers are not owned: the application destroys sources
 * and observers after taking them off, the factory and its identifier generator after the aggregator.
 *
 * Everything runs on the UI thread. Observers are told from a copy of their set: one that was removed is not
 * told any more, one that was added is told from the next time on. They may call back: a rebuild that they ask
 * for runs once, after the outermost notification, and conversations that were dropped live until then. A
 * rebuild discards all conversations; only their identifiers survive.
 */
#pragma once

#include "ConversationAPI/ConversationItemSourceObserverIfc.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationSourceIfc.h"
#include "ConversationAPI/IdsInUseIfc.h"
#include "ConversationAPI/NotificationRound.h"
#include "ConversationAPI/RandomCachingConversationIDGenerator.h"
#include "platform/Semaphore.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace ConversationAPI
{
class ContactRegrouping;
class ConversationFactory;
class ConversationItemSourceIfc;
class ItemPlacement;
class ItemSources;

class ConversationItemAggregator : public ConversationItemSourceObserverIfc,
                                   public ConversationSourceIfc,
                                   public IdsInUseIfc
{
  public:
    /** Conversations in the order in which they were found, each once; null is nobody. */
    class UniqueConversationList
    {
      public:
        void push_back(Conversation* conversation);
        bool empty() const { return conversations_.empty(); }
        std::size_t size() const { return conversations_.size(); }

        /** Throws std::out_of_range for an index that is none. */
        Conversation* at(std::size_t index) const { return conversations_.at(index); }
        std::deque<Conversation*>::const_iterator begin() const { return conversations_.begin(); }
        std::deque<Conversation*>::const_iterator end() const { return conversations_.end(); }

      private:
        std::deque<Conversation*> conversations_;
    };

    explicit ConversationItemAggregator(ConversationFactory* factory);
    ~ConversationItemAggregator() override;

    ConversationItemAggregator(const ConversationItemAggregator&) = delete;
    ConversationItemAggregator& operator=(const ConversationItemAggregator&) = delete;

    /** The source reports here from now on; what it has already is taken in. */
    void addItemSource(ConversationItemSourceIfc* source);
    void addItemSources(std::vector<ConversationItemSourceIfc*>& sources);
    void removeItemSource(ConversationItemSourceIfc* source);

    void conversationItemsChanged() override;
    void conversationItemChanged(ConversationItem* item) override;
    void newConversationItem(ConversationItem* item) override;
    bool removeActiveConversationItemForCall(const std::string& callId) override;
    void sourceSubscribed() override;

    ConversationList* getConversations() const override { return conversations_.get(); }
    Conversation* getConversation(const std::string& conversationId) override;
    void addObserver(ConversationSourceObserverIfc* observer) override;
    void removeObserver(ConversationSourceObserverIfc* observer) override;

    /** Always null: call history knows no users. */
    Conversation* getConversationForUser(const std::string&) override { return nullptr; }
    std::vector<std::string> getInUseConversationIds() override;
    void clearSearchResults() override {}
    void voiceMailChanged(const std::string& oldNumber, const std::string& newNumber) override;
    void deleteConversation(const std::string& conversationId) override;

    /** Observers are not told. */
    void deleteConversations() override;
    int getSourceType() override { return 1; }

    /** Unites the conversations that, now that this contact is known, belong to one party. */
    void conversationUpdated(Conversation* contact) override;

    /**
     * The same for all contacts that there are, in order, with one collection of unused identifiers at the end. From
     * then on, conversations that have a contact's id are that one's, also where another contact has the number.
     */
    void contactsUpdated(const std::vector<Conversation*>& contacts);

    /** The same when contacts, or numbers of theirs, have gone: then the conversations are made anew first. */
    void contactsReplaced(const std::vector<Conversation*>& contacts);
    void markAllMissedCallsRead() override;

    void appendIdHashes(std::vector<std::uint32_t>& hashes) const override;

    /** Always empty. */
    std::vector<ConversationItem*> getItemsForConversation(Conversation*) { return {}; }

    /** Has the sources report the history of this number anew. */
    void reloadCallsForNumber(const std::string& number);

  private:
    class Lock;

    void rebuild(bool tellObservers);
    void refreshConversations();
    void loadConversationListData();
    void buildConversationsFrom(const std::vector<ConversationItem*>& items);
    Conversation* findConversationOfCall(const std::string& callId);
    void settleAfterCall(Conversation* conversation, const std::string& callId, bool wasOfTwoParties);
    void triggerGarbageCollectionOnIDGenerators();

    template <typename Notification>
    void notifyObservers(Notification notification);
    void notifyObserversConversationUpdated(Conversation* conversation);

    const std::unique_ptr<ConversationList> conversations_;
    Semaphore semaphore_{1, 1, false};
    bool isLocked_ = false; ///< the semaphore is held further up in this call
    bool collectsIdsLater_ = false;
    const std::unique_ptr<ItemSources> sources_;
    RandomCachingConversationIDGenerator idGenerator_;
    ConversationFactory* factory_;
    const std::unique_ptr<ItemPlacement> placement_;
    std::set<ConversationSourceObserverIfc*> observers_;
    NotificationRound round_;
    const std::unique_ptr<ContactRegrouping> regrouping_;
};
} // namespace ConversationAPI
