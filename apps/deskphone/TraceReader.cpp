#include "TraceReader.h"

#include "EventCatalogue.h"
#include "EventFields.h"
#include "SettingsEvent.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <set>

namespace Deskphone
{
namespace
{
constexpr std::size_t LONGEST_LINE = 1024 * 1024;

/** Refuses a field that stands twice in an object, of which JSON parsers otherwise take the last. */
class DuplicateFinder
{
  public:
    using Event = nlohmann::json::parse_event_t;

    bool operator()(int, Event event, const nlohmann::json& parsed)
    {
        if (event == Event::object_start)
        {
            keys_.emplace_back();
        }
        else if (event == Event::object_end)
        {
            keys_.pop_back();
        }
        else if (event == Event::key && !keys_.back().insert(parsed.get<std::string>()).second)
        {
            throw TraceError("field " + inQuotes(parsed.get<std::string>()) + " stands twice in one object");
        }
        return true;
    }

  private:
    std::vector<std::set<std::string>> keys_;
};

/** What the parser has to say, without its own preamble and without what it read. */
std::string describe(const nlohmann::json::parse_error& error)
{
    const std::string column = " at column " + std::to_string(error.byte);
    const std::string all = error.what();
    if (all.find("UTF-8") != std::string::npos)
    {
        return "broken UTF-8" + column;
    }
    const std::size_t begin = all.find(" - ");
    const std::size_t end = all.find(';');
    const bool hasDetail = begin != std::string::npos && end != std::string::npos && begin < end;
    return "no valid JSON" + column + (hasDetail ? ": " + all.substr(begin + 3, end - begin - 3) : "");
}

nlohmann::json parseObject(const std::string& line)
{
    DuplicateFinder finder;
    try
    {
        nlohmann::json parsed = nlohmann::json::parse(line, std::ref(finder));
        if (!parsed.is_object())
        {
            throw TraceError("an event must be a JSON object");
        }
        return parsed;
    }
    catch (const nlohmann::json::parse_error& error)
    {
        throw TraceError(describe(error));
    }
    catch (const nlohmann::json::exception&)
    {
        throw TraceError("no valid JSON: a number is out of range");
    }
}

/** A value without the quotes and brackets of JSON: "Anna Berg 030 1234567" for a party, "u1 u2" for a list. */
std::string describeValue(const nlohmann::json& value)
{
    if (!value.is_structured())
    {
        return value.is_string() ? value.get<std::string>() : value.dump();
    }
    std::string text;
    for (const nlohmann::json& part : value)
    {
        text += (text.empty() ? "" : " ") + describeValue(part);
    }
    return text;
}

/** Without the time and the name, which are shown anyway. */
std::string describeFields(const nlohmann::json& object)
{
    std::string text;
    for (const auto& field : object.items())
    {
        if (field.key() != "time" && field.key() != "event")
        {
            text += (text.empty() ? "" : ", ") + field.key() + " " + describeValue(field.value());
        }
    }
    return text;
}

class TraceReader
{
  public:
    TraceReader(std::istream& stream, const std::string& name) : stream_(stream) { trace_.file = name; }

    Trace read()
    {
        std::vector<char> buffer(LONGEST_LINE + 1);
        while (readLine(buffer))
        {
            try
            {
                takeLine();
            }
            catch (const TraceError& error)
            {
                fail(error.what());
            }
        }
        if (!isStarted_)
        {
            ++line_;
            fail("the trace holds no event");
        }
        return std::move(trace_);
    }

  private:
    [[noreturn]] void fail(const std::string& problem) const
    {
        throw BrokenTrace(trace_.file + ":" + std::to_string(line_) + ": " + problem);
    }

    bool readLine(std::vector<char>& buffer)
    {
        stream_.getline(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        const auto count = static_cast<std::size_t>(stream_.gcount());
        if (stream_.bad())
        {
            throw UnreadableTrace("cannot read " + trace_.file);
        }
        if (stream_.fail() && stream_.eof())
        {
            return false;
        }
        ++line_;
        if (stream_.fail())
        {
            fail("the line is longer than " + std::to_string(LONGEST_LINE) + " bytes");
        }
        text_.assign(buffer.data(), stream_.eof() ? count : count - 1);
        return true;
    }

    void takeLine()
    {
        const std::size_t begin = text_.find_first_not_of(" \t\r");
        if (begin == std::string::npos || text_[begin] == '#')
        {
            return;
        }
        const nlohmann::json object = parseObject(text_);
        EventFields fields(object);
        const std::string name = fields.requiredText("event");
        TraceEvent event;
        event.line = line_;
        event.time = fields.requiredMoment("time");
        event.name = name;
        takeTime(event.time);
        if (name == SETTINGS_EVENT)
        {
            takeSettings(fields);
            fields.finish();
        }
        else
        {
            event.event = EventCatalogue::all().read(name, fields, event.time);
            fields.finish();
            event.text = describeFields(object);
            trace_.events.push_back(std::move(event));
        }
        isStarted_ = true;
    }

    void takeTime(long time)
    {
        if (!isStarted_)
        {
            trace_.start = time;
        }
        else if (time < lastTime_)
        {
            throw TraceError("the time lies before that of the event above");
        }
        lastTime_ = time;
    }

    void takeSettings(EventFields& fields)
    {
        if (isStarted_)
        {
            throw TraceError("settings must come before all other events, once");
        }
        trace_.settings = readSettings(fields);
    }

    std::istream& stream_;
    Trace trace_;
    std::size_t line_ = 0;
    std::string text_;
    bool isStarted_ = false;
    long lastTime_ = 0;
};
} // namespace

Trace readTrace(const std::string& file)
{
    if (file == "-")
    {
        return readTrace(std::cin, "-");
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
    {
        throw UnreadableTrace("cannot open " + file + ": " + std::strerror(errno));
    }
    return readTrace(stream, file);
}

Trace readTrace(std::istream& stream, const std::string& name)
{
    return TraceReader(stream, name).read();
}
} // namespace Deskphone
