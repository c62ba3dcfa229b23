#include "host/EventLoop.h"

#include "host/internal/TimerQueue.h"
#include "platform/Logging.h"

#include <algorithm>
#include <exception>

namespace Host
{
namespace
{
constexpr const char* EVENT_LOOP_LOG_FILE = "./host/EventLoop";
constexpr std::int64_t LONGEST_DELAY_MS = std::int64_t{100} * 366 * 24 * 60 * 60 * 1000;

thread_local EventLoop* currentLoop = nullptr;
} // namespace

TimerHandle::TimerHandle() = default;

TimerHandle::TimerHandle(std::weak_ptr<TimerQueue> queue, Key key) : queue_(std::move(queue)), key_(key) {}

TimerHandle::TimerHandle(TimerHandle&& other) noexcept = default;

TimerHandle& TimerHandle::operator=(TimerHandle&& other) noexcept
{
    if (this != &other)
    {
        cancel();
        queue_ = std::move(other.queue_);
        key_ = other.key_;
    }
    return *this;
}

TimerHandle::~TimerHandle()
{
    cancel();
}

void TimerHandle::cancel()
{
    if (const std::shared_ptr<TimerQueue> queue = std::exchange(queue_, {}).lock())
    {
        queue->remove(key_);
    }
}

EventLoop::EventLoop() : timers_(std::make_shared<TimerQueue>()) {}

EventLoop::~EventLoop()
{
    if (currentLoop == this)
    {
        currentLoop = nullptr;
    }
}

TimerHandle EventLoop::startTimer(std::int64_t delayMs, Task task)
{
    const std::int64_t delay = std::clamp(delayMs, std::int64_t{1}, LONGEST_DELAY_MS);
    TimerHandle handle(timers_, timers_->add(monotonicMs() + delay, std::move(task)));
    timerStarted();
    return handle;
}

EventLoop* EventLoop::current()
{
    return currentLoop;
}

EventLoop::Scope::Scope(EventLoop& loop) : previous_(std::exchange(currentLoop, &loop)) {}

EventLoop::Scope::~Scope()
{
    currentLoop = previous_;
}

TimerQueue& EventLoop::timers()
{
    return *timers_;
}

void EventLoop::run(const Task& task)
{
    try
    {
        if (task)
        {
            task();
        }
    }
    catch (const std::exception& problem)
    {
        logAppOrv("Host", EVENT_LOOP_LOG_FILE, 2, __LINE__, "A task failed: '%s'", problem.what());
    }
    catch (...)
    {
        logAppOrv("Host", EVENT_LOOP_LOG_FILE, 2, __LINE__, "A task failed with an exception of unknown type");
    }
}
} // namespace Host
