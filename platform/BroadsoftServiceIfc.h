/**
 * The network service that keeps call logs and directories for the user.
 *
 * How the service tells of changes is the telephone's own affair: whatever hears of one passes all entries on to the
 * source (`broadsoftCallLogChanged`). Called on the UI thread.
 */
#pragma once

#include <string>
#include <vector>

class BroadsoftServiceIfc
{
  public:
    virtual ~BroadsoftServiceIfc() = default;

    /** Every call-log and directory entry, one text line each. */
    virtual std::vector<std::string> entries() = 0;

    /** `path` is "/Placed/", "/Missed/" or "/Received/" followed by the call log id; any other text is no entry's. */
    virtual void deleteCallLogEntry(const std::string& path) = 0;
};
