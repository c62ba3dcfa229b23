#include "host/RealTimeEventLoop.h"

#include "host/internal/TimerQueue.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <ctime>

namespace Host
{
namespace
{
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;
} // namespace

/** One wake-up call of the operating system serves the whole timer queue: it is set for the first timer. */
class RealTimeEventLoop::Impl
{
  public:
    explicit Impl(RealTimeEventLoop& loop)
        : loop_(loop), keepRunning_(boost::asio::make_work_guard(context_)), wakeUp_(context_)
    {
    }

    boost::asio::io_context& context() { return context_; }

    void setWakeUp();
    bool runDueTimers();

  private:
    RealTimeEventLoop& loop_;
    boost::asio::io_context context_;
    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> keepRunning_;
    boost::asio::steady_timer wakeUp_;
    std::int64_t wakeUpMs_ = -1; ///< what the wake-up call is set for, -1 when for nothing
};

void RealTimeEventLoop::Impl::setWakeUp()
{
    const std::int64_t due = loop_.timers().nextDue().value_or(-1);
    if (due == wakeUpMs_ || due == -1)
    {
        return;
    }
    wakeUpMs_ = due;
    wakeUp_.expires_at(Clock::time_point(milliseconds(due)));
    wakeUp_.async_wait(
        [this](const boost::system::error_code& cancelled)
        {
            if (!cancelled)
            {
                wakeUpMs_ = -1;
                runDueTimers();
            }
        });
}

bool RealTimeEventLoop::Impl::runDueTimers()
{
    bool any = false;
    const std::int64_t until = loop_.monotonicMs(); // what the tasks start anew waits for the next round
    while (const auto timer = loop_.timers().takeDue(until))
    {
        EventLoop::run(timer->task);
        any = true;
    }
    setWakeUp();
    return any;
}

RealTimeEventLoop::RealTimeEventLoop() : impl_(std::make_unique<Impl>(*this)) {}

RealTimeEventLoop::~RealTimeEventLoop() = default;

long RealTimeEventLoop::now() const
{
    return std::time(nullptr);
}

std::int64_t RealTimeEventLoop::monotonicMs() const
{
    return std::chrono::duration_cast<milliseconds>(Clock::now().time_since_epoch()).count();
}

void RealTimeEventLoop::post(Task task)
{
    boost::asio::post(impl_->context(), [task = std::move(task)] { EventLoop::run(task); });
}

void RealTimeEventLoop::runUntilIdle()
{
    while (impl_->runDueTimers() || impl_->context().poll() != 0)
    {
    }
}

void RealTimeEventLoop::run()
{
    impl_->context().run();
    impl_->context().restart();
}

void RealTimeEventLoop::stop()
{
    impl_->context().stop();
}

void RealTimeEventLoop::timerStarted()
{
    impl_->setWakeUp();
}
} // namespace Host
