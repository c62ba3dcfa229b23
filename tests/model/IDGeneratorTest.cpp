#include "ConversationAPI/ConversationSourceIfc.h"
#include "ConversationAPI/StaticConversationIDGenerator.h"
#include "support/Phone.h"

namespace
{
using namespace ConversationAPI;
using Testing::LogCapture;
using Texts = std::vector<std::string>;
using Owned = std::unique_ptr<ConversationItem>;

/** Reports ids as in use and has nothing else. */
class Source : public ConversationSourceIfc
{
  public:
    ConversationList* getConversations() const override { return nullptr; }
    Conversation* getConversation(const std::string&) override { return nullptr; }
    void addObserver(ConversationSourceObserverIfc*) override {}
    void removeObserver(ConversationSourceObserverIfc*) override {}
    Conversation* getConversationForUser(const std::string&) override { return nullptr; }
    Texts getInUseConversationIds() override { return inUse; }
    void clearSearchResults() override {}
    void voiceMailChanged(const std::string&, const std::string&) override {}
    void deleteConversation(const std::string&) override {}
    void deleteConversations() override {}
    int getSourceType() override { return 1; }
    void conversationUpdated(Conversation*) override {}
    void markAllMissedCallsRead() override {}

    Texts inUse;
};

class IDGeneratorTest : public testing::Test
{
  protected:
    std::string idFor(ConversationItem* item) { return phone.conversation({item})->getConversationId(); }
    std::string idOfNumber(const std::string& number) { return idFor(phone.missed(1, number)); }
    int place(const std::string& id) { return phone.ids.getIndexOfConversationItem(id); }

    Testing::Phone phone;
};

TEST_F(IDGeneratorTest, RandomIds)
{
    std::map<char, int> drawn;
    for (int i = 0; i < 2000; ++i)
    {
        const std::string id = phone.ids.generateConversationId();
        ASSERT_EQ(id.size(), 36U);
        std::for_each(id.begin(), id.end(), [&drawn](char c) { ++drawn[c]; });
    }
    EXPECT_EQ(drawn.size(), 62U);
    const double expected = 2000.0 * 36 / 63;
    for (const auto& [character, count] : drawn)
    {
        EXPECT_TRUE(std::isalnum(static_cast<unsigned char>(character)));
        EXPECT_NEAR(count / expected, character == '0' ? 2 : 1, 0.25) << character;
    }
    StaticConversationIDGenerator fixed("X");
    fixed.garbageCollect();
    EXPECT_EQ(fixed.getConversationID(nullptr), "X");
}

TEST_F(IDGeneratorTest, ARebuiltConversationGetsItsIdBack)
{
    const LogCapture log(6);
    const std::vector<std::function<ConversationItem*()>> items = {
        [&] { return phone.missed(1, "11", "", "Lee"); },
        [&] { return phone.missed(2, "030 1234567"); },
        [&] { return phone.missed(3, "", "", "Caller.Unknown.XXX"); },
        [&] { return phone.groupCall(4, "11", "g"); },
        [&] { return phone.groupCall(5, "11", "h"); },
        [&] { return phone.live("1", ActiveCall::CONNECTED, 6, "", "No Number"); },
        [&] { return phone.live("", ActiveCall::INCOMING_CALL, 7, "", "No Id"); },
        [&] { return phone.live("GPU", ActiveCall::GROUP_PICKUP_INCOMING, 8, "13"); }};
    Texts ids;
    for (const auto& item : items)
    {
        ids.push_back(idFor(item()));
    }
    EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), items.size());
    for (std::size_t i = items.size(); i-- > 0;)
    {
        EXPECT_EQ(idFor(items[i]()), ids[i]) << i;
    }
    EXPECT_EQ(idFor(phone.missed(9, "0049301234567")), ids[1]);
    EXPECT_EQ(idFor(phone.live("2", ActiveCall::GROUP_PICKUP_CONNECTED, 9, "77")), ids[7]);
    for (int twice = 0; twice < 2; ++twice)
    {
        EXPECT_NE(idFor(phone.missed(9, "12", "", "CTI Assisted")), idFor(phone.missed(9, "12", "", "CTI Assisted")));
    }
    EXPECT_EQ(log.count("getConversationID new id ["), items.size() + 4);
    EXPECT_EQ(log.count("getConversationID ["), items.size() + 2);
}

TEST_F(IDGeneratorTest, TheFirstMatchInTheOrderOfGivingWins)
{
    const std::string first = idOfNumber("11"), second = idOfNumber("12");
    ConversationItem* both = phone.missed(5, "13");
    both->setPhoneNumbers("12", "11", "", "");
    EXPECT_EQ(idFor(both), first);
    EXPECT_EQ(place(first) * 10 + place(second), 1) << "both stay where they are";
}

TEST_F(IDGeneratorTest, TheSameCallWithAnotherPartyIsRememberedAnew)
{
    const std::string id = idFor(phone.live("1", ActiveCall::CONNECTED, 1, "11"));
    const std::string other = idOfNumber("12");
    EXPECT_EQ(idFor(phone.live("1", ActiveCall::CONNECTED, 1, "11")), id);
    EXPECT_EQ(place(id), 0);
    EXPECT_EQ(idFor(phone.live("1", ActiveCall::CONNECTED, 1, "13")), id);
    EXPECT_EQ(place(id), 1);
    EXPECT_EQ(place(other), 0);
    EXPECT_EQ(idOfNumber("13"), id);
    EXPECT_NE(idOfNumber("11"), id);
}

TEST_F(IDGeneratorTest, UpdatingTheCache)
{
    const Owned item(phone.missed(9, "21"));
    phone.ids.updateCache("none", item.get());
    const std::string first = idOfNumber("11"), second = idOfNumber("12");
    const struct
    {
        std::string id;
        std::size_t lines;
    } cases[] = {{"none", 0}, {first, 2}, {first, 1}, {second, 2}};
    for (const auto& one : cases)
    {
        const LogCapture log(6);
        phone.ids.updateCache(one.id, item.get());
        EXPECT_EQ(log.count("updateCache updated id [" + one.id + "]"), one.lines);
    }
    EXPECT_EQ(place(first) * 10 + place(second), 1);
    EXPECT_EQ(place("none"), -1);
    EXPECT_EQ(idOfNumber("21"), first);
    EXPECT_NE(idOfNumber("11"), first);
}

TEST_F(IDGeneratorTest, OnlyIdsInUseSurviveTheCollection)
{
    Source one, two;
    const std::string first = idOfNumber("11"), second = idOfNumber("12"), third = idOfNumber("13");
    one.inUse = {third, "unknown"};
    two.inUse = {first};
    phone.ids.setConversationSources({&one, &two});
    {
        const LogCapture log(6);
        phone.conversations.garbageCollectIDs();
        EXPECT_EQ(log.count("garbageCollect removing id ["), 1U);
        EXPECT_EQ(log.count("garbageCollect removing id [" + second + "]"), 1U);
    }
    EXPECT_EQ(idOfNumber("13") + idOfNumber("11"), third + first);
    EXPECT_NE(idOfNumber("12"), second);
    phone.ids.setConversationSources({});
    phone.ids.garbageCollect();
    EXPECT_EQ(place(first), -1);
    EXPECT_NE(idOfNumber("11"), first);
}

TEST_F(IDGeneratorTest, TwoContactsThatShareANumberAreTwo)
{
    const auto lee = phone.contact("Lee", "11", "12"), fox = phone.contact("Fox", "11", "13");
    EXPECT_NE(lee->getConversationId(), fox->getConversationId());
    EXPECT_EQ(phone.contact("Lee", "11", "14")->getConversationId(), lee->getConversationId());
    EXPECT_EQ(idOfNumber("11"), lee->getConversationId());
}

TEST_F(IDGeneratorTest, OtherTestsOfSameness)
{
    using Generator = RandomCachingConversationIDGenerator;
    Generator atSameTime(&Generator::isSameConversationAtSameTime);
    Generator byTime([](const ConversationItem* a, const ConversationItem* b)
                     { return a->timeStampUTC() == b->timeStampUTC(); });
    const auto id = [this](Generator& generator, long time, const char* number)
    {
        const std::unique_ptr<Conversation> made(
            phone.conversations.createConversation(phone.missed(time, number), generator));
        return made->getConversationId();
    };
    EXPECT_EQ(id(atSameTime, 1, "11"), id(atSameTime, 1, "11"));
    EXPECT_NE(id(atSameTime, 1, "11"), id(atSameTime, 2, "11"));
    EXPECT_NE(id(atSameTime, 1, "11"), id(atSameTime, 1, "12"));
    EXPECT_EQ(id(byTime, 1, "11"), id(byTime, 1, "12"));
    EXPECT_NE(id(byTime, 1, "11"), id(byTime, 2, "11"));
    const std::unique_ptr<Conversation> empty(phone.conversations.createConversation());
    EXPECT_NE(phone.ids.getConversationID(empty.get()), phone.ids.getConversationID(empty.get()));
    EXPECT_EQ(phone.ids.findConversationIDForItem(empty.get()), "");
}
} // namespace
