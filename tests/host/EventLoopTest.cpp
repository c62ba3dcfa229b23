#include "host/Clock.h"
#include "host/LogSink.h"
#include "host/RealTimeEventLoop.h"
#include "host/SimulatedEventLoop.h"
#include "platform/DisplayAPI.h"

#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>

namespace
{
using Host::EventLoop;
using Host::TimerHandle;

constexpr long START = 1'772'697'600;

class Listener : public DisplayAPI::CommandListener
{
  public:
    explicit Listener(std::function<void(DisplayAPI::Command*, DisplayAPI::Displayable*)> action)
        : action_(std::move(action))
    {
    }

    void commandAction(DisplayAPI::Command* command, DisplayAPI::Displayable* source) override
    {
        action_(command, source);
    }

  private:
    std::function<void(DisplayAPI::Command*, DisplayAPI::Displayable*)> action_;
};

TEST(SimulatedEventLoop, FiresInTimeOrderThenInOrderOfStart)
{
    Host::SimulatedEventLoop loop(START);
    std::vector<std::string> seen;
    const auto note = [&](const std::string& what)
    { return [&seen, &loop, what] { seen.push_back(what + "@" + std::to_string(loop.monotonicMs())); }; };
    const TimerHandle late = loop.startTimer(2000, note("late"));
    const TimerHandle first = loop.startTimer(1000, note("first"));
    const TimerHandle second = loop.startTimer(1000, note("second"));
    TimerHandle cancelled = loop.startTimer(1000, note("cancelled"));
    TimerHandle nested;
    const TimerHandle outer = loop.startTimer(500,
                                              [&]
                                              {
                                                  cancelled.cancel();
                                                  loop.post(note("posted"));
                                                  nested = loop.startTimer(500, note("nested"));
                                              });
    loop.advanceBy(999);
    EXPECT_EQ(seen, (std::vector<std::string>{"posted@500"}));
    EXPECT_EQ(loop.now(), START);
    loop.advanceTo(START + 2);
    EXPECT_EQ(seen, (std::vector<std::string>{"posted@500", "first@1000", "second@1000", "nested@1000", "late@2000"}));
    loop.advanceTo(START);
    EXPECT_EQ(loop.now(), START + 2);
}

TEST(SimulatedEventLoop, ATimerThatStartsItselfAtOnceLetsTimePass)
{
    Host::SimulatedEventLoop loop(START);
    std::vector<TimerHandle> timers;
    std::function<void()> again = [&] { timers.push_back(loop.startTimer(0, again)); };
    again();
    loop.advanceBy(5);
    EXPECT_EQ(timers.size(), 6U);
}

TEST(SimulatedEventLoop, SurvivesThrowingTasksNestedAdvancesAndHandlesThatOutliveIt)
{
    TimerHandle survivor;
    {
        Host::SimulatedEventLoop loop(START);
        std::string line;
        Host::LogSink::instance().writeTo([&](const std::string& text) { line = text; });
        loop.post([] { throw std::runtime_error("value"); });
        loop.post([&] { loop.advanceBy(3000); });
        const TimerHandle timer = loop.startTimer(1000, [&] { EXPECT_EQ(loop.now(), START + 1); });
        loop.advanceBy(10);
        Host::LogSink::instance().reset();
        EXPECT_NE(line.find("A task failed: 'value'"), std::string::npos) << line;
        EXPECT_EQ(loop.now(), START + 3);
        survivor = loop.startTimer(1, [] { FAIL(); });
    }
    survivor.cancel();
}

TEST(Clock, ShowsTheCurrentLoopsTime)
{
    std::time_t stored = 0;
    {
        Host::SimulatedEventLoop outer(START);
        const EventLoop::Scope outerScope(outer);
        {
            Host::SimulatedEventLoop inner(5);
            const EventLoop::Scope innerScope(inner);
            inner.advanceBy(2500);
            long (*clock)(long*) = &Host::currentTime;
            EXPECT_EQ(clock(&stored), 7);
            EXPECT_EQ(stored, 7);
        }
        EXPECT_EQ(Host::currentTime(nullptr), START);
        std::thread([] { EXPECT_EQ(EventLoop::current(), nullptr); }).join();
    }
    EXPECT_NEAR(static_cast<double>(Host::currentTime(nullptr)), static_cast<double>(std::time(nullptr)), 5);
}

TEST(Timer, RepeatsUnlessSingleShot)
{
    Host::SimulatedEventLoop loop(START);
    const EventLoop::Scope scope(loop);
    DisplayAPI::Command command("refresh");
    int fired = 0;
    DisplayAPI::Timer timer(-1);
    Listener listener(
        [&](DisplayAPI::Command* given, DisplayAPI::Displayable* source)
        {
            EXPECT_EQ(given, &command);
            EXPECT_EQ(source, &timer);
            ++fired;
        });
    timer.addCommand(&command);
    timer.setCommandListener(&listener);
    loop.advanceBy(60'000);
    EXPECT_EQ(fired, 0);
    timer.start(10'000);
    loop.advanceBy(30'000);
    EXPECT_EQ(fired, 3);
    timer.setSingleShot(true);
    loop.advanceBy(30'000);
    EXPECT_EQ(fired, 4);
    timer.start(10'000);
    loop.advanceBy(9'999);
    timer.start(10'000); // starts anew
    loop.advanceBy(9'999);
    EXPECT_EQ(fired, 4);
    timer.stop();
    loop.advanceBy(60'000);
    EXPECT_EQ(fired, 4);
}

TEST(Timer, ListenerMayRestartStopOrDestroyIt)
{
    Host::SimulatedEventLoop loop(START);
    const EventLoop::Scope scope(loop);
    DisplayAPI::Command command("");
    auto timer = std::make_unique<DisplayAPI::Timer>(1000);
    int fired = 0;
    Listener listener(
        [&](DisplayAPI::Command*, DisplayAPI::Displayable*)
        {
            ++fired;
            switch (fired)
            {
            case 1:
                timer->start(5000);
                break;
            case 2:
                timer->stop();
                break;
            default:
                timer.reset();
            }
        });
    timer->addCommand(&command);
    timer->setCommandListener(&listener);
    loop.advanceBy(5999);
    EXPECT_EQ(fired, 1);
    loop.advanceBy(60'000);
    EXPECT_EQ(fired, 2);
    timer->start(1000);
    loop.advanceBy(60'000);
    EXPECT_EQ(fired, 3);
    EXPECT_EQ(timer, nullptr);
}

TEST(Timer, StaysQuietWithoutListenerCommandOrLoop)
{
    Listener listener([](DisplayAPI::Command*, DisplayAPI::Displayable*) { FAIL(); });
    DisplayAPI::Timer idle(-1);
    {
        Host::SimulatedEventLoop loop(START);
        const EventLoop::Scope scope(loop);
        auto command = std::make_unique<DisplayAPI::Command>("gone");
        DisplayAPI::Timer timer(1000);
        timer.setCommandListener(&listener);
        loop.advanceBy(1000); // no command yet
        timer.addCommand(command.get());
        EXPECT_TRUE(DisplayAPI::Command::exists(command.get()));
        const DisplayAPI::Command* const pointer = command.get();
        command.reset();
        EXPECT_FALSE(DisplayAPI::Command::exists(pointer));
        EXPECT_FALSE(DisplayAPI::Command::exists(nullptr));
        loop.advanceBy(1000);
        DisplayAPI::Command live("live");
        timer.addCommand(&live);
        timer.setCommandListener(nullptr);
        loop.advanceBy(1000);
        idle.start(1000); // the loop goes first
    }
    std::string line;
    Host::LogSink::instance().writeTo([&](const std::string& text) { line = text; });
    idle.start(10);
    Host::LogSink::instance().reset();
    EXPECT_NE(line.find("this thread has no event loop"), std::string::npos) << line;
}

TEST(RealTimeEventLoop, RunsPostsOfOtherThreadsAndTimersUntilStopped)
{
    Host::RealTimeEventLoop loop;
    const EventLoop::Scope scope(loop);
    const std::thread::id uiThread = std::this_thread::get_id();
    std::vector<std::string> seen;
    const TimerHandle last = loop.startTimer(40,
                                             [&]
                                             {
                                                 seen.emplace_back("last");
                                                 loop.stop();
                                             });
    TimerHandle cancelled = loop.startTimer(10, [&] { seen.emplace_back("cancelled"); });
    const TimerHandle earlier = loop.startTimer(20, [&] { seen.emplace_back("earlier"); });
    std::thread poster(
        [&]
        {
            loop.post(
                [&]
                {
                    EXPECT_EQ(std::this_thread::get_id(), uiThread);
                    cancelled.cancel();
                    seen.emplace_back("posted");
                });
        });
    poster.join();
    loop.run();
    EXPECT_EQ(seen, (std::vector<std::string>{"posted", "earlier", "last"}));
    loop.post([&] { loop.post([&] { seen.emplace_back("idle"); }); });
    loop.runUntilIdle();
    EXPECT_EQ(seen.back(), "idle");
}
} // namespace
