#include "ConversationAPI/JournalServiceUtils.h"

#include "platform/ClientUtils.h"

#include <array>
#include <cstdio>
#include <optional>

namespace ConversationAPI
{
namespace
{
constexpr int MOST_MINUTES = 5999; ///< 99 hours and 59 minutes, the most that the display has room for
constexpr int MOST_SECONDS = 59;
constexpr int SECONDS_ROUNDED_UP = 30;

struct Duration
{
    int minutes = 0;
    int seconds = 0;
};

/** Nothing for a text that tells no length worth showing. */
std::optional<Duration> parseDuration(const std::string& text)
{
    const std::string::size_type colon = text.find(':');
    if (colon == std::string::npos)
    {
        return std::nullopt;
    }
    const Duration duration{ClientUtils::stoi(text.substr(0, colon)), ClientUtils::stoi(text.substr(colon + 1))};
    const bool hasRoom = duration.minutes >= 0 && duration.minutes <= MOST_MINUTES && duration.seconds >= 0 &&
                         duration.seconds <= MOST_SECONDS;
    const bool hasLength = duration.minutes != 0 || duration.seconds != 0;
    return hasRoom && hasLength ? std::make_optional(duration) : std::nullopt;
}
} // namespace

CallPartyIdentifier::PhoneNumberIconType JournalServiceUtils::convertIcon(NumberType::NT type)
{
    switch (type)
    {
    case NumberType::HOME:
        return CallPartyIdentifier::HOME;
    case NumberType::WORK_1:
        return CallPartyIdentifier::WORK_1;
    case NumberType::WORK_2:
        return CallPartyIdentifier::WORK_2;
    case NumberType::MOBILE:
        return CallPartyIdentifier::MOBILE;
    default:
        return CallPartyIdentifier::NO_ICON;
    }
}

std::string JournalServiceUtils::convertJournalServiceDuration(const std::string& text)
{
    const std::optional<Duration> duration = parseDuration(text);
    if (!duration)
    {
        return "";
    }
    const int hours = duration->minutes / 60;
    std::array<char, 32> minutesAndSeconds{};
    std::snprintf(minutesAndSeconds.data(), minutesAndSeconds.size(), "%02d:%02d", duration->minutes % 60,
                  duration->seconds);
    return (hours > 0 ? ClientUtils::itos(hours) + ":" : "") + minutesAndSeconds.data();
}

std::string JournalServiceUtils::createDurationStr(const std::string& text)
{
    const std::string duration = convertJournalServiceDuration(text);
    return duration.empty() ? "" : "(" + duration + ")";
}

std::string JournalServiceUtils::createHistoryDurationStr(const std::string& text)
{
    const std::optional<Duration> duration = parseDuration(text);
    if (!duration)
    {
        return "";
    }
    return ClientUtils::itos(duration->minutes + (duration->seconds >= SECONDS_ROUNDED_UP ? 1 : 0));
}

std::vector<MissedCallItem::MissedCallInfo> JournalServiceUtils::getCallInfoList(const MissedCallItem& record)
{
    return record.getMissedCallInfoList();
}

std::vector<CallInfo> JournalServiceUtils::getCallInfoList(const ReceivedCallItem& record)
{
    return record.getReceivedCallInfoList();
}

std::vector<CallInfo> JournalServiceUtils::getCallInfoList(const DialledCallItem& record)
{
    return record.getDialledCallInfoList();
}

std::vector<CallInfo> JournalServiceUtils::getCallInfoList(const ForwardedCallItem& record)
{
    return record.getForwardedCallInfoList();
}
} // namespace ConversationAPI
