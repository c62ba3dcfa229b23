/** The journal's durations: what is shown is well formed, and read again it is shown the same. */
#include "ConversationAPI/JournalServiceUtils.h"
#include "FuzzTarget.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace
{
using ConversationAPI::JournalServiceUtils;

constexpr int MOST_MINUTES = 99 * 60 + 59;

struct Shown
{
    int minutes = 0;
    int seconds = 0;
};

std::string show(const Shown& shown)
{
    std::array<char, 64> text{};
    const int hours = shown.minutes / 60;
    std::snprintf(text.data(), text.size(), "%02d:%02d", shown.minutes % 60, shown.seconds);
    return (hours > 0 ? std::to_string(hours) + ":" : "") + text.data();
}

/** Takes "1:02:03" or "02:03" apart. */
Shown readShown(const std::string& text)
{
    std::array<int, 3> parts{};
    const int count = std::sscanf(text.c_str(), "%d:%d:%d", &parts[0], &parts[1], &parts[2]);
    const Shown shown = count == 3 ? Shown{parts[0] * 60 + parts[1], parts[2]} : Shown{parts[0], parts[1]};
    const bool isInRange = shown.minutes >= 0 && shown.minutes <= MOST_MINUTES && shown.seconds >= 0 &&
                           shown.seconds < 60 && (shown.minutes != 0 || shown.seconds != 0);
    Fuzz::expect(isInRange && show(shown) == text, "a duration is shown as [H:]MM:SS", text);
    return shown;
}

/** Whether the text is plain minutes and seconds that there is room for. */
bool isPlainDuration(const std::string& text)
{
    Shown told;
    const bool isPlain = text.size() <= 7 && text.find_first_not_of("0123456789:") == std::string::npos &&
                         std::count(text.begin(), text.end(), ':') == 1 &&
                         std::sscanf(text.c_str(), "%d:%d", &told.minutes, &told.seconds) == 2;
    return isPlain && told.minutes <= MOST_MINUTES && told.seconds < 60 && (told.minutes != 0 || told.seconds != 0);
}
} // namespace

void Fuzz::tryInput(const std::string& input)
{
    const std::string text = JournalServiceUtils::convertJournalServiceDuration(input);
    const std::string inParentheses = JournalServiceUtils::createDurationStr(input);
    const std::string inMinutes = JournalServiceUtils::createHistoryDurationStr(input);
    if (text.empty())
    {
        expect(!isPlainDuration(input), "a plain duration is shown", input);
        expect(inParentheses.empty() && inMinutes.empty(), "all forms agree that there is no duration", inMinutes);
        return;
    }
    expect(inParentheses == "(" + text + ")", "the form in parentheses is the same one", inParentheses);
    const Shown shown = readShown(text);
    expect(inMinutes == std::to_string((shown.minutes * 60 + shown.seconds + 30) / 60), "minutes are rounded",
           text + " as " + inMinutes);
    const std::string again = std::to_string(shown.minutes) + ":" + std::to_string(shown.seconds);
    expect(JournalServiceUtils::convertJournalServiceDuration(again) == text, "it is shown as it was told", again);
}
