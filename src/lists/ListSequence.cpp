#include "lists/ListSequence.h"

#include "ConversationAPI/Conversation.h"
#include "model/Prefetch.h"

#include <algorithm>
#include <limits>

namespace ConversationAPI
{
namespace
{
using Members = ListSequence::Members;
using Places = ListSequence::Places;

/** Between the numbers of neighbours: room for a member to come between them some thirty times. */
constexpr std::int64_t GAP = std::int64_t{1} << 32;
constexpr std::int64_t LAST_NUMBER = std::numeric_limits<std::int64_t>::max() / 4;

/** Beyond so many loose members, or this part of all, sorting everything is cheaper. */
constexpr std::size_t FEW_LOOSE = 4;
constexpr std::size_t LOOSE_PART = 16;

/** By its first item, which for nearly all need not be looked at. */
ItemStanding standingOf(const Conversation& conversation)
{
    const auto& items = conversation.items();
    return items.empty() || !conversation.holdsOnlyPlainItems()
               ? ConversationAPI::standingOf(conversation.shownItem())
               : ItemStanding{items.front().time(), ItemStanding::BY_TIME, ConversationItemState::NO_STATE};
}

bool isOrderedByComparing(const ListMember* member)
{
    return member->kind == ItemStanding::BESIDE_OTHERS;
}

/** Of two members that are not ordered by comparing. */
bool standsBefore(const ListMember& a, const ListMember& b)
{
    if (a.kind != b.kind)
    {
        return a.kind == ItemStanding::BY_TIME;
    }
    return a.time != b.time ? a.time > b.time : a.order < b.order;
}

bool precedes(const ListMember* a, const ListMember* b)
{
    return a->conversation->shownItem()->lessThanOtherConsideringCreationTime(*b->conversation->shownItem());
}

/** Whether a member stays before another one; one of the two at least is ordered by comparing. */
bool staysBefore(const ListMember& one, const ListMember& compared)
{
    if (compared.kind == ItemStanding::BEHIND_ALL)
    {
        return true;
    }
    if (isOrderedByComparing(&one))
    {
        const bool precedesIt = precedes(&one, &compared);
        return precedesIt != precedes(&compared, &one) ? precedesIt : one.order < compared.order;
    }
    return one.kind != ItemStanding::BEHIND_ALL &&
           comesBefore(*one.conversation->shownItem(), *compared.conversation->shownItem(), one.order < compared.order);
}

/** The members of a sequence without some of them. */
class Settled
{
  public:
    /** The places of those that are left out grow; they outlive this object. */
    Settled(const Members& all, const Places& places) : all_(all), places_(places), before_(places)
    {
        for (std::size_t i = 0; i < before_.size(); ++i)
        {
            before_[i] -= i;
        }
    }

    std::size_t size() const { return all_.size() - before_.size(); }

    const ListMember& at(std::size_t index) const { return *all_[placeAt(index)]; }

    /** Among all; the number of all for the index behind the last. */
    std::size_t placeAt(std::size_t index) const
    {
        const auto leftOut = std::upper_bound(before_.begin(), before_.end(), index) - before_.begin();
        return index + static_cast<std::size_t>(leftOut);
    }

    /** How many of them stand before this place among all. */
    std::size_t countBefore(std::size_t place) const
    {
        const auto leftOut = std::lower_bound(places_.begin(), places_.end(), place) - places_.begin();
        return place - static_cast<std::size_t>(leftOut);
    }

    /** How many of them stand before the member. */
    std::size_t countBefore(const ListMember& member) const
    {
        std::size_t first = 0;
        std::size_t last = size();
        while (first < last)
        {
            const std::size_t middle = first + (last - first) / 2;
            if (standsBefore(at(middle), member))
            {
                first = middle + 1;
            }
            else
            {
                last = middle;
            }
        }
        return first;
    }

  private:
    const Members& all_;
    const Places& places_; ///< of those that are left out
    Places before_;        ///< how many of them stand before each of those that are left out
};

/** The loose members in their new order, each with the number of settled ones that come before it. */
class Arrangement
{
  public:
    struct Placed
    {
        ListMember* member;
        std::size_t settledBefore;
    };

    explicit Arrangement(const Settled& settled) : settled_(settled) {}

    /** In the order of their times; `place` tells how many settled ones come before. */
    void append(ListMember& member, std::size_t place) { placed_.push_back({&member, place}); }

    /** Before the first member, settled or placed, that does not come before this one. */
    void insert(ListMember& member)
    {
        std::size_t settled = 0;
        auto loose = placed_.begin();
        for (;;)
        {
            const bool isLooseNext = loose != placed_.end() && loose->settledBefore == settled;
            const ListMember* next = isLooseNext                 ? loose->member
                                     : settled < settled_.size() ? &settled_.at(settled)
                                                                 : nullptr;
            if (!next || !staysBefore(*next, member))
            {
                break;
            }
            isLooseNext ? static_cast<void>(++loose) : static_cast<void>(++settled);
        }
        placed_.insert(loose, Placed{&member, settled});
    }

    const ListSequence::Few<Placed>& placed() const { return placed_; }

  private:
    const Settled& settled_;
    ListSequence::Few<Placed> placed_;
};

/**
 * Newest first, among the settled ones that have their places by time, but before live calls that do not stay before
 * them. A held call lets newer voicemail pass, but no call of the history: none passes what comes before it here.
 */
void arrangeByTime(const ListSequence::Few<ListMember*>& members, const Settled& settled, const Settled& timedOnly,
                   Arrangement& arrangement)
{
    std::size_t least = 0;
    for (ListMember* member : members)
    {
        std::size_t place = settled.countBefore(timedOnly.placeAt(timedOnly.countBefore(*member)));
        while (place > least && isOrderedByComparing(&settled.at(place - 1)) &&
               !staysBefore(settled.at(place - 1), *member))
        {
            --place;
        }
        arrangement.append(*member, place);
        least = place;
    }
}

/** Carries out the moves; `value` gives what stands for a member in this sequence. */
template <typename Element, typename Moves, typename Value>
void rearrange(std::vector<Element>& elements, const Moves& moves, Value value)
{
    const auto place = [&elements](std::size_t index) { return elements.begin() + static_cast<std::ptrdiff_t>(index); };
    const std::size_t end = std::max(moves.back().from, moves.back().to) + 1;
    auto staying = place(moves.front().from);
    for (auto move = moves.begin(); move != moves.end(); ++move)
    {
        const auto next = std::next(move);
        staying = std::move(place(move->from + 1), place(next == moves.end() ? end : next->from), staying);
    }
    auto free = place(end);
    for (auto move = moves.rbegin(); move != moves.rend(); ++move)
    {
        const auto behind = free - place(move->to) - 1;
        std::move_backward(staying - behind, staying, free);
        staying -= behind;
        free = place(move->to);
        *free = value(*move);
    }
}
} // namespace

std::size_t ListSequence::placeOf(const ListMember& member) const
{
    const auto place = std::lower_bound(members_.begin(), members_.end(), member.order,
                                        [](const ListMember* one, std::int64_t order) { return one->order < order; });
    return static_cast<std::size_t>(place - members_.begin());
}

void ListSequence::reserve(std::size_t count)
{
    conversations_.reserve(count);
    members_.reserve(count);
}

void ListSequence::insertAt(std::size_t place, ListMember& member)
{
    const auto offset = static_cast<std::ptrdiff_t>(place);
    conversations_.insert(conversations_.begin() + offset, member.conversation);
    members_.insert(members_.begin() + offset, &member);
    number(place, place + 1);
    if (isSorted_)
    {
        loosen(member);
    }
}

void ListSequence::removeAt(std::size_t place)
{
    const auto offset = static_cast<std::ptrdiff_t>(place);
    loose_.erase(members_[place]);
    compared_.erase(members_[place]);
    conversations_.erase(conversations_.begin() + offset);
    members_.erase(members_.begin() + offset);
}

void ListSequence::clear()
{
    conversations_.clear();
    reorder({});
}

void ListSequence::reorder(Members members)
{
    members_ = std::move(members);
    std::transform(members_.begin(), members_.end(), conversations_.begin(),
                   [](const ListMember* member) { return member->conversation; });
    numberAll();
    forgetSorting();
}

void ListSequence::changed(ListMember& member)
{
    if (!isSorted_)
    {
        return;
    }
    const ItemStanding now = standingOf(*member.conversation);
    if (!(now == member.standing()))
    {
        member.setStanding(now);
        loosen(member);
    }
}

void ListSequence::loosen(ListMember& member)
{
    loose_.insert(&member);
    if (loose_.size() > std::max(FEW_LOOSE, members_.size() / LOOSE_PART))
    {
        forgetSorting();
    }
}

void ListSequence::forgetSorting()
{
    isSorted_ = false;
    loose_.clear();
    compared_.clear();
}

void ListSequence::sort()
{
    isSorted_ ? sortLoose() : sortAll();
}

void ListSequence::sortAll()
{
    if (!noteStandings())
    {
        Members sorted = members_;
        sortByItemOrder(sorted, [](const ListMember* member) { return member->conversation->shownItem(); });
        reorder(std::move(sorted));
        std::copy_if(members_.begin(), members_.end(), std::inserter(compared_, compared_.end()), isOrderedByComparing);
    }
    isSorted_ = true;
}

/** Answers whether the members stand in order already, as those that come from sorted sources mostly do. */
bool ListSequence::noteStandings()
{
    bool isInOrder = true;
    for (std::size_t place = 0; place < members_.size(); ++place)
    {
        prefetchAhead<Needed::PLACES>(conversations_, place);
        ListMember& member = at(place);
        member.setStanding(standingOf(*member.conversation));
        isInOrder = isInOrder && !isOrderedByComparing(&member) && (place == 0 || standsBefore(at(place - 1), member));
    }
    return isInOrder;
}

void ListSequence::sortLoose()
{
    const Moves moves = planMoves();
    if (!moves.empty())
    {
        rearrange(members_, moves, [](const Move& move) { return move.member; });
        rearrange(conversations_, moves, [](const Move& move) { return move.member->conversation; });
        number(moves);
    }
    for (ListMember* member : loose_)
    {
        isOrderedByComparing(member) ? static_cast<void>(compared_.insert(member))
                                     : static_cast<void>(compared_.erase(member));
    }
    loose_.clear();
}

/** The places of members, in order. */
ListSequence::Places ListSequence::placesOf(const FewMembers& members) const
{
    Places places;
    std::transform(members.begin(), members.end(), std::back_inserter(places),
                   [this](const ListMember* member) { return placeOf(*member); });
    std::sort(places.begin(), places.end());
    return places;
}

/**
 * Only the loose members move: how live calls compare is no order, and to compare anew those that did not change
 * could exchange them. Without those at either end that stay where they are, as a live call at the top mostly does.
 */
ListSequence::Moves ListSequence::planMoves() const
{
    const Places places = placesOf(loose_);
    Few<ListMember*> timed;
    Few<ListMember*> compared;
    for (const std::size_t place : places)
    {
        (isOrderedByComparing(members_[place]) ? compared : timed).push_back(members_[place]);
    }
    std::sort(timed.begin(), timed.end(),
              [](const ListMember* a, const ListMember* b) { return standsBefore(*a, *b); });
    const Settled settled(members_, places);
    Arrangement arrangement(settled);
    if (!timed.empty())
    {
        FewMembers notTimed = compared_;
        notTimed.insert(loose_.begin(), loose_.end());
        arrangeByTime(timed, settled, Settled(members_, placesOf(notTimed)), arrangement);
    }
    for (ListMember* member : compared)
    {
        arrangement.insert(*member);
    }
    Moves moves;
    for (std::size_t i = 0; i < places.size(); ++i)
    {
        const Arrangement::Placed& placed = arrangement.placed()[i];
        moves.push_back({places[i], placed.settledBefore + i, placed.member});
    }
    const auto isMove = [this](const Move& move) { return move.from != move.to || members_[move.to] != move.member; };
    while (!moves.empty() && !isMove(moves.back()))
    {
        moves.pop_back();
    }
    moves.erase(moves.begin(), std::find_if(moves.begin(), moves.end(), isMove));
    return moves;
}

/** Gives numbers to members that moved, neighbours among them together. */
void ListSequence::number(const Moves& moves)
{
    for (auto move = moves.begin(); move != moves.end();)
    {
        std::size_t last = move->to;
        const std::size_t first = last;
        for (; move != moves.end() && move->to == last; ++move)
        {
            ++last;
        }
        number(first, last);
    }
}

/** Numbers a run between its neighbours, or all members when there is no room. */
void ListSequence::number(std::size_t first, std::size_t last)
{
    const auto count = static_cast<std::int64_t>(last - first);
    const bool hasBefore = first > 0;
    const bool hasAfter = last < members_.size();
    const std::int64_t before = hasBefore ? at(first - 1).order : 0;
    const std::int64_t after = hasAfter ? at(last).order : 0;
    const std::int64_t step = hasBefore && hasAfter ? (after - before) / (count + 1) : GAP;
    if (step == 0 || before > LAST_NUMBER || after < -LAST_NUMBER)
    {
        return numberAll();
    }
    std::int64_t order = hasBefore || !hasAfter ? before : after - step * (count + 1);
    for (std::size_t place = first; place < last; ++place)
    {
        at(place).order = order += step;
    }
}

void ListSequence::numberAll()
{
    std::int64_t order = 0;
    for (ListMember* member : members_)
    {
        member->order = order += GAP;
    }
}
} // namespace ConversationAPI
