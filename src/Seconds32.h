/** Bringing times into the 32-bit seconds that call control and the display exchange. */
#pragma once

#include <cstdint>
#include <limits>

namespace ConversationAPI
{
/**
 * The nearest time that fits. A time outside 1901 to 2038 becomes the limit it lies beyond; wrapped around it
 * would read as a moment decades away on the other side.
 */
constexpr std::int32_t saturatedTo32Bits(long seconds)
{
    constexpr long lowest = std::numeric_limits<std::int32_t>::min();
    constexpr long highest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(seconds < lowest ? lowest : seconds > highest ? highest : seconds);
}
} // namespace ConversationAPI
