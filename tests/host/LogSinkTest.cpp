#include "host/LogSink.h"
#include "platform/Logging.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <stdexcept>
#include <unistd.h>

namespace
{
using Host::LogSink;

std::string withoutPseudonyms(std::string text)
{
    for (const std::string kind : {"num-", "name-", "id-"})
    {
        for (auto at = text.find(kind); at != std::string::npos; at = text.find(kind))
        {
            EXPECT_EQ(text.find_first_not_of("0123456789abcdef", at + kind.size()), at + kind.size() + 8) << text;
            text.erase(at, kind.size() + 8);
        }
    }
    return text;
}

class LogSinkTest : public testing::Test
{
  protected:
    void SetUp() override
    {
        sink().setPseudonymKey("test");
        sink().writeTo([this](const std::string& line) { lines_.push_back(line); });
    }

    void TearDown() override { sink().reset(); }

    static LogSink& sink() { return LogSink::instance(); }

    /** What stands behind "file:line ". */
    std::string lastText() const
    {
        const std::string mark = "./src/X:7 ";
        return lines_.empty() ? "" : lines_.back().substr(lines_.back().find(mark) + mark.size());
    }

    template <typename... Arguments>
    std::string logged(const char* format, Arguments... arguments)
    {
        lines_.clear();
        logAppOrv("ConversationAPI", "./src/X", 2, 7, format, arguments...);
        return lastText();
    }

    std::vector<std::string> lines_;
};

// Formats reach the sink unchecked here on purpose: some are hostile.
#pragma GCC diagnostic ignored "-Wformat"
#pragma GCC diagnostic ignored "-Wformat-overflow"
#pragma GCC diagnostic ignored "-Wformat-security"

TEST_F(LogSinkTest, FiltersByLevelAndModule)
{
    const auto wanted = [](const char* module) // the highest level that is written
    {
        int level = 0;
        while (level < 9 && loggingOnAppOrv(module, level + 1))
        {
            ++level;
        }
        return level;
    };
    EXPECT_EQ(wanted("ConversationAPI"), 2);
    sink().setModuleLevel("ConversationAPI", 5);
    sink().setModuleLevel("Quiet", 0);
    EXPECT_EQ(wanted("ConversationAPI"), 5);
    EXPECT_EQ(wanted("Quiet"), 0);
    EXPECT_EQ(wanted("Host"), 2);
    EXPECT_EQ(wanted(nullptr), 2);
    logAppOrv("ConversationAPI", "./src/X", 6, 7, "not asked for");
    EXPECT_TRUE(lines_.empty());
    logAppOrv("ConversationAPI", "./src/X", 5, 7, "told %d\n", 3);
    ASSERT_EQ(lines_.size(), 1U);
    EXPECT_EQ(lines_[0].substr(lines_[0].find('Z')), "Z 5 ConversationAPI ./src/X:7 told 3");
}

TEST_F(LogSinkTest, NothingPersonalIsLeft)
{
    for (const char* text :
         {"Mueller", "J\xC3\xB6rg", "O'Brien", "Anna-Lena von Berg", "bob.smith@example.org", "+49 30 1234567",
          "(030) 12/34-567", "12 34 56 78", "last: Mueller comp:+49301234567 w1:4711 w2: m:", "sip:0301234567@pbx;x=y",
          "<Surname>Mueller</Surname><Office>4711</Office>", "li", "LI", "MUELLER", "bob123", "1234567",
          "conf_0301234567_Mueller", "/tmp/DirSvc_Mueller.png", "2026-03-05T09:07:00123456"})
    {
        const std::string hidden = logged("%s|", text);
        const std::string bare = withoutPseudonyms(hidden);
        for (const char* secret : {"ueller", "UELLER", "rg", "Brien", "Anna", "Berg", "von", "bob", "smith", "example",
                                   "1234567", "567", "4711", "12 34", "li", "LI", "123456"})
        {
            const bool present = std::string(text).find(secret) != std::string::npos;
            EXPECT_FALSE(present && bare.find(secret) != std::string::npos) << text << " became " << hidden;
        }
        EXPECT_NE(bare, hidden);
    }
}

TEST_F(LogSinkTest, KeepsWhatTheProgramSays)
{
    for (const char* text : {"", "[clone]", "LOCAL_ON_HOLD", "UNKOWN", "Caller.Unknown.XXX", "tempId",
                             "no participants", "2026-03-05T09:07:00+01:00", "2026-03-05T09:07:00Z", "*21#", "12"})
    {
        EXPECT_EQ(logged("'%s'", text), "'" + std::string(text) + "'");
    }
    EXPECT_EQ(logged("<%s", "<Surname></Surname><DefaultNumber>2</DefaultNumber>"),
              "<<Surname></Surname><DefaultNumber>2</DefaultNumber>");
}

TEST_F(LogSinkTest, PseudonymsAreStable)
{
    const std::string berg = logged("%s", "Berg");
    EXPECT_EQ(logged("%s", "Berg"), berg);
    EXPECT_EQ(logged("%s %s", "Anna", "Berg"), logged("%s", "Anna Berg"));
    EXPECT_NE(logged("%s", "Bergs"), berg);
    EXPECT_EQ(logged("%s", "+49 30 1234567"), logged("%s", "+49301234567"));
    EXPECT_NE(logged("%s", "+49301234567"), logged("%s", "+49301234568"));
    const std::string longId = "0aB3dE6gH9jK2mN5pQ8sT1vW4yZ7bC0zAb12";
    EXPECT_EQ(logged("%s", longId.c_str()), logged("%s", longId.substr(29).c_str()));
    sink().setPseudonymKey("other");
    EXPECT_NE(logged("%s", "Berg"), berg);
    sink().setPseudonymKey("test");
    EXPECT_EQ(logged("%s", "Berg"), berg);
    sink().setPlainText(true);
    EXPECT_EQ(logged("%s: %s", "Berg", "030 1234567"), "Berg: 030 1234567");
}

TEST_F(LogSinkTest, FormatsLikePrintf)
{
    int untouched = 42;
    const std::string formats[][2] = {
        {logged("%5d|%-5d|%05d|%+d|%x|%#X|%u", 7, 7, 7, 7, 255, 255, 4294967295U),
         "    7|7    |00007|+7|ff|0XFF|4294967295"},
        {logged("%ld %lld %zu %hhd %jd %td", -9000000000L, 9000000000LL, std::size_t{5}, 300, std::intmax_t{6},
                std::ptrdiff_t{-1}),
         "-9000000000 9000000000 5 44 6 -1"},
        {logged("%*d|%-*d|%.*f", 4, 1, 4, 1, 2, 1.005), "   1|1   |1.00"},
        {logged("%p 100%% %c %Lf", static_cast<void*>(nullptr), 'x', 1.5L), "(nil) 100% x 1.500000"},
        {logged("%4s|%-4s|%.2s|", "12", "12", "123"), "  12|12  |12|"},
        {logged("%s %ls %d", static_cast<const char*>(nullptr), L"Berg", 5), "(null) (wide) 5"},
        {logged("a%nb %d", &untouched, 9), "ab 9"},
        {logged("%d %y %s", 1, 2, "Berg"), "1 %y %s"},
        {logged("%1$s", "Berg"), "%1$s"},
        {logged("tail %"), "tail %"},
        {logged("%-*s|", -2000000000, "12").substr(0, 4), "12  "}};
    for (const auto& [text, expected] : formats)
    {
        EXPECT_EQ(text, expected);
    }
    EXPECT_EQ(untouched, 42);
    EXPECT_LT(logged("%999999999d %.999999999f", 1, 1.0).size(), 2000U);
    const char unterminated[2] = {'1', '2'};
    EXPECT_EQ(logged("%.2s", unterminated), "12");
    errno = ENOENT;
    EXPECT_EQ(logged("%m"), "No such file or directory");
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(LogSinkTest, OneMessageIsOneLine)
{
    sink().setPlainText(true);
    EXPECT_EQ(logged("%s", "a\n2026 forged\x1b[2J\x7f"), "a\\x0a2026 forged\\x1b[2J\\x7f");
    const std::string huge(1'000'000, 'x');
    EXPECT_EQ(logged("%s", huge.c_str()), huge.substr(0, 16384) + "...(983616 bytes more)");
    sink().setPlainText(false);
    EXPECT_LT(logged("%s|", huge.c_str()).size(), 100U);
}

TEST_F(LogSinkTest, WritersMayLogThrowAndReplaceThemselves)
{
    int calls = 0;
    sink().writeTo(
        [&](const std::string&)
        {
            ++calls;
            logAppOrv("Host", "./src/X", 2, 7, "nested");
            sink().writeTo(nullptr);
            throw std::runtime_error("full");
        });
    logged("one");
    logged("two");
    EXPECT_EQ(calls, 1);
}

TEST_F(LogSinkTest, AppendsToFiles)
{
    const std::string path = testing::TempDir() + "host_log_" + std::to_string(getpid());
    EXPECT_FALSE(sink().writeToFile("/nowhere/at/all"));
    logged("still here");
    EXPECT_EQ(lines_.size(), 1U);
    ASSERT_TRUE(sink().writeToFile(path));
    logged("one %d", 1);
    sink().writeTo(nullptr);
    ASSERT_TRUE(sink().writeToFile(path));
    logged("two %d", 2);
    std::ifstream file(path);
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const auto second = text.find("one 1\n") + 6;
    EXPECT_EQ(text.find("Z 2 ConversationAPI ./src/X:7 one 1\n"), text.find('Z')) << text;
    EXPECT_EQ(text.substr(text.find('Z', second)), "Z 2 ConversationAPI ./src/X:7 two 2\n") << text;
    std::filesystem::remove(path);
}
} // namespace
