/** What the host does with texts of others, which may be too long and need not be the UTF-8 that they should be. */
#pragma once

#include <cstddef>
#include <string>

namespace Host
{
/** At most so many bytes, cut at the beginning of a character if there is any. */
std::string cutUtf8(const std::string& text, std::size_t mostBytes);

bool isUtf8(const std::string& text);

/** Without the bytes that are no UTF-8, and with blanks in place of control characters: one line for a display. */
std::string toDisplayText(const std::string& text);
} // namespace Host
