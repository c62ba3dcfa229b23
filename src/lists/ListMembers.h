/**
 * The members of a list, each found by its conversation.
 *
 * A list is filled with thousands and emptied again whenever the conversations are made anew, so the members lie in
 * large pieces of memory that are given back at once, and the index is only made when somebody looks for one of them.
 * To look for a conversation does not touch it: one that has been deleted is simply not there.
 */
#pragma once

#include "lists/ListMember.h"
#include "model/KeyIndex.h"

#include <boost/container/deque.hpp>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ConversationAPI
{
class ListMembers
{
    static constexpr std::size_t MEMBERS_AT_ONCE = 64;
    using Pieces = boost::container::deque_options<boost::container::block_size<MEMBERS_AT_ONCE>>::type;

  public:
    using Detached = boost::container::deque<ListMember, void, Pieces>;

    /** Null when the conversation is no member. */
    ListMember* find(const Conversation* conversation) const;
    bool empty() const { return members_.size() == unused_.size(); }

    /** Of a conversation that is no member yet. Stays where it is until it is removed. */
    ListMember& add(Conversation* conversation);
    void remove(ListMember& member);

    /** Those that were removed before have no conversation. */
    Detached detachAll();

  private:
    static std::uint32_t hashOf(const Conversation* conversation);
    void makeIndex() const;

    mutable Detached members_; ///< mutable for the index, which gives them out to be changed
    std::vector<ListMember*> unused_;
    mutable KeyIndex<ListMember*> byConversation_;
    mutable bool isIndexed_ = false; ///< whether all members are in the index; else none is
};
} // namespace ConversationAPI
