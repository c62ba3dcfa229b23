/** Applies a trace to a telephone in simulated time. */
#pragma once

#include "Options.h"
#include "Trace.h"

#include <functional>
#include <ostream>

namespace Deskphone
{
/** What somebody does who watches the telephone meanwhile. */
struct Watcher
{
    std::function<void(Telephone& telephone, const TraceEvent& event)> afterEvent = [](Telephone&, const TraceEvent&) {
    };
    std::function<void(Telephone& telephone)> atEnd = [](Telephone&) {};
};

/**
 * The telephone is set up as trace and options say, and recorded when the options ask for it. False when an event
 * was not possible, while the rest was applied, or when history or contacts could not be read or stored; `errors` says
 * which. Throws UnwritableRecord: before anything was applied when the file cannot be made, at the very end when
 * something could not be written to it.
 */
bool play(const Trace& trace, const Options& options, const Watcher& watcher, std::ostream& errors);
} // namespace Deskphone
