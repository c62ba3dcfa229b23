/**
 * The order of a list's conversations, and how to restore it without sorting everything anew.
 *
 * Members are numbered along the sequence, with gaps, so that the place of one is found by halving and a member
 * that moves gets a number between its new neighbours' while the others keep theirs. Since the last sort() the
 * sequence knows which members are loose: those that came, moved or changed. The rest, the settled ones, keep their
 * places, those that are ordered by their times and those whose place depends on how they compare with others (live
 * calls), so that the next sort has to find places for the loose ones only. The members belong to the caller, who
 * tells of every change.
 */
#pragma once

#include "lists/ListMember.h"

#include <boost/container/flat_set.hpp>
#include <boost/container/small_vector.hpp>

#include <functional>
#include <vector>

namespace ConversationAPI
{
class ListSequence
{
  public:
    using Members = std::vector<ListMember*>;

    /** As many as a single update has to do with take no memory from the heap. */
    template <typename Element>
    using Few = boost::container::small_vector<Element, 4>;
    using Places = Few<std::size_t>;

    const std::vector<Conversation*>& conversations() const { return conversations_; }
    ListMember& at(std::size_t place) const { return *members_[place]; }
    std::size_t placeOf(const ListMember& member) const;

    void reserve(std::size_t count);
    void pushBack(ListMember& member) { insertAt(members_.size(), member); }
    void pushFront(ListMember& member) { insertAt(0, member); }
    void removeAt(std::size_t place);
    void clear();

    /** The same members in another order, which is not that of sort(). */
    void reorder(Members members);

    /** Whether it is in the order of sort() but for the members that changed since. */
    bool isSorted() const { return isSorted_; }

    /** What the member is ordered by may have changed. */
    void changed(ListMember& member);

    /** By initial items; stable. After few changes, nothing is done in proportion to the list but moving memory. */
    void sort();

  private:
    /** One step of a sort: the member at `from` leaves its place, `member` comes to `to`. Both grow along the steps. */
    struct Move
    {
        std::size_t from;
        std::size_t to;
        ListMember* member;
    };
    using Moves = Few<Move>;
    using FewMembers = boost::container::flat_set<ListMember*, std::less<ListMember*>, Few<ListMember*>>;

    void insertAt(std::size_t place, ListMember& member);
    void loosen(ListMember& member);
    void forgetSorting();
    void sortAll();
    bool noteStandings();
    void sortLoose();
    Places placesOf(const FewMembers& members) const;
    Moves planMoves() const;
    void number(const Moves& moves);
    void number(std::size_t first, std::size_t last);
    void numberAll();

    std::vector<Conversation*> conversations_;
    Members members_; ///< at the same places
    bool isSorted_ = false;
    FewMembers compared_; ///< whose place depends on how they compare; empty before a sort
    FewMembers loose_;    ///< since the last sort; empty when there was none
};
} // namespace ConversationAPI
