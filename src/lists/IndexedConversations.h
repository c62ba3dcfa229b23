/**
 * The sequence of a list's conversations, with the indexes that spare it walking.
 *
 * A look-up gathers the conversations that share a key with what is sought and tests them in list order, so
 * its answer is the one a walk would give. Conversations tell of changes of their keys (keysChanged()), which
 * are looked at only when the next question comes; those that do not (a phantom is not observed) are always
 * tested. Not owned: who removes a conversation decides what becomes of it.
 */
#pragma once

#include "ConversationAPI/ContactDetails.h"
#include "ConversationAPI/CopyOnWrite.h"
#include "ConversationAPI/SharedText.h"

#include <cstdint>
#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ConversationAPI
{
class Conversation;
class ConversationUnaryCondition;

class IndexedConversations
{
  public:
    const std::vector<Conversation*>& inOrder() const { return sequence_; }
    bool contains(Conversation* conversation) const { return members_.count(conversation) != 0; }

    /** The place in the sequence, its size when the conversation is not in it. */
    std::size_t position(Conversation* conversation) const;

    /** The first conversation for which the condition holds; null when there is none. */
    Conversation* findFirst(const ConversationUnaryCondition& condition);

    /** At either end; one that is in the sequence already must not be added. */
    void pushBack(Conversation* conversation, bool isObserved);
    void pushFront(Conversation* conversation, bool isObserved);
    void removeAt(std::size_t position);
    void clear();

    /** The same conversations in another order. */
    void reorder(std::vector<Conversation*> sequence);

    void setObserved(Conversation* conversation, bool isObserved);
    void keysChanged(Conversation* conversation);

  private:
    /** A conversation and the keys under which it is indexed now. */
    struct Member
    {
        Conversation* conversation = nullptr;
        std::int64_t order = 0; ///< grows along the sequence
        bool isObserved = true;
        bool isStale = false;
        bool isAnonymous = false;
        bool isLive = false;
        CopyOnWrite<ContactDetails> contact;
        SharedText id;
        SharedText exchangeContactId;
        std::vector<SharedText> callIds;
    };

    /** The texts are those of the members. */
    using Index = std::pmr::unordered_multimap<std::string_view, Member*>;
    using Group = std::pmr::unordered_set<Member*>;
    class Candidates;

    static void insertContact(Index& index, Member& member);
    static void eraseContact(Index& index, Member& member);
    static void reindex(Index& index, Member& member, SharedText& key, const SharedText& newKey);

    Member& newMember(Conversation* conversation, bool isObserved, std::int64_t order);
    std::size_t positionOf(const Member& member) const;
    void markStale(Member& member);
    void refreshStaleMembers();
    void refresh(Member& member);
    void refreshCallIds(Member& member);
    void forgetCallIds(Member& member);
    void forget(Member& member);

    std::vector<Conversation*> sequence_;
    std::vector<std::int64_t> orders_; ///< of the members at the same places
    std::vector<Conversation*> stale_;
    std::pmr::unsynchronized_pool_resource memory_; ///< of everything below
    std::pmr::unordered_map<Conversation*, Member> members_{&memory_};
    Group unobserved_{&memory_};
    Group anonymous_{&memory_};
    Group live_{&memory_};
    Index byNumber_{&memory_};
    Index byId_{&memory_};
    Index byExchangeContactId_{&memory_};
    Index byCallId_{&memory_};
};
} // namespace ConversationAPI
