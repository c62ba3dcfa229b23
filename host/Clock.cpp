#include "host/Clock.h"

#include "host/EventLoop.h"

#include <array>
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

std::string localIso8601(std::time_t time)
{
    std::tm local{};
    localtime_r(&time, &local);
    std::array<char, 64> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S%z", &local);
    return std::string(text.data(), length).insert(length - 2, ":");
}
} // namespace Host
