#include "platform/ClientUtils.h"

#include <gtest/gtest.h>

namespace
{
TEST(ClientUtils, StoiTakesWholeNumbersOnly)
{
    const std::vector<std::pair<std::string, int>> cases{{"42", 42},
                                                         {"-7", -7},
                                                         {"+7", 7},
                                                         {" 12 ", 12},
                                                         {"2147483647", 2147483647},
                                                         {"", 0},
                                                         {" ", 0},
                                                         {"+", 0},
                                                         {"+-5", 0},
                                                         {"2147483648", 0},
                                                         {"five", 0},
                                                         {"5 mins", 0},
                                                         {"0x1F", 0},
                                                         {"1.5", 0},
                                                         {std::string("1\0", 2), 0},
                                                         {"-2147483648", -2147483647 - 1}};
    for (const auto& [text, number] : cases)
    {
        EXPECT_EQ(ClientUtils::stoi(text), number) << text;
    }
}

TEST(ClientUtils, ExtractMatchesWholeTags)
{
    const std::string xml =
        "<Entry><Address2>yard</Address2><Address>road &amp; rail</Address><Role></Role><Open>x</Entry>";
    EXPECT_EQ(ClientUtils::extractValueFromXMLString(xml, "Address"), "road &amp; rail");
    EXPECT_EQ(ClientUtils::extractValueFromXMLString(xml, "Address2"), "yard");
    EXPECT_EQ(ClientUtils::extractValueFromXMLString(xml, "Role"), "");
    EXPECT_EQ(ClientUtils::extractValueFromXMLString(xml, "Addr"), "");
    EXPECT_EQ(ClientUtils::extractValueFromXMLString(xml, "Open"), "");
}

TEST(ClientUtils, UnescapeDecodesEntitiesOnce)
{
    const std::vector<std::pair<std::string, std::string>> cases{
        {"&lt;a&gt; &amp; &quot;b&quot; &apos;c&apos;", "<a> & \"b\" 'c'"},
        {"&amp;lt;", "&lt;"},
        {"J&#246;rg &#xF6; &#x20AC; &#x1F600;", "J\xC3\xB6rg \xC3\xB6 \xE2\x82\xAC \xF0\x9F\x98\x80"},
        {"&#0; &#xD800; &#x110000; &#; &#x; &#-5; &nbsp; & &amp",
         "&#0; &#xD800; &#x110000; &#; &#x; &#-5; &nbsp; & &amp"}};
    for (const auto& [escaped, plain] : cases)
    {
        EXPECT_EQ(ClientUtils::unescapeXMLString(escaped), plain);
    }
    const std::string awkward = "\"O'Neil\" <a&b> &amp; &#65;";
    EXPECT_EQ(ClientUtils::unescapeXMLString(ClientUtils::escapeXMLString(awkward)), awkward);
}

TEST(ClientUtils, SplitsTexts)
{
    EXPECT_EQ(ClientUtils::tokenizeString(",a,,b,", ','), (std::vector<std::string>{"", "a", "", "b", ""}));
    std::string full = "/tmp/pictures/a.png";
    std::string name;
    ClientUtils::spiltFilenameAndPath(full, full, name);
    EXPECT_EQ(full, "/tmp/pictures/");
    EXPECT_EQ(name, "a.png");
    ClientUtils::spiltFilenameAndPath("a.png", full, name);
    EXPECT_EQ(full, "");
    EXPECT_EQ(name, "a.png");
}
} // namespace
