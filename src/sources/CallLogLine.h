/** One entry of the network's call logs and directories, as its text line tells it. */
#pragma once

#include <optional>
#include <string>

namespace ConversationAPI
{
struct CallLogLine
{
    std::string time; ///< ISO 8601
    std::string number;
    std::string name; ///< with '#' for blanks; in a group's or enterprise's directory the first '#' ends the first name
    std::string callLogId;
    std::string type;
    std::string secondNumber; ///< "*" for none; "" when the line ended before it

    /** The name as it is shown. */
    std::string displayName() const;

    /** Whether this is a contact, and not a call. */
    bool isOfDirectory() const;
};

/** Nothing, and a line in the log, for a text that lacks more than the second number. */
std::optional<CallLogLine> readCallLogLine(const std::string& entry);
} // namespace ConversationAPI
