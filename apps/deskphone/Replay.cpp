#include "Replay.h"

#include "Moment.h"
#include "Player.h"
#include "PrintList.h"
#include "Telephone.h"

namespace Deskphone
{
namespace
{
void printAfter(std::ostream& stream, Telephone& telephone, const Options& options, const TraceEvent& event)
{
    if (!options.json)
    {
        stream << formatTimeOfDay(event.time) << "  " << event.name << (event.text.empty() ? "" : ": ") << event.text
               << '\n';
    }
    printList(stream, telephone, options, event.line);
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
        watcher.atEnd = [&, lastLine](Telephone& telephone) { printList(screen, telephone, options, lastLine); };
    }
    return play(trace, options, watcher, errors);
}
} // namespace Deskphone
