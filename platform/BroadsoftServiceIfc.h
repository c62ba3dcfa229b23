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

    /**
     * Every call-log and directory entry, one text line each: "{{TIME}NUMBER:NAME:{ID}:TYPE:SECOND}}".
     *
     * TIME is ISO 8601, "2026-03-05T09:07:00+01:00", without an offset in UTC; a contact's is not read. '#' in NAME
     * stands for a blank; in GroupDirectory and EnterpriseDirectory the first one ends the first name. TYPE is Placed,
     * Missed or Received for a call, Personal, GroupDirectory, EnterpriseDirectory, GroupCommon or EnterpriseCommon for
     * a contact. SECOND, a second number, is read in GroupDirectory and EnterpriseDirectory alone, "*" for none;
     * ":SECOND" may be missing. There are no escapes: TIME, ID and SECOND hold no '}', NUMBER and NAME no ':'. A line
     * with an empty field before SECOND, or with another TYPE, is logged and left out.
     */
    virtual std::vector<std::string> entries() = 0;

    /** `path` is "/Placed/", "/Missed/" or "/Received/" followed by the call log id; any other text is no entry's. */
    virtual void deleteCallLogEntry(const std::string& path) = 0;
};
