/** Text for the length of a call. Stateless; callable from any thread. */
#pragma once

#include <string>

namespace ConversationAPI
{
class DurationStringFormatter
{
  public:
    /** "(mm:ss)" or "(h:mm:ss)"; "" below one second and from 100 hours on. */
    static std::string createDurationStr(long milliseconds);
};
} // namespace ConversationAPI
