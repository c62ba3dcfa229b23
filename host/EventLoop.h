/**
 * The loop of the one UI thread: it runs posted functions and timers, and tells the time.
 *
 * Two loops share this interface: RealTimeEventLoop lives by the machine's clock, SimulatedEventLoop by a clock
 * that moves only when it is told to. Whoever makes a loop owns it and declares it the current one of its
 * thread with an EventLoop::Scope; timers of the display toolkit and Host::currentTime() then find it.
 *
 * Everything but post() belongs to the loop's thread. Tasks may start and cancel timers and post further tasks.
 * An exception that leaves a task is logged and goes no further.
 */
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

namespace Host
{
class TimerQueue;

/**
 * A started timer. Cancels it when destroyed; may outlive the loop. Cancelling a timer that has fired, or one
 * that was never started, does nothing.
 */
class TimerHandle
{
  public:
    TimerHandle();
    TimerHandle(TimerHandle&& other) noexcept;
    TimerHandle& operator=(TimerHandle&& other) noexcept;
    ~TimerHandle();

    TimerHandle(const TimerHandle&) = delete;
    TimerHandle& operator=(const TimerHandle&) = delete;

    void cancel();

  private:
    friend class EventLoop;
    using Key = std::pair<std::int64_t, std::uint64_t>;

    TimerHandle(std::weak_ptr<TimerQueue> queue, Key key);

    std::weak_ptr<TimerQueue> queue_;
    Key key_;
};

class EventLoop
{
  public:
    using Task = std::function<void()>;

    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;

    /** Tasks that have not run are dropped. */
    virtual ~EventLoop();

    /** Seconds since the epoch, UTC. */
    virtual long now() const = 0;

    /** Milliseconds since some moment before the loop was made; never goes back. */
    virtual std::int64_t monotonicMs() const = 0;

    /** Lets the loop run a task soon, in the order of posting. Callable from any thread. */
    virtual void post(Task task) = 0;

    /** Runs what is posted and due, and what that posts, until nothing is left to do now. */
    virtual void runUntilIdle() = 0;

    /**
     * Runs a task once when `delayMs` milliseconds have passed. A timer always lets time pass: less than 1 counts
     * as 1, so that a task that starts itself anew cannot hold the clock; more than a hundred years count as that.
     * The timer lives as long as the handle.
     */
    [[nodiscard]] TimerHandle startTimer(std::int64_t delayMs, Task task);

    /** The loop of the calling thread; null when it has none. */
    static EventLoop* current();

    /** Makes a loop the current one of this thread; the one before comes back at the end of the scope. */
    class Scope
    {
      public:
        explicit Scope(EventLoop& loop);
        ~Scope();

        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

      private:
        EventLoop* const previous_;
    };

  protected:
    EventLoop();

    TimerQueue& timers();

    static void run(const Task& task);

  private:
    /** A timer was started; it may be due before all others. */
    virtual void timerStarted() = 0;

    std::shared_ptr<TimerQueue> timers_;
};
} // namespace Host
