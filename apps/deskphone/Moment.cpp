#include "Moment.h"

#include <array>
#include <ctime>
#include <limits>
#include <regex>

namespace Deskphone
{
namespace
{
constexpr std::size_t LONGEST_MOMENT = 25;

long numberAt(const std::smatch& match, std::size_t group)
{
    return std::stol(match[group].str());
}

/** Seconds since the epoch of a date and time of day in UTC; nothing for a 30th of February and the like. */
std::optional<long> secondsOf(const std::smatch& match)
{
    std::tm time{};
    time.tm_year = static_cast<int>(numberAt(match, 1)) - 1900;
    time.tm_mon = static_cast<int>(numberAt(match, 2)) - 1;
    time.tm_mday = static_cast<int>(numberAt(match, 3));
    time.tm_hour = static_cast<int>(numberAt(match, 4));
    time.tm_min = static_cast<int>(numberAt(match, 5));
    time.tm_sec = static_cast<int>(numberAt(match, 6));
    std::tm normalised = time;
    const long seconds = timegm(&normalised);
    const bool isReal = normalised.tm_mon == time.tm_mon && normalised.tm_mday == time.tm_mday &&
                        normalised.tm_hour == time.tm_hour && normalised.tm_min == time.tm_min &&
                        normalised.tm_sec == time.tm_sec;
    return isReal ? std::optional<long>(seconds) : std::nullopt;
}

std::string format(const std::tm& time, const char* pattern)
{
    std::array<char, 64> text{};
    std::strftime(text.data(), text.size(), pattern, &time);
    return text.data();
}
} // namespace

std::optional<long> parseMoment(const std::string& text)
{
    static const std::regex pattern(R"((\d{4})-(\d\d)-(\d\d)T(\d\d):(\d\d):(\d\d)(?:Z|([+-])(\d\d):(\d\d)))");
    std::smatch match;
    if (text.size() > LONGEST_MOMENT || !std::regex_match(text, match, pattern))
    {
        return std::nullopt;
    }
    std::optional<long> seconds = secondsOf(match);
    if (seconds && match[7].matched)
    {
        const long hours = numberAt(match, 8);
        const long minutes = numberAt(match, 9);
        if (hours > 14 || minutes > 59)
        {
            return std::nullopt;
        }
        *seconds -= (match[7] == "-" ? -60 : 60) * (60 * hours + minutes);
    }
    const bool isInRange = seconds && *seconds >= 0 && *seconds <= std::numeric_limits<std::int32_t>::max();
    return isInRange ? seconds : std::nullopt;
}

std::string formatMoment(long time)
{
    std::tm utc{};
    gmtime_r(&time, &utc);
    return format(utc, "%Y-%m-%dT%H:%M:%SZ");
}

std::string formatTimeOfDay(long time)
{
    std::tm local{};
    localtime_r(&time, &local);
    return format(local, "%H:%M:%S");
}
} // namespace Deskphone
