/** Has an item that is needed soon brought near. */
#pragma once

#include "ConversationAPI/ConversationItem.h"

#include <cstddef>

namespace ConversationAPI
{
/**
 * For walks over items in another order than they lie in memory: to wait for one takes longer than to work on it, and
 * the processor cannot guess which one comes next. Changes nothing.
 */
inline void prefetch(const ConversationItem& item)
{
    constexpr std::size_t CACHE_LINE = 64;
    const auto* bytes = reinterpret_cast<const char*>(&item);
    for (std::size_t offset = 0; offset < sizeof item; offset += CACHE_LINE)
    {
        __builtin_prefetch(bytes + offset, 1);
    }
}

/** How many items ahead. */
constexpr std::size_t PREFETCH_DISTANCE = 4;
} // namespace ConversationAPI
