#include "lists/ListSequence.h"

#include "ConversationAPI/Conversation.h"

#include <algorithm>
#include <limits>

namespace ConversationAPI
{
namespace
{
using Members = ListSequence::Members;

/** Between the numbers of neighbours: room for a member to come between them some thirty times. */
constexpr std::int64_t GAP = std::int64_t{1} << 32;
constexpr std::int64_t LAST_NUMBER = std::numeric_limits<std::int64_t>::max() / 4;

/** Beyond so many loose members, or this part of all, sorting everything is cheaper. */
constexpr std::size_t FEW_LOOSE = 4;
constexpr std::size_t LOOSE_PART = 16;

bool isOrderedByComparing(const ListMember* member)
{
    return member->standing.kind == ItemStanding::BESIDE_OTHERS;
}

/** Of two members that are not ordered by comparing. */
bool standsBefore(const ListMember& a, const ListMember& b)
{
    if (a.standing.kind != b.standing.kind)
    {
        return a.standing.kind == ItemStanding::BY_TIME;
    }
    return a.standing.time != b.standing.time ? a.standing.time > b.standing.time : a.order < b.order;
}

bool precedes(const ListMember* a, const ListMember* b)
{
    return a->conversation->initialItem()->lessThanOtherConsideringCreationTime(*b->conversation->initialItem());
}

/** The members of a sequence without the loose ones. */
class Settled
{
  public:
    /** The places of the loose ones grow. */
    Settled(const Members& all, const std::vector<std::size_t>& loosePlaces) : all_(all), before_(loosePlaces)
    {
        for (std::size_t i = 0; i < before_.size(); ++i)
        {
            before_[i] -= i;
        }
    }

    std::size_t size() const { return all_.size() - before_.size(); }

    const ListMember& at(std::size_t index) const
    {
        const auto looseBefore = std::upper_bound(before_.begin(), before_.end(), index) - before_.begin();
        return *all_[index + static_cast<std::size_t>(looseBefore)];
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
    std::vector<std::size_t> before_; ///< how many of them stand before each loose one
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

    /** Of the members that are ordered by their time. */
    Arrangement(Members timed, const Settled& settled) : settled_(settled)
    {
        std::sort(timed.begin(), timed.end(),
                  [](const ListMember* a, const ListMember* b) { return standsBefore(*a, *b); });
        for (ListMember* member : timed)
        {
            placed_.push_back({member, settled.countBefore(*member)});
        }
    }

    /** Behind the one that was inserted last and all that come before the member. */
    void insert(ListMember& member)
    {
        for (const ListMember* one = next(); one && comesBefore(*one, member); one = next())
        {
            ++(isLooseNext() ? nextLoose_ : nextSettled_);
        }
        placed_.insert(placed_.begin() + static_cast<std::ptrdiff_t>(nextLoose_), Placed{&member, nextSettled_});
        ++nextLoose_;
    }

    const std::vector<Placed>& placed() const { return placed_; }

  private:
    static bool comesBefore(const ListMember& one, const ListMember& member)
    {
        return one.standing.kind != ItemStanding::BEHIND_ALL &&
               ConversationAPI::comesBefore(*one.conversation->initialItem(), *member.conversation->initialItem(),
                                            one.order < member.order);
    }

    bool isLooseNext() const
    {
        return nextLoose_ < placed_.size() && placed_[nextLoose_].settledBefore == nextSettled_;
    }

    const ListMember* next() const
    {
        if (isLooseNext())
        {
            return placed_[nextLoose_].member;
        }
        return nextSettled_ < settled_.size() ? &settled_.at(nextSettled_) : nullptr;
    }

    const Settled& settled_;
    std::vector<Placed> placed_;
    std::size_t nextLoose_ = 0;
    std::size_t nextSettled_ = 0;
};

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

void ListSequence::insertAt(std::size_t place, ListMember& member)
{
    const auto offset = static_cast<std::ptrdiff_t>(place);
    conversations_.insert(conversations_.begin() + offset, member.conversation);
    members_.insert(members_.begin() + offset, &member);
    number(place, place + 1);
    if (isSorted_)
    {
        loose_.insert(&member);
    }
}

void ListSequence::removeAt(std::size_t place)
{
    const auto offset = static_cast<std::ptrdiff_t>(place);
    loose_.erase(members_[place]);
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
    isSorted_ = false;
    loose_.clear();
}

void ListSequence::changed(ListMember& member)
{
    if (!isSorted_)
    {
        return;
    }
    const ItemStanding now = standingOf(member.conversation->initialItem());
    if (!(now == member.standing))
    {
        member.standing = now;
        loose_.insert(&member);
    }
}

void ListSequence::sort()
{
    if (!isSorted_ || loose_.size() > std::max(FEW_LOOSE, members_.size() / LOOSE_PART))
    {
        sortAll();
    }
    else
    {
        sortLoose();
    }
}

void ListSequence::sortAll()
{
    Members sorted = members_;
    std::unordered_set<ListMember*> loose;
    sortByItemOrder(
        sorted, [](const ListMember* member) { return member->conversation->initialItem(); },
        [&loose](ListMember* member, const ItemStanding& standing)
        {
            member->standing = standing;
            if (isOrderedByComparing(member))
            {
                loose.insert(member);
            }
        });
    reorder(std::move(sorted));
    loose_ = std::move(loose);
    isSorted_ = true;
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
    for (auto member = loose_.begin(); member != loose_.end();)
    {
        member = isOrderedByComparing(*member) ? std::next(member) : loose_.erase(member);
    }
}

/** Without those at either end that stay where they are, as a live call at the top mostly does. */
ListSequence::Moves ListSequence::planMoves() const
{
    Members loose(loose_.begin(), loose_.end());
    std::sort(loose.begin(), loose.end(), [](const ListMember* a, const ListMember* b) { return a->order < b->order; });
    std::vector<std::size_t> places;
    for (const ListMember* member : loose)
    {
        places.push_back(placeOf(*member));
    }
    const auto timed = std::stable_partition(loose.begin(), loose.end(), isOrderedByComparing);
    Members others(loose.begin(), timed);
    insertionSort(others, precedes);
    const Settled settled(members_, places);
    Arrangement arrangement(Members(timed, loose.end()), settled);
    for (ListMember* other : others)
    {
        arrangement.insert(*other);
    }
    Moves moves;
    for (std::size_t i = 0; i < places.size(); ++i)
    {
        const Arrangement::Placed& placed = arrangement.placed()[i];
        moves.push_back({places[i], placed.settledBefore + i, placed.member});
    }
    const auto isMove = [this](const Move& move) { return move.from != move.to || members_[move.to] != move.member; };
    const auto first = std::find_if(moves.begin(), moves.end(), isMove);
    const auto last = std::find_if(moves.rbegin(), std::make_reverse_iterator(first), isMove).base();
    return {first, last};
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
