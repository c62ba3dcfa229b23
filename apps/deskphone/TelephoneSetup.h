/** What every command does before it has a telephone. */
#pragma once

#include "Options.h"

#include <filesystem>

namespace Deskphone
{
/** The settings of a trace, if there is one, with those of the command line in their place. The whole program lives in
 *  their time zone from then on. */
TelephoneSettings setUp(const Options& options, const TelephoneSettings& ofTrace = {});

/** Where history and contacts are kept; "" when nothing is there yet, for who only looks begins no files. Throws
 *  std::runtime_error as Options::dataFolder(). */
std::filesystem::path folderToLookInto(const Options& options);
} // namespace Deskphone
