#include "Player.h"

#include "Contact.h"
#include "HistoryCall.h"
#include "StorageProblem.h"
#include "Telephone.h"
#include "TelephoneSetup.h"
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

void recordContacts(TraceRecorder& recorder, Host::Phonebook& phonebook, long start)
{
    for (const std::string& id : phonebook.contactIds())
    {
        recorder.recordContact(start, contactOf(phonebook.read(readRequest(id))));
    }
}

/** What was in the history before is part of what the rows come from. */
void recordHistory(TraceRecorder& recorder, Host::Journal& journal, long start)
{
    for (const Host::JournalCall& call : journal.calls())
    {
        recorder.recordHistory(start, HistoryCall(call));
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
    const TelephoneSettings settings = setUp(options, trace.settings);
    std::optional<TraceRecorder> recorder;
    startRecord(recorder, trace, options, settings);
    Host::SimulatedEventLoop loop(trace.start);
    const Host::EventLoop::Scope scope(loop);
    Telephone telephone(settings, options.dataFolder());
    StorageProblem problem(telephone, errors);
    if (recorder)
    {
        recordContacts(*recorder, telephone.phonebook(), trace.start);
        recordHistory(*recorder, telephone.journal(), trace.start);
    }
    loop.runUntilIdle();
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
        problem.tellWhenNew();
        watcher.afterEvent(telephone, event);
    }
    watcher.atEnd(telephone);
    if (recorder)
    {
        recorder->finish();
    }
    return telephone.isStored() && wasAllPossible;
}
} // namespace Deskphone
