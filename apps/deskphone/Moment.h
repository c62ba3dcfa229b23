/** Moments as traces write them: ISO 8601 with seconds and zone, "2026-03-05T09:07:00+01:00" or "...Z". */
#pragma once

#include <optional>
#include <string>

namespace Deskphone
{
/** Seconds since the epoch, UTC; nothing for a text that is no such moment or lies outside 1970 to 2037. */
std::optional<long> parseMoment(const std::string& text);

/** The moment in UTC, as the journal writes it. */
std::string formatMoment(long time);

/** Its time of day in local time: "09:07:00". */
std::string formatTimeOfDay(long time);
} // namespace Deskphone
