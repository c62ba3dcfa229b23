#include "platform/DisplayAPI.h"

#include <unordered_set>

namespace DisplayAPI
{
namespace
{
std::unordered_set<const Command*>& liveCommands()
{
    static auto& commands = *new std::unordered_set<const Command*>; // commands may be statics destroyed after it
    return commands;
}
} // namespace

Command::Command(const std::string& name) : name_(name)
{
    liveCommands().insert(this);
}

Command::~Command()
{
    liveCommands().erase(this);
}

const std::string& Command::name() const
{
    return name_;
}

bool Command::exists(const Command* command)
{
    return liveCommands().count(command) != 0;
}
} // namespace DisplayAPI
