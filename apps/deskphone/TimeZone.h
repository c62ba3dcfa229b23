/** The time zone that the whole program lives in. */
#pragma once

#include <string>

namespace Deskphone
{
/** Whether this machine knows a zone of this name ("Europe/Berlin"). */
bool isTimeZone(const std::string& name);

/** The name of the zone that local times are in; "" when the machine does not tell a name. */
std::string currentTimeZone();

/** Makes a zone that exists the one of all local times from now on. */
void setTimeZone(const std::string& name);
} // namespace Deskphone
