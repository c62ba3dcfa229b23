#include "sources/CallLogLine.h"

#include "Log.h"
#include "sources/BroadsoftServiceLog.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace ConversationAPI
{
namespace
{
constexpr int FIELDS = 6;
constexpr int NEEDED_FIELDS = FIELDS - 1;
} // namespace

std::string CallLogLine::displayName() const
{
    std::string shown = name;
    std::replace(shown.begin(), shown.end(), '#', ' ');
    return shown;
}

bool CallLogLine::isOfDirectory() const
{
    static const std::array<const char*, 5> directories = {"Personal", "GroupDirectory", "EnterpriseDirectory",
                                                           "GroupCommon", "EnterpriseCommon"};
    return std::find(directories.begin(), directories.end(), type) != directories.end();
}

std::optional<CallLogLine> readCallLogLine(const std::string& entry)
{
    // With the terminating NUL as long as the line: no field can be longer than that, whatever the line holds.
    std::array<std::string, FIELDS> fields;
    fields.fill(std::string(entry.size() + 1, '\0'));
    const int fieldsRead =
        std::sscanf(entry.c_str(), "{{%[^}]}%[^:]:%[^:]:{%[^}]}:%[^:]:%[^}]}", fields[0].data(), fields[1].data(),
                    fields[2].data(), fields[3].data(), fields[4].data(), fields[5].data());
    if (fieldsRead < NEEDED_FIELDS)
    {
        CONVERSATION_LOG(BROADSOFT_SOURCE_LOG_FILE, 2, "sscanf could not read all entry items. Entry[%s] - retVal = %d",
                         entry.c_str(), fieldsRead);
        return std::nullopt;
    }
    CallLogLine line{fields[0].c_str(), fields[1].c_str(), fields[2].c_str(),
                     fields[3].c_str(), fields[4].c_str(), fields[5].c_str()};
    if (fieldsRead == NEEDED_FIELDS)
    {
        // Without a second number nothing parts the type from the braces that close the line.
        line.type.erase(std::min(line.type.find('}'), line.type.size()));
    }
    return line;
}
} // namespace ConversationAPI
