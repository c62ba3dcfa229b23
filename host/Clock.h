/**
 * The clock that the host hands to the library wherever it asks for one.
 *
 * It shows the time of the calling thread's current event loop, simulated or real, and the machine's time on a
 * thread without one. It has the signature of the C library's time().
 */
#pragma once

#include <ctime>
#include <string>

namespace Host
{
/** Seconds since the epoch, UTC; stored in `*time` too unless that is null. */
std::time_t currentTime(std::time_t* time);

/** A moment in the zone of this machine, as the call journal writes it: "2026-03-05T09:07:00+01:00". */
std::string localIso8601(std::time_t time);
} // namespace Host
