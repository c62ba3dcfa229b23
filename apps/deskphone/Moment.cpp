#include "Moment.h"

#include <algorithm>
#include <array>
#include <ctime>

namespace Deskphone
{
namespace
{
constexpr const char* LOCAL_PATTERN = "dddd-dd-ddTdd:dd:dd";
constexpr std::size_t LOCAL_LENGTH = 19;
constexpr const char* OFFSET_PATTERN = "dd:dd";
constexpr long HIGHEST_OFFSET_HOURS = 14;
constexpr long LAST_MOMENT = 2'145'916'799; ///< of 2037: the telephone's times have 32 bits

/** Whether the text is the pattern, in which 'd' stands for a digit. */
bool matches(const std::string& text, const std::string& pattern)
{
    return std::equal(text.begin(), text.end(), pattern.begin(), pattern.end(),
                      [](char character, char wanted)
                      { return wanted == 'd' ? character >= '0' && character <= '9' : character == wanted; });
}

int numberAt(const std::string& text, std::size_t position, std::size_t digits)
{
    return std::stoi(text.substr(position, digits));
}

/** Seconds since the epoch of a date and time of day in UTC; nothing for a 30th of February and the like. */
std::optional<long> secondsOf(const std::string& text)
{
    std::tm time{};
    time.tm_year = numberAt(text, 0, 4) - 1900;
    time.tm_mon = numberAt(text, 5, 2) - 1;
    time.tm_mday = numberAt(text, 8, 2);
    time.tm_hour = numberAt(text, 11, 2);
    time.tm_min = numberAt(text, 14, 2);
    time.tm_sec = numberAt(text, 17, 2);
    std::tm normalised = time;
    const long seconds = timegm(&normalised);
    const bool isReal = normalised.tm_mon == time.tm_mon && normalised.tm_mday == time.tm_mday &&
                        normalised.tm_hour == time.tm_hour && normalised.tm_min == time.tm_min &&
                        normalised.tm_sec == time.tm_sec;
    return isReal ? std::optional<long>(seconds) : std::nullopt;
}

/** Seconds that a zone, "Z" or "+01:00", is ahead of UTC. */
std::optional<long> offsetOf(const std::string& zone)
{
    if (zone == "Z")
    {
        return 0;
    }
    if (zone.empty() || (zone[0] != '+' && zone[0] != '-') || !matches(zone.substr(1), OFFSET_PATTERN))
    {
        return std::nullopt;
    }
    const long hours = numberAt(zone, 1, 2);
    const long minutes = numberAt(zone, 4, 2);
    if (hours > HIGHEST_OFFSET_HOURS || minutes > 59)
    {
        return std::nullopt;
    }
    return (zone[0] == '-' ? -60 : 60) * (60 * hours + minutes);
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
    if (text.size() < LOCAL_LENGTH || !matches(text.substr(0, LOCAL_LENGTH), LOCAL_PATTERN))
    {
        return std::nullopt;
    }
    const std::optional<long> local = secondsOf(text);
    const std::optional<long> offset = offsetOf(text.substr(LOCAL_LENGTH));
    if (!local || !offset)
    {
        return std::nullopt;
    }
    const long seconds = *local - *offset;
    const bool isInRange = seconds >= 0 && seconds <= LAST_MOMENT;
    return isInRange ? std::optional<long>(seconds) : std::nullopt;
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
