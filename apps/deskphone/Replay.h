/** Applies a trace to a telephone and prints what its screen shows. */
#pragma once

#include "Options.h"
#include "Trace.h"

#include <ostream>

namespace Deskphone
{
/** False and throws as play(). */
bool replay(const Trace& trace, const Options& options, std::ostream& screen, std::ostream& errors);
} // namespace Deskphone
