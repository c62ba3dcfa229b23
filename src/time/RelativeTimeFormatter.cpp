#include "ConversationAPI/RelativeTimeFormatter.h"

#include "Log.h"

namespace ConversationAPI
{
namespace
{
constexpr const char* RELATIVE_TIME_FORMATTER_LOG_FILE = "./src/RelativeTimeFormatter";
constexpr int REFRESH_INTERVAL_MS = 10'000; ///< short enough that "Now" and the minutes are never far off
} // namespace

RelativeTimeFormatter::RelativeTimeFormatter(Clock clock) : clock_(clock), refreshTimer_(-1), refreshCommand_("")
{
    refreshTimer_.addCommand(&refreshCommand_);
    refreshTimer_.setCommandListener(this);
    refreshTimer_.setSingleShot(true);
    refreshTimer_.start(REFRESH_INTERVAL_MS);
}

RelativeTimeFormatter::~RelativeTimeFormatter()
{
    refreshTimer_.stop();
    refreshTimer_.setCommandListener(nullptr);
    refreshTimer_.addCommand(nullptr);
}

std::string RelativeTimeFormatter::formatFromUTC(long time)
{
    if (clock_ == nullptr)
    {
        CONVERSATION_LOG(RELATIVE_TIME_FORMATTER_LOG_FILE, 2, "formatFromUTC() has no clock");
        return "";
    }
    return stringFormatter_.formatForNowAndThen(clock_(nullptr), time);
}

void RelativeTimeFormatter::subscribe(DisplayAPI::TimeStringFormatterObserver* observer)
{
    if (observer != nullptr)
    {
        subscribers_.insert(observer);
    }
}

void RelativeTimeFormatter::setTranslatorIfc(TranslatorIfc* translator)
{
    stringFormatter_.setTranslator(translator);
}

void RelativeTimeFormatter::timeFormatChanged(const std::string& format)
{
    RelativeTimeStringFormatter::setTimeFormat(format);
}

void RelativeTimeFormatter::dateFormatChanged(const std::string& format)
{
    RelativeTimeStringFormatter::setDateFormat(format);
}

std::string RelativeTimeFormatter::formatFromUTCToFullDate(long time)
{
    return stringFormatter_.formatForFullDate(time);
}

void RelativeTimeFormatter::commandAction(DisplayAPI::Command* command, DisplayAPI::Displayable* /*source*/)
{
    if (command == nullptr || !DisplayAPI::Command::exists(command) || command != &refreshCommand_)
    {
        return;
    }
    const auto subscribersNow = subscribers_; // a subscriber may bring another one in while it redraws
    for (DisplayAPI::TimeStringFormatterObserver* subscriber : subscribersNow)
    {
        subscriber->timeStringsChanged();
        if (!DisplayAPI::Command::exists(command))
        {
            return; // the redraw ended this formatter, and its command with it
        }
    }
    refreshTimer_.start(REFRESH_INTERVAL_MS);
}
} // namespace ConversationAPI
