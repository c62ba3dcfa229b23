/**
 * The display's formatter of relative times: makes the strings and says every ten seconds that they are stale.
 *
 * Owns its timer and command; subscribers and translator belong to the application and must outlive it. Runs
 * on the UI thread, where the timer fires too. Times are seconds since the epoch, UTC.
 */
#pragma once

#include "ConversationAPI/RelativeTimeStringFormatter.h"
#include "platform/DisplayAPI.h"

#include <set>
#include <string>

namespace ConversationAPI
{
class RelativeTimeFormatter : public DisplayAPI::TimeStringFormatter, public DisplayAPI::CommandListener
{
  public:
    /** The clock, with the signature of time(); called with null. */
    using Clock = long (*)(long*);

    /** Starts the timer. Without a clock (null) relative times are empty. */
    explicit RelativeTimeFormatter(Clock clock);
    ~RelativeTimeFormatter() override;

    /** The time, told relative to the clock's present. */
    std::string formatFromUTC(long time) override;

    /** The observer is told from now on for the formatter's whole life, once however often it subscribes. */
    void subscribe(DisplayAPI::TimeStringFormatterObserver* observer) override;

    /** With null the texts stay English. */
    void setTranslatorIfc(TranslatorIfc* translator) override;

    /** "12HR" or "24HR"; applies to all formatters from their next string on. */
    void timeFormatChanged(const std::string& format) override;

    /** "DD.MM.YYYY" or another, month first; applies to all formatters from their next string on. */
    void dateFormatChanged(const std::string& format) override;

    /** Date in numbers and time of day. */
    std::string formatFromUTCToFullDate(long time) override;

    /** The timer's call: asks every subscriber to redraw and starts the timer again. Others are ignored. */
    void commandAction(DisplayAPI::Command* command, DisplayAPI::Displayable* source) override;

  private:
    Clock clock_;
    RelativeTimeStringFormatter stringFormatter_;
    std::set<DisplayAPI::TimeStringFormatterObserver*> subscribers_;
    DisplayAPI::Timer refreshTimer_;
    DisplayAPI::Command refreshCommand_;
};
} // namespace ConversationAPI
