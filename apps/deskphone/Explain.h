/** Tells why the items of a row stand together. */
#pragma once

#include "Options.h"
#include "Trace.h"

#include <ostream>

namespace Deskphone
{
/**
 * Applies the trace and explains the row that the options name, item by item in the row's order. False when there is
 * no such row, and as play(); `errors` says why.
 */
bool explain(const Trace& trace, const Options& options, std::ostream& screen, std::ostream& errors);
} // namespace Deskphone
