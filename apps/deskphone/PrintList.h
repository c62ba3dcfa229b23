/** Prints what the telephone's screen shows, in the form that the options ask for. */
#pragma once

#include "Options.h"

#include <cstddef>
#include <ostream>

namespace Deskphone
{
class Telephone;

/** `line` is that of the trace after which the screen looks so, 0 without a trace. */
void printList(std::ostream& stream, Telephone& telephone, const Options& options, std::size_t line = 0);

/** What the search field has found alone; printList() prints it, too, below the list. */
void printFound(std::ostream& stream, Telephone& telephone, const Options& options, std::size_t line = 0);
} // namespace Deskphone
