#include "Player.h"

#include "Telephone.h"
#include "TimeZone.h"
#include "TraceRecorder.h"
#include "host/SimulatedEventLoop.h"

#include <filesystem>
#include <optional>

namespace Deskphone
{
namespace
{
/** A trace is read as a whole before it is replayed, so nothing but its loss would tell of the mistake. */
void refuseToOverwrite(const std::string& trace, const std::string& record)
{
    std::error_code error;
    if (std::filesystem::equivalent(trace == "-" ? "/dev/stdin" : trace, record, error))
    {
        throw UnwritableRecord(record + " is the trace itself; record into another file");
    }
}

void startRecord(std::optional<TraceRecorder>& recorder, const Trace& trace, const Options& options,
                 const TelephoneSettings& settings)
{
    if (options.record)
    {
        refuseToOverwrite(trace.file, *options.record);
        recorder.emplace(*options.record, settings, trace.start);
    }
}

/** Whether the event was possible. */
bool apply(const TraceEvent& event, Telephone& telephone, const std::string& file, std::ostream& errors)
{
    try
    {
        event.event->apply(telephone);
        return true;
    }
    catch (const NotPossible& problem)
    {
        errors << file << ':' << event.line << ": " << event.name << ": " << problem.what() << '\n';
        return false;
    }
}
} // namespace

bool play(const Trace& trace, const Options& options, const Watcher& watcher, std::ostream& errors)
{
    const TelephoneSettings settings = options.over(trace.settings);
    if (!settings.timeZone.empty())
    {
        setTimeZone(settings.timeZone);
    }
    std::optional<TraceRecorder> recorder;
    startRecord(recorder, trace, options, settings);
    Host::SimulatedEventLoop loop(trace.start);
    const Host::EventLoop::Scope scope(loop);
    Telephone telephone(settings);
    bool wasAllPossible = true;
    for (const TraceEvent& event : trace.events)
    {
        loop.advanceTo(event.time);
        if (recorder)
        {
            recorder->record(loop.now(), event.name, *event.event);
        }
        wasAllPossible = apply(event, telephone, trace.file, errors) && wasAllPossible;
        loop.runUntilIdle();
        if (watcher.afterEvent)
        {
            watcher.afterEvent(telephone, event);
        }
    }
    if (watcher.atEnd)
    {
        watcher.atEnd(telephone);
    }
    if (recorder)
    {
        recorder->finish();
    }
    return wasAllPossible;
}
} // namespace Deskphone
