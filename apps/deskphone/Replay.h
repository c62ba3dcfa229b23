/** Applies a trace to a telephone in simulated time and prints what its screen shows. */
#pragma once

#include "Options.h"
#include "Trace.h"

#include <ostream>

namespace Deskphone
{
/** False when an event was not possible; the rest was applied, and `errors` says which. */
bool replay(const Trace& trace, const Options& options, std::ostream& screen, std::ostream& errors);
} // namespace Deskphone
