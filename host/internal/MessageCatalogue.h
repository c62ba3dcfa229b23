/** A check of compiled gettext catalogues before they are trusted. */
#pragma once

#include <vector>

namespace Host
{
/**
 * Whether every table and text of a .mo file lies inside it and every look-up in it ends. Boost.Locale believes
 * what a catalogue says, so that a damaged one would take the program down.
 */
bool isSoundCatalogue(const std::vector<char>& file);
} // namespace Host
