#include "Replay.h"

#include "Moment.h"
#include "Player.h"
#include "ScreenRow.h"
#include "ScreenText.h"
#include "Telephone.h"
#include "host/Clock.h"

namespace Deskphone
{
namespace
{
void print(std::ostream& stream, Telephone& telephone, const Options& options, std::size_t line)
{
    const std::vector<ScreenRow> rows = screenRows(telephone);
    if (options.json)
    {
        printJson(stream, line, rows, options.withIds);
    }
    else
    {
        printScreen(stream, telephone.times().formatFromUTCToFullDate(Host::currentTime(nullptr)), rows,
                    options.withIds);
    }
}

void printAfter(std::ostream& stream, Telephone& telephone, const Options& options, const TraceEvent& event)
{
    if (!options.json)
    {
        stream << formatTimeOfDay(event.time) << "  " << event.name << (event.text.empty() ? "" : ": ") << event.text
               << '\n';
    }
    print(stream, telephone, options, event.line);
    stream << (options.json ? "" : "\n");
}
} // namespace

bool replay(const Trace& trace, const Options& options, std::ostream& screen, std::ostream& errors)
{
    Watcher watcher;
    if (options.afterEachEvent)
    {
        watcher.afterEvent = [&](Telephone& telephone, const TraceEvent& event)
        { printAfter(screen, telephone, options, event); };
    }
    else
    {
        const std::size_t lastLine = trace.events.empty() ? 0 : trace.events.back().line;
        watcher.atEnd = [&, lastLine](Telephone& telephone) { print(screen, telephone, options, lastLine); };
    }
    return play(trace, options, watcher, errors);
}
} // namespace Deskphone
