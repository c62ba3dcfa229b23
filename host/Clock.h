/**
 * The clock that the host hands to the library wherever it asks for one.
 *
 * It shows the time of the calling thread's current event loop, simulated or real, and the machine's time on a
 * thread without one. It has the signature of the C library's time().
 */
#pragma once

#include <ctime>

namespace Host
{
/** Seconds since the epoch, UTC; stored in `*time` too unless that is null. */
std::time_t currentTime(std::time_t* time);
} // namespace Host
