/** The journal's moments: the instant is that of the C library's calendar, and written anew it is the same one. */
#include "ConversationAPI/MissedCallConversationItem.h"
#include "FuzzTarget.h"
#include "host/Clock.h"

#include <algorithm>
#include <ctime>
#include <optional>

namespace
{
using ConversationAPI::ConversationItem;
using ConversationAPI::MissedCallConversationItem;

constexpr int FIRST_YEAR = 1400; ///< boost's calendar begins with it
constexpr std::size_t DATE_TIME = 19;
constexpr std::size_t DATE_TIME_AND_OFFSET = 25;

/** Whether the text is the form, in which 'd' stands for a digit. */
bool isOfForm(const std::string& text, const std::string& form)
{
    return std::equal(text.begin(), text.end(), form.begin(), form.end(),
                      [](char character, char wanted)
                      { return wanted == 'd' ? character >= '0' && character <= '9' : character == wanted; });
}

int numberAt(const std::string& text, std::size_t position, std::size_t digits)
{
    return std::stoi(text.substr(position, digits));
}

/** Nothing for a date that no calendar has, and a time of day that no clock shows. A leap second is the one after. */
std::optional<long> secondsOf(const std::string& text)
{
    const int leapSecond = numberAt(text, 17, 2) == 60 ? 1 : 0;
    std::tm time{};
    time.tm_year = numberAt(text, 0, 4) - 1900;
    time.tm_mon = numberAt(text, 5, 2) - 1;
    time.tm_mday = numberAt(text, 8, 2);
    time.tm_hour = numberAt(text, 11, 2);
    time.tm_min = numberAt(text, 14, 2);
    time.tm_sec = numberAt(text, 17, 2) - leapSecond;
    std::tm real = time;
    const long seconds = timegm(&real) + leapSecond;
    const bool isReal = real.tm_mon == time.tm_mon && real.tm_mday == time.tm_mday && real.tm_hour == time.tm_hour &&
                        real.tm_min == time.tm_min && real.tm_sec == time.tm_sec;
    return isReal && numberAt(text, 0, 4) >= FIRST_YEAR ? std::make_optional(seconds) : std::nullopt;
}

/** What looks like an offset must be one; anything else behind the seconds is passed over. */
std::optional<long> offsetOf(const std::string& rest)
{
    if (rest.size() < DATE_TIME_AND_OFFSET - DATE_TIME || (rest[0] != '+' && rest[0] != '-'))
    {
        return 0;
    }
    if (!isOfForm(rest.substr(1), "dd:dd") || numberAt(rest, 1, 2) > 23 || numberAt(rest, 4, 2) > 59)
    {
        return std::nullopt;
    }
    const long seconds = (numberAt(rest, 1, 2) * 60L + numberAt(rest, 4, 2)) * 60;
    return rest[0] == '-' ? -seconds : seconds;
}

/** 0 for a malformed text. */
long instantOf(const std::string& text)
{
    const std::string head = text.substr(0, DATE_TIME_AND_OFFSET);
    if (!isOfForm(head.substr(0, DATE_TIME), "dddd-dd-ddTdd:dd:dd"))
    {
        return 0;
    }
    const std::optional<long> seconds = secondsOf(head);
    const std::optional<long> offset = offsetOf(head.substr(DATE_TIME));
    return seconds && offset ? *seconds - *offset : 0;
}
} // namespace

void Fuzz::tryInput(const std::string& input)
{
    const long instant = ConversationItem::extractUTCTimeTFromJournalServiceISO8601String(input);
    expect(instant == instantOf(input), "the instant is that of the C library's calendar", std::to_string(instant));
    const MissedCallConversationItem item(input, "", "", "", nullptr);
    expect(item.timeStampUTC() == instant, "an item of this text has this time", std::to_string(item.timeStampUTC()));
    expect(!item.toTimeString().empty(), "an item has a time to show");
    const std::string written = Host::localIso8601(instant);
    const bool isWithinCalendar =
        written.size() == DATE_TIME_AND_OFFSET && std::stoi(written.substr(0, 4)) >= FIRST_YEAR;
    expect(!isWithinCalendar || ConversationItem::extractUTCTimeTFromJournalServiceISO8601String(written) == instant,
           "an instant that is written is read again", written);
}
