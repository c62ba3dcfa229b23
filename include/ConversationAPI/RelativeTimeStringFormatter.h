/**
 * Words for when something happened, told relative to now: "Now", minutes, time of day, "Yesterday", a
 * weekday, a date.
 *
 * Dates are those of the local time zone, and a day is a day of the calendar, whether the clocks change on it
 * or not. The settings of time and date format are shared by all formatters. Runs on the UI thread only.
 *
 * Times are seconds since the epoch, UTC, kept in 32 bits: one beyond becomes the nearest that fits.
 */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class TranslatorIfc;

namespace ConversationAPI
{
class RelativeTimeStringFormatter
{
  public:
    /** Not owned, must outlive its use; with null the texts stay English. */
    void setTranslator(TranslatorIfc* translator);

    /** "12HR" is the 12-hour clock, everything else the 24-hour clock. */
    static void setTimeFormat(const std::string& format);

    /** "DD.MM.YYYY" puts the day before the month, everything else the month before the day. */
    static void setDateFormat(const std::string& format);

    /** When `then` was, seen from `now`. A time in the future is told as time of day or as day and month. */
    std::string formatForNowAndThen(long now, long then);

    /** Date in numbers and time of day. */
    std::string formatForFullDate(long time);

    /** Time of day. */
    std::string formatLocalTimeOnly(long time) const;

  private:
    std::string formatByDate(long dayDifference) const;
    std::string formatMinutes(long minutes) const;
    std::string formatWeekday() const;
    std::string formatThisYear() const;
    std::string formatOverAYear() const;
    std::string dayOfThen() const;
    std::string monthOfThen() const;
    std::string getString(const std::string& key) const;
    std::string getString(const std::string& key, const std::vector<std::string>& arguments) const;

    static bool isDayBeforeMonth();

    static std::string timeFormat_;
    static std::string dateFormat_;

    TranslatorIfc* translator_ = nullptr;
    std::int32_t now_ = 0;
    std::int32_t then_ = 0;
};
} // namespace ConversationAPI
