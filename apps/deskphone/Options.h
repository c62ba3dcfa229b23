/** What the program is asked to do on the command line. */
#pragma once

#include "ExitCode.h"
#include "TelephoneSettings.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace Deskphone
{
struct Options
{
    enum Command
    {
        REPLAY,
        EXPLAIN,
        HISTORY,
        SEARCH,
        MARK_READ,
        DELETE,
        CONTACT_LIST,
        CONTACT_ADD,
        CONTACT_CHANGE,
        CONTACT_REMOVE
    };

    Command command = REPLAY;
    std::string trace; ///< a file, "-" for standard input

    // What to replay and how to show it.
    bool afterEachEvent = false;
    bool json = false;
    bool withIds = false;
    std::optional<std::string> record; ///< a file

    /** What to explain, to mark or to delete: its place from 1, 0 for none, or a number that it has. */
    long row = 0;
    std::optional<std::string> number;
    bool all = false;

    std::string contactId;                            ///< whom to change or to remove
    std::map<std::string, std::string> contactFields; ///< what is told of the contact, by the field's name

    std::string text;                ///< what to search
    std::optional<std::string> ldap; ///< how the directory is reached: a file
    long resultToSave = 0;           ///< its place from 1; 0 for none

    std::optional<long> at; ///< when the stored history is shown: seconds since the epoch, UTC; nothing for now

    // Where the history is kept: a folder, else the user's; fresh: nowhere, and there is none at first.
    std::optional<std::string> data;
    bool fresh = false;

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

    /** "" when nothing is to be kept. Throws std::runtime_error when there is no place for it. */
    std::filesystem::path dataFolder() const;
};

/** Nothing when the program is to end at once, with the given exit code: help was asked for, or the options are
 *  wrong; what is to be said has been printed. */
std::optional<Options> parseOptions(int argc, char** argv, ExitCode& exitCode);
} // namespace Deskphone
