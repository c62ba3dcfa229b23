/**
 * The event loop that lives by the machine's clock.
 *
 * Timers run by the monotonic clock, so that setting the machine's time neither fires nor delays them.
 */
#pragma once

#include "host/EventLoop.h"

namespace Host
{
class RealTimeEventLoop final : public EventLoop
{
  public:
    RealTimeEventLoop();
    ~RealTimeEventLoop() override;

    long now() const override;
    std::int64_t monotonicMs() const override;
    void post(Task task) override;
    void runUntilIdle() override;

    /** Runs tasks and waits for more until stop(); a stop() that came before makes it return at once. */
    void run();

    /** Ends run() after the task that is running. Callable from any thread. */
    void stop();

  private:
    class Impl;

    void timerStarted() override;

    std::unique_ptr<Impl> impl_;
};
} // namespace Host
