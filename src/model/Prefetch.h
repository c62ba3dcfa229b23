/**
 * Has what is needed soon brought near.
 *
 * For walks over thousands of things in another order than they lie in memory: to wait for one takes longer than to
 * work on it, and the processor cannot guess which one comes next. Changes nothing.
 */
#pragma once

#include "ConversationAPI/PartyNumbers.h"

#include <cstddef>
#include <string>
#include <vector>

namespace ConversationAPI
{
class Conversation;
class ConversationItem;

/** How many things ahead. */
constexpr std::size_t PREFETCH_DISTANCE = 4;
constexpr std::size_t CACHE_LINE = 64;

inline void prefetchLine(const void* address)
{
    __builtin_prefetch(address, 1);
    asm volatile(""); // or the compiler leaves out calls of functions that do nothing else, as if they did nothing
}

template <typename Thing>
void prefetch(const Thing& thing)
{
    const auto* bytes = reinterpret_cast<const char*>(&thing);
    for (std::size_t offset = 0; offset < sizeof thing; offset += CACHE_LINE)
    {
        prefetchLine(bytes + offset);
    }
    prefetchLine(bytes + sizeof thing); // things begin anywhere in a line, and what derives from them goes on
}

/** What the owners of a thing are counted in. */
template <typename Thing>
void prefetchBeginning(const Thing& thing)
{
    prefetchLine(&thing);
}

/** Of each conversation, by a walk. What else is brought near takes time and displaces other things. */
enum class Needed
{
    PLACES,      ///< by what it is ordered
    FIRST_ITEMS, ///< its initial item
    OWNERS,      ///< itself, and who shares what it holds
    EVERYTHING   ///< that goes with it when it is deleted
};

/** For a walk that has come to this place. Conversations behind it are looked at, those before it may be gone. */
template <Needed NEEDED>
void prefetchAhead(const std::vector<Conversation*>& all, std::size_t place);

/** What tells where an item belongs: its beginning, up to the number of its first party. */
inline void prefetchHead(const ConversationItem& item)
{
    struct Head
    {
        char bytes[2 * CACHE_LINE + sizeof(std::string)];
    };
    prefetch(reinterpret_cast<const Head&>(item));
}

/** Those besides the main number. */
inline void prefetchOthers(const PartyNumbers& numbers)
{
    if (const ContactNumbers* others = numbers.others())
    {
        prefetch(*others);
    }
}

/** The names and further numbers of the first party of an item that is near. */
void prefetchTexts(const ConversationItem& item);
} // namespace ConversationAPI
