#include "ConversationAPI/RelativeTimeStringFormatter.h"

#include "Seconds32.h"
#include "platform/TranslatorIfc.h"

#include <array>
#include <boost/date_time/gregorian/conversion.hpp>
#include <cstdio>
#include <ctime>
#include <iomanip>
#include <locale>
#include <sstream>

namespace ConversationAPI
{
namespace
{
constexpr const char* KEY_PREFIX = "Conv.List.TimeSt.";
constexpr const char* TWELVE_HOURS = "12HR";
constexpr const char* DAY_BEFORE_MONTH = "DD.MM.YYYY";
constexpr long MINUTES_TOLD_SINGLY = 11; ///< from here on the time of day says more

std::tm localTime(std::int32_t seconds)
{
    const std::time_t time = seconds;
    std::tm local{};
    localtime_r(&time, &local);
    return local;
}

/** Days of the local calendar, so that one of 23 or 25 hours counts as one. 32-bit years never throw here. */
long dayDifference(std::int32_t now, std::int32_t then)
{
    using boost::gregorian::date_from_tm;
    return (date_from_tm(localTime(now)) - date_from_tm(localTime(then))).days();
}

/** strftime in the C locale: the names of days and months are translation keys, in whatever language we run. */
std::string formatLocal(std::int32_t seconds, const char* format)
{
    const std::tm local = localTime(seconds);
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::put_time(&local, format);
    return text.str();
}
} // namespace

std::string RelativeTimeStringFormatter::timeFormat_ = "24HR";
std::string RelativeTimeStringFormatter::dateFormat_ = DAY_BEFORE_MONTH;

void RelativeTimeStringFormatter::setTranslator(TranslatorIfc* translator)
{
    translator_ = translator;
}

void RelativeTimeStringFormatter::setTimeFormat(const std::string& format)
{
    timeFormat_ = format;
}

void RelativeTimeStringFormatter::setDateFormat(const std::string& format)
{
    dateFormat_ = format;
}

bool RelativeTimeStringFormatter::isDayBeforeMonth()
{
    return dateFormat_ == DAY_BEFORE_MONTH;
}

std::string RelativeTimeStringFormatter::formatForNowAndThen(long now, long then)
{
    now_ = saturatedTo32Bits(now);
    then_ = saturatedTo32Bits(then);
    if (then_ > now_) // the clocks of the telephone and of the network differ
    {
        return dayDifference(now_, then_) == 0 ? formatLocalTimeOnly(then_) : formatThisYear();
    }
    const double elapsed = std::difftime(now_, then_);
    if (elapsed < 60)
    {
        return getString("Now");
    }
    const long minutes = static_cast<long>(elapsed) / 60;
    return minutes < MINUTES_TOLD_SINGLY ? formatMinutes(minutes) : formatByDate(dayDifference(now_, then_));
}

std::string RelativeTimeStringFormatter::formatByDate(long dayDifference) const
{
    if (dayDifference == 0)
    {
        return formatLocalTimeOnly(then_);
    }
    if (dayDifference == 1)
    {
        return getString("Yesterday");
    }
    if (dayDifference > 1 && dayDifference <= 6)
    {
        return formatWeekday();
    }
    const int yearNow = localTime(now_).tm_year;
    const int yearThen = localTime(then_).tm_year;
    if (yearNow == yearThen)
    {
        return formatThisYear();
    }
    return yearNow > yearThen ? formatOverAYear() : "";
}

std::string RelativeTimeStringFormatter::formatForFullDate(long time)
{
    then_ = saturatedTo32Bits(time);
    return formatLocal(then_, isDayBeforeMonth() ? "%d.%m.%y" : "%m/%d/%y") + " " + formatLocalTimeOnly(then_);
}

/** Hours 0 to 11 keep their value on the 12-hour clock too: half past midnight is 0:30 AM. */
std::string RelativeTimeStringFormatter::formatLocalTimeOnly(long time) const
{
    const std::tm local = localTime(saturatedTo32Bits(time));
    std::array<char, 32> text{};
    if (timeFormat_ == TWELVE_HOURS)
    {
        const int hour = local.tm_hour > 12 ? local.tm_hour - 12 : local.tm_hour;
        std::snprintf(text.data(), text.size(), "%d:%02d %s", hour, local.tm_min, local.tm_hour < 12 ? "AM" : "PM");
    }
    else
    {
        std::snprintf(text.data(), text.size(), "%d:%02d", local.tm_hour, local.tm_min);
    }
    return text.data();
}

/** The blank travels with the number, so that a language may set the unit without one. */
std::string RelativeTimeStringFormatter::formatMinutes(long minutes) const
{
    return getString(minutes == 1 ? "min" : "mins", {std::to_string(minutes) + " "});
}

std::string RelativeTimeStringFormatter::formatWeekday() const
{
    return getString(formatLocal(then_, "%a"));
}

std::string RelativeTimeStringFormatter::formatThisYear() const
{
    return isDayBeforeMonth() ? dayOfThen() + " " + monthOfThen() : monthOfThen() + " " + dayOfThen();
}

std::string RelativeTimeStringFormatter::formatOverAYear() const
{
    return formatThisYear() + (isDayBeforeMonth() ? " " : ", ") + formatLocal(then_, "%Y");
}

std::string RelativeTimeStringFormatter::dayOfThen() const
{
    return formatLocal(then_, "%e");
}

std::string RelativeTimeStringFormatter::monthOfThen() const
{
    const std::string month = formatLocal(then_, "%b");
    return translator_ != nullptr ? getString("month." + month) : month;
}

std::string RelativeTimeStringFormatter::getString(const std::string& key) const
{
    return translator_ != nullptr ? translator_->translate(TranslationInfo(KEY_PREFIX + key)) : key;
}

std::string RelativeTimeStringFormatter::getString(const std::string& key,
                                                   const std::vector<std::string>& arguments) const
{
    if (translator_ != nullptr)
    {
        return translator_->translate(TranslationInfo(KEY_PREFIX + key, arguments));
    }
    return arguments.front() + key + (arguments.size() > 1 ? arguments[1] : "");
}
} // namespace ConversationAPI
