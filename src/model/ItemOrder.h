/**
 * Sorting by the order of items.
 *
 * That order is no strict weak ordering, so the standard sorts must not be given it. But nearly all items are
 * ordered by their time alone: those are sorted by it, the few others (live calls) are sorted among themselves
 * one by one, and both are merged.
 */
#pragma once

#include "ConversationAPI/ConversationItem.h"
#include "model/InsertionSort.h"

#include <algorithm>
#include <vector>

namespace ConversationAPI
{
/** Whether items of this state have no place of their own in the order but that of their time. */
bool isOrderedByTimeAlone(ConversationItemState state);

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
    const auto precedes = [](const Placed& a, const Placed& b)
    { return a.item->lessThanOtherConsideringCreationTime(*b.item); };
    std::vector<Placed> timed;
    std::vector<Placed> others;
    std::vector<Element> last;
    timed.reserve(elements.size());
    for (const Element& element : elements)
    {
        const ConversationItem* item = initialItem(element);
        if (!item)
        {
            last.push_back(element);
            continue;
        }
        auto& kind = isOrderedByTimeAlone(item->getState()) ? timed : others;
        kind.push_back(Placed{element, item, item->timeStampUTC(), timed.size() + others.size()});
    }
    std::stable_sort(timed.begin(), timed.end(), [](const Placed& a, const Placed& b) { return a.time > b.time; });
    insertionSort(others, precedes);

    auto out = elements.begin();
    auto nextTimed = timed.begin();
    for (const Placed& other : others)
    {
        const auto isAheadOfOther = [&](const Placed& one)
        { return !precedes(other, one) && (precedes(one, other) || one.place < other.place); };
        for (; nextTimed != timed.end() && isAheadOfOther(*nextTimed); ++nextTimed)
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
