#include "model/Iso8601.h"

#include <boost/date_time/gregorian/gregorian.hpp>
#include <boost/lexical_cast/bad_lexical_cast.hpp>

#include <algorithm>

namespace ConversationAPI
{
namespace
{
using Calendar = boost::gregorian::gregorian_calendar;

constexpr std::size_t DATE_TIME_LENGTH = 19;
constexpr std::size_t OFFSET_LENGTH = 6;
constexpr long SECONDS_PER_DAY = 24 * 60 * 60;

/** The number spelled by `count` digits from `position`; -1 when one of them is no digit. */
int digits(const std::string& text, std::size_t position, std::size_t count)
{
    int value = 0;
    for (std::size_t i = position; i < position + count; ++i)
    {
        if (text[i] < '0' || text[i] > '9')
        {
            return -1;
        }
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

bool hasSeparators(const std::string& text)
{
    return text[4] == '-' && text[7] == '-' && text[10] == 'T' && text[13] == ':' && text[16] == ':';
}

/** Days since 1 January 1970; nothing when the calendar does not have the date. */
std::optional<long> dayNumber(const std::string& text)
{
    const int year = digits(text, 0, 4);
    const int month = digits(text, 5, 2);
    const int day = digits(text, 8, 2);
    if (year < 1400 || month < 1 || month > 12 || day < 1)
    {
        return std::nullopt;
    }
    // Boost's days throw when they are made of more than 31: asked before one is made.
    const auto yearOfDate = static_cast<unsigned short>(year);
    const auto monthOfYear = static_cast<unsigned short>(month);
    if (day > Calendar::end_of_month_day(yearOfDate, monthOfYear))
    {
        return std::nullopt;
    }
    static const long EPOCH = Calendar::day_number(Calendar::ymd_type(1970, 1, 1));
    const auto dayOfMonth = static_cast<unsigned short>(day);
    return static_cast<long>(Calendar::day_number(Calendar::ymd_type(yearOfDate, monthOfYear, dayOfMonth))) - EPOCH;
}

/** Seconds since midnight; a leap second counts as the first second of the next minute. */
std::optional<long> secondOfDay(const std::string& text)
{
    const int hour = digits(text, 11, 2);
    const int minute = digits(text, 14, 2);
    const int second = digits(text, 17, 2);
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 60)
    {
        return std::nullopt;
    }
    return (hour * 60L + minute) * 60 + second;
}

/** Seconds by which the text's zone is ahead of UTC. */
std::optional<long> zoneOffset(const std::string& text)
{
    const bool hasOffset = text.size() >= DATE_TIME_LENGTH + OFFSET_LENGTH &&
                           (text[DATE_TIME_LENGTH] == '+' || text[DATE_TIME_LENGTH] == '-');
    if (!hasOffset)
    {
        return 0;
    }
    const int hours = digits(text, DATE_TIME_LENGTH + 1, 2);
    const int minutes = digits(text, DATE_TIME_LENGTH + 4, 2);
    if (text[DATE_TIME_LENGTH + 3] != ':' || hours < 0 || hours > 23 || minutes < 0 || minutes > 59)
    {
        return std::nullopt;
    }
    const long offset = (hours * 60L + minutes) * 60;
    return text[DATE_TIME_LENGTH] == '-' ? -offset : offset;
}
} // namespace

std::optional<long> parseIso8601(const std::string& text)
{
    if (text.size() < DATE_TIME_LENGTH || !hasSeparators(text))
    {
        return std::nullopt;
    }
    const auto day = dayNumber(text);
    const auto second = secondOfDay(text);
    const auto offset = zoneOffset(text);
    if (!day || !second || !offset)
    {
        return std::nullopt;
    }
    return *day * SECONDS_PER_DAY + *second - *offset;
}

void throwIso8601Error(const std::string& text)
{
    std::string date = text.substr(0, 10);
    date.erase(std::remove(date.begin(), date.end(), '-'), date.end());
    const bool eightDigits =
        date.size() == 8 && std::all_of(date.begin(), date.end(), [](unsigned char c) { return c >= '0' && c <= '9'; });
    if (eightDigits)
    {
        boost::gregorian::from_undelimited_string(date);
    }
    throw boost::bad_lexical_cast();
}
} // namespace ConversationAPI
