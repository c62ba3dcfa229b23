/** What the program is asked to do on the command line. */
#pragma once

#include "TelephoneSettings.h"

#include <optional>
#include <string>

namespace Deskphone
{
struct Options
{
    enum Command
    {
        REPLAY,
        EXPLAIN
    };

    Command command = REPLAY;
    std::string trace; ///< a file, "-" for standard input

    // What to replay and how to show it.
    bool afterEachEvent = false;
    bool json = false;
    bool withIds = false;
    std::optional<std::string> record; ///< a file

    long row = 0; ///< what to explain: its place from 1

    // These go before what the trace says.
    std::optional<std::string> timeZone;
    std::optional<std::string> country;
    std::optional<std::string> areaCode;
    std::optional<std::string> outsidePrefix;
    std::optional<std::string> language;
    std::optional<std::string> timeFormat;
    std::optional<std::string> dateFormat;

    std::optional<int> logLevel;
    bool logPlain = false;

    /** The settings of a trace with those of the command line in their place. */
    TelephoneSettings over(TelephoneSettings settings) const;
};

/** Nothing when the program is to end at once, with the given exit code: help was asked for, or the options are
 *  wrong; what is to be said has been printed. */
std::optional<Options> parseOptions(int argc, char** argv, int& exitCode);
} // namespace Deskphone
