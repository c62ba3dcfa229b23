#include "host/Translator.h"
#include "host/LogSink.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

namespace
{
const std::string PREFIX = "Conv.List.TimeSt.";

std::string text(Host::Translator& translator, const std::string& key, const std::vector<std::string>& arguments = {})
{
    return translator.translate(TranslationInfo(PREFIX + key, arguments));
}

TEST(Translator, EveryKeyIsTranslatedInBothLanguages)
{
    Host::Translator english("en");
    Host::Translator german("de_DE.UTF-8");
    EXPECT_EQ(german.language(), "de");
    const std::vector<std::vector<std::string>> keys{{"Now", "Now", "Jetzt"},     {"Yesterday", "Yesterday", "Gestern"},
                                                     {"Mon", "Mon", "Mo"},        {"Tue", "Tue", "Di"},
                                                     {"Wed", "Wed", "Mi"},        {"Thu", "Thu", "Do"},
                                                     {"Fri", "Fri", "Fr"},        {"Sat", "Sat", "Sa"},
                                                     {"Sun", "Sun", "So"},        {"month.Jan", "Jan", "Jan"},
                                                     {"month.Feb", "Feb", "Feb"}, {"month.Mar", "Mar", "M\xC3\xA4r"},
                                                     {"month.Apr", "Apr", "Apr"}, {"month.May", "May", "Mai"},
                                                     {"month.Jun", "Jun", "Jun"}, {"month.Jul", "Jul", "Jul"},
                                                     {"month.Aug", "Aug", "Aug"}, {"month.Sep", "Sep", "Sep"},
                                                     {"month.Oct", "Oct", "Okt"}, {"month.Nov", "Nov", "Nov"},
                                                     {"month.Dec", "Dec", "Dez"}};
    for (const auto& key : keys)
    {
        EXPECT_EQ(text(english, key[0]), key[1]);
        EXPECT_EQ(text(german, key[0]), key[2]);
    }
    EXPECT_EQ(text(english, "mins", {"5 "}), "5 mins");
    EXPECT_EQ(text(english, "min", {"1 "}), "1 min");
    EXPECT_EQ(text(german, "mins", {"5 "}), "vor 5 Min.");
    EXPECT_EQ(text(german, "min", {"1 "}), "vor 1 Min.");
}

TEST(Translator, MissingKeysStayReadable)
{
    Host::Translator german("de");
    EXPECT_EQ(text(german, "hours", {"5 ", "!"}), "5 !hours");
    EXPECT_EQ(german.translate(TranslationInfo("Other.Key")), "Other.Key");
    EXPECT_EQ(german.translate(TranslationInfo("")), "");
    EXPECT_EQ(text(german, "mins"), "vor Min.");
    EXPECT_EQ(text(german, "mins", {"{1}{2}"}), "vor {1}{2}Min.");
}

TEST(Translator, DamagedCataloguesDoNoHarm)
{
    namespace fs = std::filesystem;
    const fs::path folder = fs::path(testing::TempDir()) / ("host_damaged_" + std::to_string(getpid()));
    fs::copy(Host::Translator::defaultDirectory(), folder, fs::copy_options::recursive);
    const fs::path catalogue = folder / "de" / "LC_MESSAGES" / "conversation.mo";
    std::ifstream file(catalogue, std::ios::binary);
    const std::string good((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    Host::LogSink::instance().writeTo(nullptr);
    for (std::size_t at = 0; at < good.size(); ++at)
    {
        std::string bad = good;
        bad[at] = static_cast<char>(bad[at] ^ 0x7F);
        std::ofstream(catalogue, std::ios::binary) << (at % 2 == 0 ? bad : good.substr(0, at));
        Host::Translator translator("de", folder.string());
        EXPECT_NE(text(translator, "mins", {"5 "}), "") << at;
        EXPECT_EQ(text(translator, "hours"), "hours") << at;
    }
    Host::LogSink::instance().reset();
    fs::remove_all(folder);
}

TEST(Translator, UnknownLanguagesAndBrokenCataloguesFallBack)
{
    namespace fs = std::filesystem;
    const fs::path folder = fs::path(testing::TempDir()) / ("host_catalogues_" + std::to_string(getpid()));
    fs::create_directories(folder / "de" / "LC_MESSAGES");
    fs::copy(fs::path(Host::Translator::defaultDirectory()) / "en", folder / "en", fs::copy_options::recursive);
    std::ofstream(folder / "de" / "LC_MESSAGES" / "conversation.mo") << "this is no catalogue at all";
    int lines = 0;
    Host::LogSink::instance().setLevel(3);
    Host::LogSink::instance().writeTo([&](const std::string&) { ++lines; });
    for (const char* language : {"de", "tlh", "", "../de", "C"})
    {
        Host::Translator translator(language, folder.string());
        EXPECT_EQ(translator.language(), "en") << language;
        EXPECT_EQ(text(translator, "Sun"), "Sun");
    }
    EXPECT_EQ(lines, 6);
    Host::Translator none("de", "/nowhere");
    Host::LogSink::instance().reset();
    EXPECT_EQ(none.language(), "");
    EXPECT_EQ(text(none, "mins", {"5 "}), "5 mins");
    fs::remove_all(folder);
}
} // namespace
