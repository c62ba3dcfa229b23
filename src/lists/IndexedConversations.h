/**
 * The sequence of a list's conversations, with the indexes that spare it walking.
 *
 * A look-up gathers the conversations that share a key with what is sought and tests them in list order, so
 * its answer is the one a walk would give. Conversations tell of changes of their keys (keysChanged()), which
 * are looked at only when the next question comes, numbers only when it is about a number; those that do not (a
 * phantom is not observed) are always tested. Not owned: who removes a conversation decides what becomes of it.
 */
#pragma once

#include "lists/ListMembers.h"
#include "lists/ListSequence.h"
#include "model/KeyIndex.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

namespace ConversationAPI
{
class Conversation;
class ConversationUnaryCondition;

class IndexedConversations
{
  public:
    const std::vector<Conversation*>& inOrder() const { return sequence_.conversations(); }
    bool contains(Conversation* conversation) const { return members_.find(conversation) != nullptr; }

    /** Whether there is one that is not observed. */
    bool hasUnobserved() const { return !unobserved_.empty(); }

    /** The place in the sequence, its size when the conversation is not in it. */
    std::size_t position(Conversation* conversation) const;

    /** The first conversation for which the condition holds; null when there is none. */
    Conversation* findFirst(const ConversationUnaryCondition& condition);

    /** For so many in all. */
    void reserve(std::size_t count);

    /** At either end; one that is in the sequence already must not be added. */
    void pushBack(Conversation* conversation, bool isObserved);
    void pushFront(Conversation* conversation, bool isObserved);
    void removeAt(std::size_t position);
    void clear() { detachAll(); }

    /** Empties the list; what was taken out stands in the order of its memory. */
    ListMembers::Detached detachAll();

    /** Of the ids by which conversations are found. */
    void appendIdHashes(std::vector<std::uint32_t>& hashes);

    /** Has what is known of these ids brought near; what is stale is not looked at. */
    void expectIds(const std::vector<std::uint32_t>& idHashes) const
    {
        byId_.expect(idHashes, [](const Member* member) { prefetchLine(member); });
    }

    /** By initial items; stable. */
    void sort();

    /** The same conversations in another order. */
    void reorder(const std::vector<Conversation*>& sequence);

    void setObserved(Conversation* conversation, bool isObserved);
    void keysChanged(Conversation* conversation);

  private:
    using Member = ListMember;

    using Index = KeyIndex<Member*>;
    using Group = std::unordered_set<Member*>;
    class Candidates;

    static void insertContact(Index& index, Member& member);
    static void eraseContact(Index& index, Member& member);
    static void reindex(Index& index, Member& member, std::uint32_t& hash, std::uint32_t newHash);

    Member& newMember(Conversation* conversation, bool isObserved);
    void markStale(Member& member);
    void refreshAllMembers();
    void refreshStaleMembers();
    void refreshAllNumbers();
    void refreshStaleNumbers();
    void refreshNumbers(Member& member);
    void refresh(Member& member);
    void refreshCallIds(Member& member);
    void forgetCallIds(Member& member);
    void forget(Member& member);

    ListSequence sequence_;
    std::vector<Member*> stale_;        ///< and some that were refreshed or removed meanwhile
    std::vector<Member*> staleNumbers_; ///< the same, for numbers
    std::size_t expected_ = 0;          ///< how many conversations there will be
    bool areAllStale_ = true;           ///< all that are observed, as after a rebuild; none is marked then
    bool areAllNumbersStale_ = true;    ///< the same, for numbers
    ListMembers members_;
    Group unobserved_;
    Group anonymous_;
    Group live_;
    Index byNumber_;
    Index byId_;
    Index byExchangeContactId_;
    Index byCallId_;
};
} // namespace ConversationAPI
