/** The command that looks for people among the telephone's own and in a directory. */
#pragma once

#include "Options.h"

#include <ostream>

namespace Deskphone
{
/** Prints who was found, and stores one of them when the options ask for it. False when that was not possible, the
 *  directory cannot be asked, or history or contacts could not be read or stored; `errors` says why. */
bool searchPeople(const Options& options, std::ostream& screen, std::ostream& errors);
} // namespace Deskphone
