#include "host/Clock.h"

#include "host/EventLoop.h"

#include <type_traits>

namespace Host
{
static_assert(std::is_same_v<std::time_t, long>, "the library takes its clock as long (*)(long*) too");

std::time_t currentTime(std::time_t* time)
{
    const EventLoop* loop = EventLoop::current();
    const std::time_t now = loop != nullptr ? loop->now() : std::time(nullptr);
    if (time != nullptr)
    {
        *time = now;
    }
    return now;
}
} // namespace Host
