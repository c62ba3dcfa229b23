/**
 * Makes the text of a log line from a printf format, handing every text argument to a filter on its way.
 *
 * Knows the conversions d i u o x X c s p e E f F g G a A m % with flags, widths, precisions and lengths. %n writes
 * nothing. A null text reads "(null)", wide characters and texts read "(wide)". Widths and precisions of numbers
 * are cut at 512, text arguments at 16384 bytes with a note of how much is missing. From a conversion that it does
 * not know on, the format is written as it stands, since nobody can tell how the other arguments lie.
 */
#pragma once

#include <cstdarg>
#include <functional>
#include <string>
#include <string_view>

namespace Host
{
using TextFilter = std::function<std::string(std::string_view)>;

/** `arguments` is read from a copy. */
std::string formatLogText(const char* format, va_list arguments, const TextFilter& filter);

/**
 * A text to be part of a format: the name of a file, a server or a language, say. It is nobody's, and as an argument
 * it would be hidden, so that the line did not tell what it is about.
 */
std::string inFormat(const std::string& text);

/** Writes a line of which nothing is hidden. */
void logInFull(const char* file, int level, int line, const std::string& text);
} // namespace Host
