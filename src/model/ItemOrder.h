/**
 * The order of items, and sorting by it.
 *
 * It is no strict weak ordering, so the standard sorts must not be given it. But nearly all items are ordered by
 * their time alone: those are sorted by it, the few others (live calls) are sorted among themselves one by one, and
 * both are merged.
 */
#pragma once

#include "ConversationAPI/ConversationItem.h"
#include "model/InsertionSort.h"
#include "model/ItemStates.h"

#include <algorithm>
#include <vector>

namespace ConversationAPI
{
inline bool isOrderedByTimeAlone(ConversationItemState state)
{
    return States::ORDERED_BY_TIME_ALONE.has(state);
}

/** Whether an item comes before another one, if these are their times; see ConversationItem::operator<(). */
bool precedes(const ConversationItem& item, const ConversationItem& other, long time, long otherTime);

/** By what something that is ordered by an item finds its place. */
struct ItemStanding
{
    enum Kind : unsigned char
    {
        BY_TIME,
        BESIDE_OTHERS, ///< only comparing it with other items tells
        BEHIND_ALL     ///< there is no item
    };

    long time = 0;
    Kind kind = BEHIND_ALL;
    ConversationItemState state = ConversationItemState::NO_STATE; ///< of one that is compared, else none

    bool operator==(const ItemStanding& other) const
    {
        return kind == other.kind && time == other.time && state == other.state;
    }
};

/** The item may be null. */
ItemStanding standingOf(const ConversationItem* item);

/** Whether an item that is ordered by its time comes before one that is not; equals keep the order they had. */
bool comesBefore(const ConversationItem& timed, const ConversationItem& other, bool cameBefore);

/**
 * Sorts stably; `initialItem` gives the item by which an element is ordered, null for one that belongs behind
 * all others.
 */
template <typename Element, typename InitialItem>
void sortByItemOrder(std::vector<Element>& elements, InitialItem initialItem)
{
    struct Placed
    {
        Element element;
        const ConversationItem* item;
        long time;
        std::size_t place;
    };
    std::vector<Placed> timed;
    std::vector<Placed> others;
    std::vector<Element> last;
    timed.reserve(elements.size());
    for (const Element& element : elements)
    {
        const ConversationItem* item = initialItem(element);
        const ItemStanding standing = standingOf(item);
        if (standing.kind == ItemStanding::BEHIND_ALL)
        {
            last.push_back(element);
            continue;
        }
        auto& kind = standing.kind == ItemStanding::BY_TIME ? timed : others;
        kind.push_back(Placed{element, item, standing.time, timed.size() + others.size()});
    }
    const auto isLater = [](const Placed& a, const Placed& b) { return a.time > b.time; };
    if (!std::is_sorted(timed.begin(), timed.end(), isLater)) // as what comes from sorted sources mostly is
    {
        std::stable_sort(timed.begin(), timed.end(), isLater);
    }
    insertionSort(others, [](const Placed& a, const Placed& b)
                  { return a.item->lessThanOtherConsideringCreationTime(*b.item); });

    auto out = elements.begin();
    auto nextTimed = timed.begin();
    for (const Placed& other : others)
    {
        for (; nextTimed != timed.end() && comesBefore(*nextTimed->item, *other.item, nextTimed->place < other.place);
             ++nextTimed)
        {
            *out++ = nextTimed->element;
        }
        *out++ = other.element;
    }
    for (; nextTimed != timed.end(); ++nextTimed)
    {
        *out++ = nextTimed->element;
    }
    std::copy(last.begin(), last.end(), out);
}
} // namespace ConversationAPI
