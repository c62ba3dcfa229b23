#include "ConversationAPI/DurationStringFormatter.h"
#include "ConversationAPI/RelativeTimeStringFormatterFactory.h"
#include "host/Clock.h"
#include "host/SimulatedEventLoop.h"
#include "platform/TranslatorIfc.h"

#include <cstdlib>
#include <ctime>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <memory>

namespace
{
using namespace ConversationAPI;

/** "2026-03-29 01:59:00 +0100" as seconds since the epoch; the offset tells the repeated hour of autumn apart. */
long at(const std::string& text)
{
    std::tm local{};
    EXPECT_NE(strptime(text.c_str(), "%Y-%m-%d %H:%M:%S %z", &local), nullptr) << text;
    const long offset = local.tm_gmtoff;
    return timegm(&local) - offset;
}

/** Shows what it was asked for. */
class EchoTranslator : public TranslatorIfc
{
  public:
    std::string translate(const TranslationInfo& info) override
    {
        return "<" + info.key() + (info.arguments().empty() ? "" : "|" + info.arguments().front()) + ">";
    }
};

/** Runs in Central European time and with the settings that a program starts with. */
class RelativeTimeTest : public testing::Test
{
  protected:
    RelativeTimeTest()
    {
        setenv("TZ", "Europe/Berlin", 1);
        tzset();
    }

    ~RelativeTimeTest() override
    {
        unsetenv("TZ");
        tzset();
        RelativeTimeStringFormatter::setTimeFormat("24HR");
        RelativeTimeStringFormatter::setDateFormat("DD.MM.YYYY");
    }

    std::string told(const char* now, const char* then) { return formatter_.formatForNowAndThen(at(now), at(then)); }

    RelativeTimeStringFormatter formatter_;
};

struct Case
{
    const char* now;
    const char* then;
    const char* text;
};

TEST_F(RelativeTimeTest, TellsTheTimeRelativeToNow)
{
    const Case cases[] = {
        {"2026-03-05 12:00:00 +0100", "2026-03-05 11:59:01 +0100", "Now"},
        {"2026-03-05 12:00:00 +0100", "2026-03-05 11:59:00 +0100", "1 min"},
        {"2026-03-05 12:00:00 +0100", "2026-03-05 11:49:01 +0100", "10 mins"},
        {"2026-03-05 12:00:00 +0100", "2026-03-05 11:49:00 +0100", "11:49"},
        // Around midnight the minutes come before the days.
        {"2026-03-05 00:01:00 +0100", "2026-03-04 23:59:00 +0100", "2 mins"},
        {"2026-03-05 00:11:00 +0100", "2026-03-04 23:59:59 +0100", "Yesterday"},
        {"2026-03-05 00:01:00 +0100", "2026-03-03 23:59:00 +0100", "Tue"},
        {"2026-03-05 00:01:00 +0100", "2026-02-27 00:00:00 +0100", "Fri"},
        {"2026-03-05 23:59:00 +0100", "2026-02-26 23:59:00 +0100", "26 Feb"},
        {"2026-12-31 23:59:00 +0100", "2026-01-01 00:00:00 +0100", " 1 Jan"},
        // Over New Year.
        {"2026-01-01 00:30:00 +0100", "2025-12-31 23:30:00 +0100", "Yesterday"},
        {"2026-01-01 00:30:00 +0100", "2025-12-26 12:00:00 +0100", "Fri"},
        {"2026-01-01 00:30:00 +0100", "2025-12-25 12:00:00 +0100", "25 Dec 2025"},
        // A day of 23 hours is one day, and so is one of 25.
        {"2026-03-30 00:15:00 +0200", "2026-03-29 00:30:00 +0100", "Yesterday"},
        {"2026-03-30 00:15:00 +0200", "2026-03-28 23:50:00 +0100", "Sat"},
        {"2026-03-29 03:05:00 +0200", "2026-03-29 01:55:00 +0100", "10 mins"},
        {"2026-10-25 23:50:00 +0100", "2026-10-25 00:05:00 +0200", "0:05"},
        {"2026-10-26 00:05:00 +0100", "2026-10-25 00:00:00 +0200", "Yesterday"},
        {"2026-10-25 02:05:00 +0100", "2026-10-25 02:58:00 +0200", "7 mins"},
        // In the future.
        {"2026-03-05 12:00:00 +0100", "2026-03-05 12:00:01 +0100", "12:00"},
        {"2026-03-05 23:59:00 +0100", "2026-03-06 00:00:00 +0100", " 6 Mar"},
        {"2026-03-05 12:00:00 +0100", "2027-02-14 12:00:00 +0100", "14 Feb"},
    };
    for (const Case& c : cases)
    {
        EXPECT_EQ(told(c.now, c.then), c.text) << c.then << " at " << c.now;
    }
    setenv("TZ", "UTC", 1);
    tzset();
    EXPECT_EQ(told("2026-03-05 00:30:00 +0100", "2026-03-05 00:00:00 +0100"), "23:00") << "dates are the zone's";
}

TEST_F(RelativeTimeTest, TwelveHourClockKeepsHourZero)
{
    const Case cases[] = {
        {"12HR", "2026-03-05 00:30:00 +0100", "0:30 AM"},  {"12HR", "2026-03-05 11:59:00 +0100", "11:59 AM"},
        {"12HR", "2026-03-05 12:30:00 +0100", "12:30 PM"}, {"12HR", "2026-03-05 13:05:00 +0100", "1:05 PM"},
        {"24HR", "2026-03-05 00:05:00 +0100", "0:05"},     {"", "2026-03-05 23:00:00 +0100", "23:00"}};
    for (const Case& c : cases)
    {
        RelativeTimeStringFormatter::setTimeFormat(c.now);
        EXPECT_EQ(formatter_.formatLocalTimeOnly(at(c.then)), c.text) << c.now;
    }
}

TEST_F(RelativeTimeTest, DateLayoutFollowsTheSettingOfAllFormatters)
{
    const char* now = "2026-03-05 12:00:00 +0100";
    EXPECT_EQ(formatter_.formatForFullDate(at("2025-12-05 09:07:00 +0100")), "05.12.25 9:07");
    RelativeTimeStringFormatter::setDateFormat("MM/DD/YYYY");
    EXPECT_EQ(told(now, "2026-02-03 12:00:00 +0100"), "Feb  3");
    EXPECT_EQ(told(now, "2025-12-25 12:00:00 +0100"), "Dec 25, 2025");
    RelativeTimeStringFormatter::setTimeFormat("12HR");
    EXPECT_EQ(formatter_.formatForFullDate(at("2025-12-05 21:07:00 +0100")), "12/05/25 9:07 PM");
}

TEST_F(RelativeTimeTest, AsksTheTranslatorForKeysAndArguments)
{
    EchoTranslator translator;
    formatter_.setTranslator(&translator);
    const char* now = "2026-03-05 12:00:00 +0100";
    const Case cases[] = {{now, "2026-03-05 11:59:30 +0100", "<Conv.List.TimeSt.Now>"},
                          {now, "2026-03-05 11:58:30 +0100", "<Conv.List.TimeSt.min|1 >"},
                          {now, "2026-03-05 11:50:00 +0100", "<Conv.List.TimeSt.mins|10 >"},
                          {now, "2026-03-04 09:07:00 +0100", "<Conv.List.TimeSt.Yesterday>"},
                          {now, "2026-03-02 09:07:00 +0100", "<Conv.List.TimeSt.Mon>"},
                          {now, "2026-02-26 09:07:00 +0100", "26 <Conv.List.TimeSt.month.Feb>"},
                          {now, "2025-10-26 09:07:00 +0100", "26 <Conv.List.TimeSt.month.Oct> 2025"}};
    for (const Case& c : cases)
    {
        EXPECT_EQ(told(c.now, c.then), c.text);
    }
    formatter_.setTranslator(nullptr);
    EXPECT_EQ(told(now, now), "Now");
}

TEST_F(RelativeTimeTest, TimesBeyond32BitsDoNotWrapAround)
{
    EXPECT_EQ(formatter_.formatForNowAndThen(0, 1L << 32), "19 Jan");
    EXPECT_EQ(formatter_.formatForNowAndThen(std::numeric_limits<long>::max(), 0), " 1 Jan 1970");
    EXPECT_EQ(formatter_.formatForNowAndThen(0, std::numeric_limits<long>::min()), "13 Dec 1901");
    EXPECT_EQ(formatter_.formatForFullDate(1L << 40), "19.01.38 4:14");
}

struct Screen : DisplayAPI::TimeStringFormatterObserver
{
    void timeStringsChanged() override
    {
        ++redraws;
        redraw();
    }

    std::function<void()> redraw = [] {};
    int redraws = 0;
};

TEST_F(RelativeTimeTest, SubscribersRedrawEveryTenSecondsUntilTheFormatterEnds)
{
    const long start = at("2026-03-05 12:00:00 +0100");
    Host::SimulatedEventLoop loop(start);
    const Host::EventLoop::Scope scope(loop);
    RelativeTimeStringFormatterFactory factory(&Host::currentTime);
    std::unique_ptr<RelativeTimeFormatter> formatter(factory.create());
    std::string shown;
    Screen screens[2]; // in the order in which they are told
    Screen& screen = screens[0];
    Screen& late = screens[1];
    screen.redraw = [&]
    {
        shown = formatter->formatFromUTC(start);
        formatter->subscribe(&late);
    };
    formatter->subscribe(&screen);
    formatter->subscribe(&screen);
    formatter->subscribe(nullptr);

    DisplayAPI::Command other("");
    formatter->commandAction(&other, nullptr);
    formatter->commandAction(nullptr, nullptr);
    loop.advanceBy(9'999);
    EXPECT_EQ(screen.redraws, 0);
    loop.advanceBy(50'000);
    EXPECT_EQ(screen.redraws, 5);
    EXPECT_EQ(late.redraws, 4);
    EXPECT_EQ(shown, "Now");
    loop.advanceBy(1);
    EXPECT_EQ(screen.redraws, 6);
    EXPECT_EQ(shown, "1 min");

    formatter.reset();
    loop.advanceBy(60'000);
    EXPECT_EQ(screen.redraws, 6);
}

TEST(DurationStringFormatterTest, ShowsHoursOnlyWhenThereAreAny)
{
    const std::map<long, const char*> cases = {{-5000, ""},
                                               {999, ""},
                                               {1000, "(00:01)"},
                                               {65'999, "(01:05)"},
                                               {3'599'000, "(59:59)"},
                                               {3'600'000, "(1:00:00)"},
                                               {3'725'000, "(1:02:05)"},
                                               {359'999'999, "(99:59:59)"},
                                               {360'000'000, ""}};
    for (const auto& [milliseconds, text] : cases)
    {
        EXPECT_EQ(DurationStringFormatter::createDurationStr(milliseconds), text) << milliseconds;
    }
}
} // namespace
