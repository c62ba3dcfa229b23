#include "support/Phone.h"

#include <cstdlib>
#include <ctime>

namespace
{
using ConversationAPI::ConversationItem;
using Testing::LogCapture;

long instant(const std::string& text)
{
    return ConversationItem::extractUTCTimeTFromJournalServiceISO8601String(text);
}

class Iso8601Test : public testing::Test
{
  protected:
    ~Iso8601Test() override { setZone(nullptr); }

    static void setZone(const char* zone)
    {
        zone ? setenv("TZ", zone, 1) : unsetenv("TZ");
        tzset();
    }
};

TEST_F(Iso8601Test, TheInstantIsTheTextsWhereverTheTelephoneStands)
{
    const std::vector<std::pair<const char*, long>> texts = {
        {"1970-01-01T00:00:00", 0},
        {"1969-12-31T23:59:59", -1},
        {"2000-02-29T12:00:00", 951825600},
        {"2024-03-05T08:07:00Z", 1709626020},
        {"2024-03-05T08:07:00+00:00", 1709626020},
        {"2024-03-05T09:07:00+01:00", 1709626020},
        {"2024-03-05T02:37:00-05:30", 1709626020},
        {"2024-01-01T00:30:00+01:00", 1704065400}, // still last year in UTC
        {"2024-10-27T02:30:00+02:00", 1729989000}, // the repeated hour, first time
        {"2024-10-27T02:30:00+01:00", 1729992600}, // and second
        {"2024-03-31T02:30:00", 1711852200},       // skipped in Berlin, not in UTC
        {"2024-03-05T08:07:00.250", 1709626020},
        {"2024-03-05T08:07:00+01", 1709626020}, // too short for an offset
        {"2024-03-05T08:07:00+0100", 1709626020},
        {"2024-03-05T08:07:00 +01:00", 1709626020}, // an offset stands right behind the seconds
        {"2038-01-19T03:14:08", 2147483648L},
        {"2106-02-07T06:28:16Z", 4294967296L},
        {"1900-01-01T00:00:00", -2208988800L}};
    const LogCapture log(6);
    for (const char* zone : {"", "Europe/Berlin", "America/New_York", "Asia/Kathmandu", "Australia/Lord_Howe"})
    {
        setZone(zone);
        for (const auto& [text, expected] : texts)
        {
            EXPECT_EQ(instant(text), expected) << text << " in " << zone;
        }
    }
    EXPECT_EQ(instant(""), 0);
    EXPECT_EQ(log.count("Boost"), 0U);
}

TEST_F(Iso8601Test, EveryHourOfTheDaysOnWhichClocksChange)
{
    for (const char* zone : {"Europe/Berlin", "America/New_York", "Australia/Lord_Howe"})
    {
        setZone(zone);
        for (long day = 1704067200; day < 1704067200 + 366 * 86400L; day += 86400)
        {
            for (const long time : {day + 1800, day + 3600 * 2 + 1, day + 3600 * 16 - 1})
            {
                const std::time_t utc = time;
                char text[sizeof "2024-01-01T00:00:00Z"];
                std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", std::gmtime(&utc));
                ASSERT_EQ(instant(text), time) << text << " in " << zone;
            }
        }
    }
}

TEST_F(Iso8601Test, MalformedTextsAreReportedOnce)
{
    for (const char* text :
         {"x", "2024-03-05", "2024-03-05T08:07:0", "2024-13-05T08:07:00", "2024-02-30T08:07:00", "2024-03-32T08:07:00",
          "2024-12-71T08:07:00", "2023-02-29T08:07:00", "2024-00-10T08:07:00", "2024-03-05T24:07:00",
          "2024-03-05T08:60:00", "2024-03-05 08:07:00", "2024/03/05T08:07:00", "20x4-03-05T08:07:00",
          "2024-03-05T0-:07:00", "-024-03-05T08:07:00", "2024-03-05T08:07:00+aa:00", "0000-00-00T00:00:00"})
    {
        const LogCapture log(2);
        EXPECT_EQ(instant(text), 0) << text;
        EXPECT_EQ(log.count("2 ConversationAPI ./src/ConversationItem:"), 1U) << text;
        EXPECT_EQ(log.count("Boost exception thrown '"), 1U) << text;
    }
}

TEST_F(Iso8601Test, ItemsShowLocalTime)
{
    const Testing::ItemInState item(0, 1709626020);
    setZone("Europe/Berlin");
    EXPECT_EQ(item.formatLocalTime(), "09:07 05/03");
    setZone("Pacific/Kiritimati");
    EXPECT_EQ(item.formatLocalTime(), "22:07 05/03");
}
} // namespace
