/**
 * An event loop whose time moves only when it is told to: a day of events passes in milliseconds and two runs
 * are alike.
 *
 * Moving the clock stops at every timer on the way: the clock shows the timer's own moment while its task runs,
 * and what tasks post runs before the clock moves on. A task may move the clock itself.
 */
#pragma once

#include "host/EventLoop.h"

#include <deque>
#include <mutex>

namespace Host
{
class SimulatedEventLoop final : public EventLoop
{
  public:
    /** `start` is the first time shown, in seconds since the epoch, UTC. */
    explicit SimulatedEventLoop(long start);
    ~SimulatedEventLoop() override;

    long now() const override;
    std::int64_t monotonicMs() const override;
    void post(Task task) override;
    void runUntilIdle() override;

    /** Moves the clock on to a time in seconds since the epoch, UTC. A time that has passed leaves it as it is. */
    void advanceTo(long time);

    /** Moves the clock on by milliseconds; negative counts as 0. */
    void advanceBy(std::int64_t milliseconds);

  private:
    void timerStarted() override;
    void runPosted();
    void advanceClock(std::int64_t elapsedMs);

    const long start_;
    std::int64_t elapsedMs_ = 0;
    std::mutex postedMutex_;
    std::deque<Task> posted_;
};
} // namespace Host
