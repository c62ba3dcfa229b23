/** How the program ends. docs/trace.md says more. */
#pragma once

namespace Deskphone
{
enum ExitCode
{
    ALL_WENT_WELL = 0,
    FAILED = 1,          ///< wrong usage, a trace that cannot be read, a record or a list that cannot be written
    BROKEN_INPUT = 2,    ///< a trace, a contact or the phonebook: nothing was done
    NOT_ALL_POSSIBLE = 3 ///< the rest was done
};
} // namespace Deskphone
