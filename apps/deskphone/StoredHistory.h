/** The commands on the stored history: a telephone is switched on, the user looks or does one thing. */
#pragma once

#include "Options.h"

#include <ostream>

namespace Deskphone
{
/** Prints the list that the stored history gives, after what the options ask for. False when that was not possible,
 *  or when history or contacts could not be read or stored; `errors` says why. */
bool showHistory(const Options& options, std::ostream& screen, std::ostream& errors);
} // namespace Deskphone
