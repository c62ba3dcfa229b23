/** Traces: what is read is in order and within its bounds, and recorded it is read as the same trace. */
#include "EventCatalogue.h"
#include "FieldWriter.h"
#include "FuzzTarget.h"
#include "Moment.h"
#include "SettingsEvent.h"
#include "TraceReader.h"
#include "platform/ClientUtils.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <sstream>

namespace
{
using Deskphone::Trace;

constexpr const char* NAME = "trace";

Trace read(const std::string& text)
{
    std::istringstream stream(text);
    return Deskphone::readTrace(stream, NAME);
}

std::string record(const Trace& trace)
{
    Deskphone::FieldWriter settings(trace.start, Deskphone::SETTINGS_EVENT);
    Deskphone::writeSettings(settings, trace.settings);
    std::string text = settings.line() + "\n";
    for (const Deskphone::TraceEvent& event : trace.events)
    {
        Deskphone::FieldWriter fields(event.time, event.name);
        event.event->write(fields);
        text += fields.line() + "\n";
    }
    return text;
}

/** What a record may leave out: also the moment that stands for none, and a list without texts. */
bool saysNothing(const nlohmann::json& value)
{
    const bool isNoMoment = value.is_string() && Deskphone::parseMoment(value.get<std::string>()) == 0;
    return value.is_null() || value == false || value == 0 || value == "" || value == nlohmann::json::array() ||
           isNoMoment;
}

bool isSameMoment(const nlohmann::json& a, const nlohmann::json& b)
{
    const auto moment = Deskphone::parseMoment(a.is_string() ? a.get<std::string>() : "");
    return moment && b.is_string() && moment == Deskphone::parseMoment(b.get<std::string>());
}

/** Whether everything that the one value says is said by the other, moments perhaps in another zone. */
bool isKept(const nlohmann::json& given, const nlohmann::json& recorded)
{
    if (!given.is_object())
    {
        return saysNothing(given) || given == recorded || isSameMoment(given, recorded);
    }
    const auto items = given.items();
    return std::all_of(items.begin(), items.end(),
                       [&recorded](const auto& field)
                       {
                           const auto found = recorded.find(field.key());
                           return isKept(field.value(), found == recorded.end() ? nlohmann::json::object() : *found);
                       });
}

/** Each event of the input beside its line in the record, of which the first are the settings. */
void checkNothingIsLost(const std::string& input, const Trace& trace, const std::string& recorded)
{
    const std::vector<std::string> given = ClientUtils::tokenizeString(input, '\n');
    const std::vector<std::string> lines = ClientUtils::tokenizeString(recorded, '\n');
    for (std::size_t i = 0; i < trace.events.size(); ++i)
    {
        const std::string& line = given.at(trace.events[i].line - 1);
        Fuzz::expect(isKept(nlohmann::json::parse(line), nlohmann::json::parse(lines.at(i + 1))),
                     "the record has every field", line + "\n       " + lines.at(i + 1));
    }
}

/** The complaint goes to a terminal, as one line that says where. */
void checkComplaint(const std::string& text)
{
    const std::string start = std::string(NAME) + ":";
    Fuzz::expect(text.compare(0, start.size(), start) == 0, "a complaint names the trace", text);
    const bool isPlain =
        std::none_of(text.begin(), text.end(), [](char c) { return (c >= 0 && c < 0x20) || c == 0x7F; });
    Fuzz::expect(isPlain, "a complaint holds no control characters", text);
}

void checkTrace(const std::string& input, const Trace& trace)
{
    long last = trace.start;
    for (const Deskphone::TraceEvent& event : trace.events)
    {
        Fuzz::expect(event.time >= last, "events are in order", std::to_string(event.time));
        last = event.time;
    }
    Fuzz::expect(trace.start >= 0 && last <= std::numeric_limits<std::int32_t>::max(),
                 "moments lie between 1970 and 2037", std::to_string(last));
    const std::string recorded = record(trace);
    checkNothingIsLost(input, trace, recorded);
    const std::string again = record(read(recorded));
    Fuzz::expect(again == recorded, "a record is read as the same trace", recorded + "\n" + again);
}
} // namespace

void Fuzz::tryInput(const std::string& input)
{
    Trace trace;
    try
    {
        trace = read(input);
    }
    catch (const Deskphone::BrokenTrace& broken)
    {
        checkComplaint(broken.what());
        return;
    }
    checkTrace(input, trace);
}
