/** How well a row matches what was typed, the best first. */
#pragma once

#include <cstdint>

namespace ConversationAPI
{
enum class MatchRank : std::uint8_t
{
    WHOLE,       ///< it is the name or the number
    START,       ///< the name or the number begins with it
    WORD_STARTS, ///< words of the name begin with its words
    KEYPAD,      ///< words of the name begin with it when they are typed on a keypad
    INSIDE,      ///< it stands somewhere inside
    NONE
};
} // namespace ConversationAPI
