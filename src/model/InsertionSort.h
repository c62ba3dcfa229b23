/**
 * Stable insertion sort.
 *
 * For orders that are not strict weak orderings, which the standard sorts must not be given: an element moves
 * before every element behind which it need not stand, and nothing else is assumed of the order.
 */
#pragma once

#include <algorithm>
#include <functional>

namespace ConversationAPI
{
template <typename Sequence, typename Precedes = std::less<>>
void insertionSort(Sequence& sequence, Precedes precedes = {})
{
    for (auto next = sequence.begin(); next != sequence.end(); ++next)
    {
        const auto place =
            std::find_if(sequence.begin(), next, [&](const auto& element) { return precedes(*next, element); });
        std::rotate(place, next, std::next(next));
    }
}
} // namespace ConversationAPI
