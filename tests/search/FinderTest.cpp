#include "ConversationAPI/ConversationFinder.h"
#include "aggregation/CombinedFixture.h"

#include <random>

namespace
{
using namespace Aggregation;

struct Finding : testing::Test
{
    /** First names of what is found, in order. */
    std::string found(const std::string& text)
    {
        std::string names;
        for (const std::string& id : finder.getMatchingConversationIds(text))
        {
            names += (names.empty() ? "" : ", ") + world.combined.getConversationByConversationID(id)->getFirstName();
        }
        return names;
    }

    Combined world;
    ConversationFinder finder{world.combined};
};

/** The parts of the text in brackets. */
std::string marked(std::string text, const std::vector<TextRange>& ranges)
{
    for (auto range = ranges.rbegin(); range != ranges.rend(); ++range)
    {
        text.insert(range->end, "]").insert(range->begin, "[");
    }
    return text;
}

TEST_F(Finding, WhatPeopleExpectInTheOrderTheyExpect)
{
    const struct
    {
        const char *name, *work, *mobile;
    } people[] = {{"Ann Lee", "+49301234567", "4711"},       {"Hannah Berg", "030 765-43 21", ""},
                  {"Łukasz Müller", "+48221234567", ""},     {"Anna-Lena O'Brien", "0049891234", ""},
                  {"Иван Straße", "+12125550100", "*21#"},   {"Leeann", "+390612345", ""},
                  {"José Goldberg", "ann@example.org", ""},  {"Room 42", "4242", ""},
                  {"\xff\xfe broken", "+442071838750", "7"}, {"A\xcc\x8angstro\xcc\x88m", "666", ""}};
    for (const auto& one : people)
    {
        world.contactIs(one.name, one.work, one.mobile);
    }
    const std::string all = found("");
    const auto check = [this](const Texts& cases)
    {
        for (const std::string& one : cases)
        {
            const std::string text = one.substr(0, one.find(" = "));
            EXPECT_EQ(text + " = " + found(text), one);
        }
    };
    check({"ANN = Anna-Lena O'Brien, Ann Lee, José Goldberg, Leeann, Hannah Berg", "ann lee = Ann Lee, Leeann",
           "lee ann = Ann Lee, Leeann", "  lee,  a = Ann Lee, Leeann", "anna-l = Anna-Lena O'Brien",
           "obrien = Anna-Lena O'Brien", "o’b = Anna-Lena O'Brien", "berg = Hannah Berg, José Goldberg",
           "lukasz muller = Łukasz Müller", "MÜLL = Łukasz Müller", "strasse = Иван Straße", "ИВАН = Иван Straße",
           "jose = José Goldberg", "angstrom = A\xcc\x8angstro\xcc\x88m", "brok = \xff\xfe broken",
           "example = José Goldberg", "zzz = "});
    check({"0301 = Ann Lee", "+49 (0)30 1 = Ann Lee", "0049 30/12 = Ann Lee", "0030 12 = Ann Lee", "49301 = Ann Lee",
           "+49307 = Hannah Berg", "0307654321 = Hannah Berg", "089 12 = Anna-Lena O'Brien",
           "+4989 = Anna-Lena O'Brien", "06 12 = Leeann", "(212) 555 = Иван Straße", "*21 = Иван Straße",
           "34567 = Łukasz Müller, Ann Lee", "+34567 = ", "ann 4711 = Ann Lee", "ann 4712 = ", "12:30 = "});
    check({"42 = Room 42, Hannah Berg, \xff\xfe broken", "4242 = Room 42", "266 533 = Ann Lee", "2660533 = Ann Lee",
           "766642 = ", "7666 42 = Room 42", "685537 = Łukasz Müller", "4826 = Иван Straße",
           "666 = A\xcc\x8angstro\xcc\x88m"});
    for (const char* nothingYet : {" ", "+", "-", "\xff"})
    {
        EXPECT_EQ(found(nothingYet), all) << nothingYet;
    }
}

TEST_F(Finding, PartsToHighlight)
{
    const auto check = [](const Texts& cases, auto find)
    {
        for (const std::string& one : cases)
        {
            const std::size_t equals = one.find(" = ");
            const std::string text = one.substr(0, equals), expected = one.substr(equals + 3);
            std::string shown = expected;
            shown.erase(std::remove_if(shown.begin(), shown.end(), [](char c) { return c == '[' || c == ']'; }),
                        shown.end());
            EXPECT_EQ(marked(shown, find(text, shown)), expected) << text;
        }
    };
    check({"ann = Hannah [Ann]", "lee a = [A]nn [Lee]", "muller = Łukasz [Müller]", "angs = [A\xcc\x8angs]tro\xcc\x88m",
           "stras = König[straß]e", "obr = [O'Br]ien", "266 53 = [Ann] [Le]e", "an ann = [Ann]", "x = Ann", " = Ann"},
          [&](const auto& text, const auto& name) { return finder.matchingRangesInName(text, name); });
    check({"03012 = +49 [30 12]34-567", "+49301 = 0[30/1]23", "+49301 = 00[49 301] 2345", "345 = +49 30 12[34-5]67",
           "ann 4711 = [4711]", "ann = sip:[ann]@example.org", "9 = 123"},
          [&](const auto& text, const auto& number) { return finder.matchingRangesInNumber(text, number); });
}

TEST_F(Finding, FollowsTheList)
{
    world.contactIs("Ann", "11", "");
    world.contactIs("Hannah", "12", "");
    EXPECT_EQ(found("ann"), "Ann, Hannah");
    world.contactIs("Anna", "13", "");
    world.run("ring c1 12");
    EXPECT_EQ(found("1"), "Hannah, Anna, Ann");
    EXPECT_EQ(found("ann"), "Ann, Anna, Hannah");
    world.contactIs("Ann", "21", "22");
    EXPECT_EQ(found("26"), "Anna, Ann"); // keys
    EXPECT_EQ(found("21"), "Ann");
    world.run("end c1");
    world.contactIs("Anna", "gone", "");
    EXPECT_EQ(found("an"), "Ann, Hannah");
    EXPECT_EQ(found("13"), "");

    Combined notReady(false);
    ConversationFinder early(notReady.combined);
    notReady.contactIs("Ann", "11", "");
    EXPECT_EQ(early.getMatchingConversationIds("ann").size(), 1U);
    notReady.contactIs("Ann", "gone", "");
    EXPECT_TRUE(early.getMatchingConversationIds("ann").empty());
}

/** A display that is told of a deletion searches anew, while the row is still listed. */
TEST_F(Finding, NothingThatHasGone)
{
    Screen screen;
    world.combined.addObserver(&screen);
    world.run("ring c1 11");
    EXPECT_EQ(found("1"), "");
    screen.take();
    screen.reaction = [this] { finder.getMatchingConversationIds("1"); };
    world.run("end c1");
    EXPECT_EQ(screen.take().substr(0, 7), "deleted");
    EXPECT_EQ(finder.getMatchingConversationIds("1"), Texts());
    world.combined.removeObserver(&screen);
}

/** What was kept of rows is what a finder that knows none finds. */
TEST_F(Finding, KeptTextsAreThoseOfTheRows)
{
    std::mt19937 random(7);
    const Texts names = {"Ann", "Berg", "Émile", "Lee"};
    for (int step = 0; step < 400; ++step)
    {
        const std::string number = std::to_string(10 + random() % 40);
        switch (random() % 4)
        {
        case 0:
            world.contactIs(names[random() % names.size()] + number, number, std::to_string(random() % 90));
            break;
        case 1:
            world.history("h" + std::to_string(step), number, names[random() % names.size()]);
            break;
        case 2:
            world.run("ring c" + number + " " + number);
            break;
        default:
            world.run("end c" + number);
        }
        if (step % 8 != 0)
        {
            found("e");
            continue;
        }
        ConversationFinder fresh(world.combined);
        for (const char* text : {"e", "an", "2", "31", ""})
        {
            ASSERT_EQ(finder.getMatchingConversationIds(text), fresh.getMatchingConversationIds(text)) << step << text;
        }
    }
}
} // namespace
