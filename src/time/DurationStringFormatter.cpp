#include "ConversationAPI/DurationStringFormatter.h"

#include <array>
#include <cstdio>

namespace ConversationAPI
{
namespace
{
constexpr long LONGEST = 359'999; ///< 99:59:59, the most that the display has room for
} // namespace

std::string DurationStringFormatter::createDurationStr(long milliseconds)
{
    const long seconds = milliseconds / 1000;
    if (seconds < 1 || seconds > LONGEST)
    {
        return "";
    }
    const long hours = seconds / 3600;
    std::array<char, 64> minutesAndSeconds{};
    std::snprintf(minutesAndSeconds.data(), minutesAndSeconds.size(), "%02ld:%02ld)", seconds % 3600 / 60,
                  seconds % 60);
    return (hours > 0 ? "(" + std::to_string(hours) + ":" : "(") + minutesAndSeconds.data();
}
} // namespace ConversationAPI
