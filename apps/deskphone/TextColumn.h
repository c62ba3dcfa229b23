/** Text in columns of a terminal, where a character is not a byte and may be two columns wide. */
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Deskphone
{
/** UTF-8 for the width of characters in this program; the rest of the locale stays as it is. */
void useUtf8();

/** Columns that a text takes; what cannot be shown counts as one. */
std::size_t columnsOf(const std::string& text);

/** The text in exactly so many columns: filled with blanks, or cut, with "…" as the last character. What cannot
 *  be shown becomes '?'. */
std::string leftAligned(const std::string& text, std::size_t columns);
std::string rightAligned(const std::string& text, std::size_t columns);

/** The text in at most so many columns, cut in the same way. */
std::string shortened(const std::string& text, std::size_t columns);

/** Those of the texts that are not empty. */
std::string joined(const std::vector<std::string>& texts, const char* between);
} // namespace Deskphone
