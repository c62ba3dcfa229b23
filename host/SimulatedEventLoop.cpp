#include "host/SimulatedEventLoop.h"

#include "host/internal/TimerQueue.h"

#include <algorithm>

namespace Host
{
namespace
{
constexpr std::int64_t MS_PER_SECOND = 1000;

/** Some thirty thousand years: far outside every trace, and in milliseconds well inside the type. */
constexpr long FARTHEST_TIME = 1'000'000'000'000L;
constexpr std::int64_t LONGEST_STEP_MS = 2 * FARTHEST_TIME * MS_PER_SECOND;

long bounded(long time)
{
    return std::clamp(time, -FARTHEST_TIME, FARTHEST_TIME);
}
} // namespace

SimulatedEventLoop::SimulatedEventLoop(long start) : start_(bounded(start)) {}

SimulatedEventLoop::~SimulatedEventLoop() = default;

long SimulatedEventLoop::now() const
{
    return start_ + elapsedMs_ / MS_PER_SECOND;
}

std::int64_t SimulatedEventLoop::monotonicMs() const
{
    return elapsedMs_;
}

void SimulatedEventLoop::post(Task task)
{
    const std::lock_guard<std::mutex> guard(postedMutex_);
    posted_.push_back(std::move(task));
}

void SimulatedEventLoop::runUntilIdle()
{
    advanceClock(elapsedMs_);
}

void SimulatedEventLoop::advanceTo(long time)
{
    advanceClock((bounded(time) - start_) * MS_PER_SECOND);
}

void SimulatedEventLoop::advanceBy(std::int64_t milliseconds)
{
    advanceClock(elapsedMs_ + std::clamp(milliseconds, std::int64_t{0}, LONGEST_STEP_MS));
}

void SimulatedEventLoop::timerStarted() {}

void SimulatedEventLoop::runPosted()
{
    for (;;)
    {
        Task task;
        {
            const std::lock_guard<std::mutex> guard(postedMutex_);
            if (posted_.empty())
            {
                return;
            }
            task = std::move(posted_.front());
            posted_.pop_front();
        }
        run(task);
    }
}

void SimulatedEventLoop::advanceClock(std::int64_t elapsedMs)
{
    runPosted();
    while (const auto timer = timers().takeDue(elapsedMs))
    {
        elapsedMs_ = std::max(elapsedMs_, timer->due); // a task that moved the clock itself may be ahead
        run(timer->task);
        runPosted();
    }
    elapsedMs_ = std::max(elapsedMs_, elapsedMs);
}
} // namespace Host
