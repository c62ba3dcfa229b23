#include "host/EventLoop.h"
#include "platform/DisplayAPI.h"
#include "platform/Logging.h"

namespace DisplayAPI
{
namespace
{
constexpr const char* TIMER_LOG_FILE = "./host/Timer";
}

class Timer::Impl
{
  public:
    explicit Impl(Timer& owner) : owner_(owner) {}

    void start(int interval);
    void stop() { pending_.cancel(); }

    Command* command = nullptr;
    CommandListener* listener = nullptr;
    bool singleShot = false;

  private:
    void fire();

    Timer& owner_;
    Host::TimerHandle pending_;
    int interval_ = -1;
};

void Timer::Impl::start(int interval)
{
    stop();
    interval_ = interval;
    if (interval < 0)
    {
        return;
    }
    Host::EventLoop* loop = Host::EventLoop::current();
    if (loop == nullptr)
    {
        logAppOrv("Host", TIMER_LOG_FILE, 2, __LINE__, "Timer[%p] stays idle: this thread has no event loop",
                  static_cast<void*>(&owner_));
        return;
    }
    pending_ = loop->startTimer(interval, [this] { fire(); });
}

void Timer::Impl::fire()
{
    if (!singleShot)
    {
        start(interval_);
    }
    if (listener != nullptr && Command::exists(command))
    {
        listener->commandAction(command, &owner_); // may have destroyed the timer: nothing may follow
    }
}

Timer::Timer(int interval) : impl_(std::make_unique<Impl>(*this))
{
    impl_->start(interval);
}

Timer::~Timer() = default;

void Timer::addCommand(Command* command)
{
    impl_->command = command;
}

void Timer::setCommandListener(CommandListener* listener)
{
    impl_->listener = listener;
}

void Timer::setSingleShot(bool singleShot)
{
    impl_->singleShot = singleShot;
}

void Timer::start(int interval)
{
    impl_->start(interval);
}

void Timer::stop()
{
    impl_->stop();
}
} // namespace DisplayAPI
