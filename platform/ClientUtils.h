/** Text helpers of the telephone's client libraries. Stateless; callable from any thread. */
#pragma once

#include <string>
#include <vector>

namespace ClientUtils
{
std::string escapeXMLString(const std::string& text);
std::string unescapeXMLString(const std::string& text);

/** The raw text between <key> and </key>, first occurrence; whole tag names only, "" when there is none. */
std::string extractValueFromXMLString(const std::string& xml, const std::string& key);

/** The parts of `text` between separators; empty parts are kept. */
std::vector<std::string> tokenizeString(const std::string& text, char separator);

/** Splits at the last '/': `path` ends with it or is "", `fileName` is the rest. */
void spiltFilenameAndPath(const std::string& full, std::string& path, std::string& fileName);

std::string itos(int value);

/** The number the text spells; 0 for a text that is none or does not fit. */
int stoi(const std::string& text);
} // namespace ClientUtils
