#include "ScreenText.h"

#include "Moment.h"
#include "TextColumn.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace Deskphone
{
namespace
{
constexpr std::size_t SCREEN_COLUMNS = 98;
constexpr std::size_t WHEN_COLUMNS = 12;
constexpr std::size_t ITEMS_COLUMNS = 3;
constexpr std::size_t NEW_COLUMNS = 8; ///< " (1 new)"
constexpr std::size_t ID_COLUMNS = 9;  ///< a short id and two blanks

// The mark, the direction, and a blank behind each column but the last.
constexpr std::size_t ROW_NAME_COLUMNS =
    SCREEN_COLUMNS - 4 - NUMBER_COLUMNS - STATE_COLUMNS - WHEN_COLUMNS - ITEMS_COLUMNS - NEW_COLUMNS - 4;

constexpr const char* MARGIN = "  "; ///< to the left of all columns

/** Where the lines below a row begin: under its name, which stands in column 4, a little further in. */
constexpr std::size_t DETAIL_COLUMN = 6;

const char* markOf(const ScreenRow& row)
{
    switch (row.liveness)
    {
    case ScreenRow::TALKING:
        return "●";
    case ScreenRow::RINGING:
        return "○";
    case ScreenRow::ON_HOLD:
        return "‖";
    case ScreenRow::ENDING:
        return "·";
    default:
        return row.hasNews() ? "!" : " ";
    }
}

const char* arrowOf(ScreenRow::Direction direction)
{
    switch (direction)
    {
    case ScreenRow::INCOMING:
        return "←";
    case ScreenRow::OUTGOING:
        return "→";
    case ScreenRow::FORWARDED:
        return "↪";
    case ScreenRow::MISSED:
        return "×";
    default:
        return " ";
    }
}

const char* directionName(ScreenRow::Direction direction)
{
    switch (direction)
    {
    case ScreenRow::INCOMING:
        return "incoming";
    case ScreenRow::OUTGOING:
        return "outgoing";
    case ScreenRow::FORWARDED:
        return "forwarded";
    case ScreenRow::MISSED:
        return "missed";
    default:
        return "";
    }
}

std::string counted(std::size_t count, const std::string& one, const std::string& many)
{
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string summaryOf(const std::vector<ScreenRow>& rows)
{
    std::size_t live = 0;
    std::size_t missed = 0;
    int voicemails = 0;
    for (const ScreenRow& row : rows)
    {
        live += row.isLive() ? 1 : 0;
        missed += row.newMissedCalls;
        voicemails = row.newVoicemails.value_or(voicemails);
    }
    std::string summary = counted(rows.size(), "conversation", "conversations");
    summary += live > 0 ? ", " + std::to_string(live) + " live" : "";
    summary += missed > 0 ? ", " + counted(missed, "new missed call", "new missed calls") : "";
    if (voicemails != 0)
    {
        summary += voicemails < 0 ? ", new messages"
                                  : ", " + counted(static_cast<std::size_t>(voicemails), "new message", "new messages");
    }
    return summary;
}

/** "" when nothing is new, no number when nobody has counted it. */
std::string newOf(const ScreenRow& row)
{
    const int voicemails = row.newVoicemails.value_or(0);
    if (voicemails < 0)
    {
        return " (new)";
    }
    const std::size_t count = row.newMissedCalls + static_cast<std::size_t>(voicemails);
    return count > 0 ? " (" + std::to_string(count) + " new)" : "";
}

/** A party of the cloud has its presence where others have their number. */
std::string besideName(const ScreenRow& row)
{
    const std::string& number = row.name.empty() ? std::string() : row.number;
    return number.empty() ? row.cloud.presence : number;
}

/** Somebody found elsewhere has no calls, as a rule: who knows of them stands in place of the state. */
const std::string& stateOrFinder(const ScreenRow& row)
{
    return row.state.empty() ? row.foundBy : row.state;
}

/** How many items the row holds and how many are new. The latter may need the blank before the former; where both are
 *  long, the line is. */
std::string countsOf(const ScreenRow& row, bool withIds)
{
    const std::string news = newOf(row);
    const std::size_t excess = news.size() > NEW_COLUMNS ? news.size() - NEW_COLUMNS : 0;
    const std::string items = std::to_string(row.items);
    const std::size_t left = ITEMS_COLUMNS - std::min(excess, ITEMS_COLUMNS);
    return rightAligned(items, excess > 0 ? std::max(left, items.size()) : left) +
           leftAligned(news, withIds ? NEW_COLUMNS + excess : news.size());
}

void addMessage(nlohmann::ordered_json& object, const CloudMessage& message)
{
    object["sender"] = message.sender;
    if (message.notice)
    {
        object["notice"] = *message.notice;
        object["affectedUsers"] = message.affectedUsers;
        return;
    }
    object["subject"] = message.subject;
    object["text"] = message.text;
    object["attachments"] = message.attachments;
}

/** What a row does not tell is left out: rows of the telephone's own conversations have nothing of this. */
void addCloudDetails(nlohmann::ordered_json& object, const CloudDetails& details)
{
    if (!details.presence.empty())
    {
        object["presence"] = details.presence;
    }
    if (details.message)
    {
        addMessage(object, *details.message);
    }
    if (!details.participants.empty())
    {
        object["participants"] = details.participants;
    }
    if (!details.bridgeNumbers.empty() || !details.pin.empty() || details.isModerated)
    {
        object["meeting"] = {
            {"bridgeNumbers", details.bridgeNumbers}, {"pin", details.pin}, {"moderated", details.isModerated}};
    }
}

std::string ruler(bool withIds)
{
    std::string line;
    const std::size_t columns = SCREEN_COLUMNS + (withIds ? ID_COLUMNS : 0);
    for (std::size_t column = 0; column < columns; ++column)
    {
        line += "─";
    }
    return line;
}

/** What every object begins with. */
nlohmann::ordered_json lineObject(std::size_t line)
{
    return line == 0 ? nlohmann::ordered_json::object() : nlohmann::ordered_json{{"line", line}};
}

void printObject(std::ostream& stream, nlohmann::ordered_json object, const ScreenRow& row, bool withIds)
{
    object.update({
        {"name", row.name},
        {"number", row.number},
        {"state", row.state},
        {"direction", directionName(row.direction)},
        {"live", row.isLive()},
        {"newMissedCalls", row.newMissedCalls},
        {"time", row.hasTime() ? formatMoment(row.time) : ""},
        {"when", row.when},
        {"items", row.items},
    });
    if (!row.foundBy.empty())
    {
        object["foundBy"] = row.foundBy;
    }
    if (row.newVoicemails)
    {
        object["newVoicemails"] = *row.newVoicemails;
    }
    addCloudDetails(object, row.cloud);
    if (withIds)
    {
        object["id"] = row.shortId;
    }
    stream << object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}
} // namespace

void printScreen(std::ostream& stream, const ScreenTitle& title, const std::vector<ScreenRow>& rows, bool withIds)
{
    const std::string summary = summaryOf(rows);
    stream << MARGIN << leftAligned(title.text, SCREEN_COLUMNS - columnsOf(summary)) << summary << '\n';
    stream << MARGIN << ruler(withIds) << '\n';
    for (const ScreenRow& row : rows)
    {
        // A party without a name is shown by its number, as on any telephone.
        stream << MARGIN << markOf(row) << ' ' << arrowOf(row.direction) << ' '
               << leftAligned(row.name.empty() ? row.number : row.name, ROW_NAME_COLUMNS) << ' '
               << leftAligned(besideName(row), NUMBER_COLUMNS) << ' ' << leftAligned(stateOrFinder(row), STATE_COLUMNS)
               << ' ' << leftAligned(row.when, WHEN_COLUMNS) << ' ' << countsOf(row, withIds)
               << (withIds ? "  " + row.shortId : "") << '\n';
        for (const std::string& line : row.cloud.lines())
        {
            stream << MARGIN << std::string(DETAIL_COLUMN, ' ') << shortened(line, SCREEN_COLUMNS - DETAIL_COLUMN)
                   << '\n';
        }
    }
    if (rows.empty())
    {
        stream << MARGIN << title.whenEmpty << '\n';
    }
}

void printJson(std::ostream& stream, std::size_t line, const std::vector<ScreenRow>& rows, bool withIds)
{
    for (const ScreenRow& row : rows)
    {
        printObject(stream, lineObject(line), row, withIds);
    }
}

void printFoundJson(std::ostream& stream, std::size_t line, const std::vector<ScreenRow>& rows, bool withIds)
{
    std::size_t place = 0;
    for (const ScreenRow& row : rows)
    {
        nlohmann::ordered_json object = lineObject(line);
        object["found"] = ++place;
        printObject(stream, std::move(object), row, withIds);
    }
}
} // namespace Deskphone
