/** Reads the journal's date-time texts: "2026-03-05T09:07:00", optionally followed by "Z" or "+01:00". */
#pragma once

#include <optional>
#include <string>

namespace ConversationAPI
{
/**
 * Seconds since the epoch of the instant that the text denotes, nothing when it is malformed.
 *
 * A text without an offset is UTC. Thousands of texts are read at every rebuild, so this reads fixed
 * positions and allocates nothing.
 */
std::optional<long> parseIso8601(const std::string& text);

/** Throws the boost error that says what is wrong with a text that parseIso8601() refused. */
[[noreturn]] void throwIso8601Error(const std::string& text);
} // namespace ConversationAPI
