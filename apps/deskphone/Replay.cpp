#include "Replay.h"

#include "Moment.h"
#include "ScreenRow.h"
#include "ScreenText.h"
#include "Telephone.h"
#include "TimeZone.h"
#include "host/SimulatedEventLoop.h"

namespace Deskphone
{
namespace
{
void print(std::ostream& stream, Telephone& telephone, const Options& options, std::size_t line, long now)
{
    const std::vector<ScreenRow> rows = screenRows(telephone);
    if (options.json)
    {
        printJson(stream, line, rows, options.withIds);
    }
    else
    {
        printScreen(stream, telephone.times().formatFromUTCToFullDate(now), rows, options.withIds);
    }
}

void printEvent(std::ostream& stream, const TraceEvent& event)
{
    stream << formatTimeOfDay(event.time) << "  " << event.name << (event.text.empty() ? "" : ": ") << event.text
           << '\n';
}
} // namespace

bool replay(const Trace& trace, const Options& options, std::ostream& screen, std::ostream& errors)
{
    const TelephoneSettings settings = options.over(trace.settings);
    if (!settings.timeZone.empty())
    {
        setTimeZone(settings.timeZone);
    }
    Host::SimulatedEventLoop loop(trace.start);
    const Host::EventLoop::Scope scope(loop);
    Telephone telephone(settings);
    bool wasAllPossible = true;
    std::size_t line = 0;
    for (const TraceEvent& event : trace.events)
    {
        loop.advanceTo(event.time);
        line = event.line;
        try
        {
            event.apply(telephone);
        }
        catch (const NotPossible& problem)
        {
            errors << trace.file << ':' << event.line << ": " << event.name << ": " << problem.what() << '\n';
            wasAllPossible = false;
        }
        loop.runUntilIdle();
        if (options.afterEachEvent)
        {
            if (!options.json)
            {
                printEvent(screen, event);
            }
            print(screen, telephone, options, event.line, loop.now());
            screen << (options.json ? "" : "\n");
        }
    }
    if (!options.afterEachEvent)
    {
        print(screen, telephone, options, line, loop.now());
    }
    return wasAllPossible;
}
} // namespace Deskphone
