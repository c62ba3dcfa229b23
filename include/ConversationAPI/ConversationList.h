/**
 * The one container in which aggregators and sources keep their conversations.
 *
 * An ordered sequence with its own lock. It observes the conversations it holds and keeps, besides the
 * sequence: which number belongs to whom, which conversations changed lately, the anonymous conversation and
 * one phantom. It owns its conversations: the destructor and every operation that deletes does so; those that
 * only take out (pop, clear, findAndRemoveConversationsThatMatch) hand ownership back to the caller.
 * Conversations given out stay the list's and live until they are deleted from it.
 *
 * Every operation holds the lock, which is not recursive, unless it says "no lock"; so a condition, an executor
 * or a conversation must not call back into the list. What conversations tell the list takes no lock.
 */
#pragma once

#include "ConversationAPI/ConversationListComparison.h"
#include "ConversationAPI/ConversationModificationObserverIfc.h"
#include "ConversationAPI/ModifiedConversationsList.h"
#include "platform/Semaphore.h"

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace ConversationAPI
{
class Conversation;
class ConversationExecutor;
class ConversationUnaryCondition;
class IndexedConversations;
class NumberIndex;

class ConversationList : public ConversationModificationObserverIfc
{
  public:
    /** The order of the list is changed by its own operations only. */
    using iterator = std::vector<Conversation*>::const_iterator;
    using const_iterator = std::vector<Conversation*>::const_iterator;
    using ConversationSet = std::set<Conversation*, ConversationListComparison>;

    ConversationList();
    ~ConversationList() override;

    ConversationList(const ConversationList&) = delete;
    ConversationList& operator=(const ConversationList&) = delete;

    void conversationNumberUpdated(numberUpdateReason reason, Conversation* conversation, std::string first,
                                   std::string second) override;
    void conversationRegistered(Conversation* conversation) override;
    void conversationUnregistered(Conversation* conversation) override;
    void conversationModified(const std::string& conversationId) override;
    void conversationKeysChanged(Conversation* conversation) override;

    /** For diagnostics; no lock. */
    void setName(const std::string& name) { name_ = name; }

    /** For so many conversations in all; spares memory when it is known. */
    void reserve(std::size_t count);

    /** Appends; ignores phantoms and what is in the list already. */
    void push_back(Conversation* conversation);

    /** Inserts at the front what is not in the list yet. */
    void push_front(Conversation* conversation);

    /** Appends the list's one phantom; it is not observed. Ignores others and everything when there is one. */
    void push_back_phantom(Conversation* conversation);
    void moveConversationToTop(unsigned index);

    /** Null for an index that is none. */
    Conversation* atIndex(unsigned index) const;
    std::size_t size() const;
    bool empty() const;
    bool contains(Conversation* conversation) const;

    /** The size when the conversation is not in the list. */
    std::size_t indexOf(Conversation* conversation) const;

    /** No lock; valid until the list changes. */
    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;

    /** The first conversation for which the condition holds; null when there is none. */
    Conversation* find(const ConversationUnaryCondition& condition) const;

    /** With its index; null and the size when there is none. */
    std::pair<Conversation*, unsigned> findWithIndex(const ConversationUnaryCondition& condition) const;
    void foreach (ConversationExecutor& executor) const;

    /** Who has the number as one of the four; null for "", for nobody and for a group call. */
    Conversation* findByNumber(const std::string& number) const;

    /** Whom a search found under its first work number and nobody used yet; null when there is none. */
    Conversation* findBySearchIdWithNumber(const std::string& searchId, const std::string& number) const;

    /** Only finds conversations that have one of the four numbers; no lock. */
    Conversation* findByConversationId(const std::string& id) const;

    /** Appends every id in list order; no lock. */
    void getInUseConversationIds(std::vector<std::string>& ids) const;

    /**
     * Appends hashOfText() of every id that is not empty, in any order, some perhaps more than once. Brings the indexes
     * up to date; no lock.
     */
    void appendIdHashes(std::vector<std::uint32_t>& hashes) const;

    /** Conversations with ids of these hashes are about to be looked for. Changes nothing; no lock. */
    void expectIds(const std::vector<std::uint32_t>& idHashes) const;

    /** Null when there is none. */
    Conversation* getAnonymousConversation() const;

    /** All three without lock; clearing only forgets which one it is. */
    Conversation* getPhantomConversation() const { return phantom_; }
    bool hasPhantomConversation() const { return phantom_ != nullptr; }
    void clearPhantomConversation() { phantom_ = nullptr; }

    /** Live calls first, then newest first; stable. After a few changes since the last time, finds places for these. */
    void sort();

    /** By contact name, regardless of the case of ASCII letters; other letters come first. Stable. */
    void sortAlphabetically();
    ConversationSet asSet() const;

    /**
     * Marks all items as seen of each conversation that shows a missed call or a missed group call. Others, such as one
     * that shows a received call or one answered elsewhere, keep what is unseen.
     */
    void setAllConversationsAsViewed();

    /** How many conversations hold unseen missed calls, and how many new voicemails there are. */
    std::pair<int, int> getCurrentEventNotifications() const;

    /** Takes the conversation out; the caller owns it. */
    void pop(Conversation* conversation);
    void remove(Conversation* conversation);

    /** Deletes the first that is this conversation or has its id. */
    void erase(Conversation* conversation);
    void removeConversationAndDelete(unsigned index);
    void findAndRemoveConversationsThatMatch(const ConversationUnaryCondition& condition);
    void findAndDeleteConversationsThatMatch(const ConversationUnaryCondition& condition);
    void removeAndDeleteAll();

    /** Empties the list without deleting; the caller owns what was in it. */
    void clear();

    /** Ids, most recently modified first. */
    ModifiedConversationsList::Ids getModifiedConversations() const;

    /** No lock. */
    void clearModifiedConversations();
    std::string toString() const;

  private:
    const std::vector<Conversation*>& sequence() const;
    std::vector<Conversation*> matching(const ConversationUnaryCondition& condition) const;
    bool holds(Conversation& conversation) const;
    void pushFront(Conversation* conversation);
    Conversation* detach(std::size_t position);
    Conversation* detach(Conversation* conversation);
    void forgetAll();

    ModifiedConversationsList modified_;
    std::unique_ptr<IndexedConversations> conversations_;
    Conversation* anonymous_ = nullptr;
    std::unique_ptr<NumberIndex> numbers_;
    mutable Semaphore lock_{1, 1, false};
    std::string name_;
    Conversation* phantom_ = nullptr;
};
} // namespace ConversationAPI
