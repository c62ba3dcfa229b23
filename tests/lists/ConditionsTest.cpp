#include "ConversationAPI/ActiveCallMatcherIgnoringCallID.h"
#include "ConversationAPI/CallIDCondition.h"
#include "ConversationAPI/ConversationItemMatcher.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationMatcher.h"
#include "ConversationAPI/GatherConversationIds.h"
#include "ConversationAPI/GatherMatchingConversationIds.h"
#include "ConversationAPI/GatherTemporaryConversationIds.h"
#include "ConversationAPI/HasAnyNumberMatchingAndIsDirectType.h"
#include "ConversationAPI/IsSameConversationAsAndDirectCondition.h"
#include "ConversationAPI/PhantomCondition.h"
#include "ConversationAPI/StaticConversationIDGenerator.h"
#include "ConversationAPI/UserIdMatchesAndIsDirectType.h"
#include "support/Phone.h"

namespace
{
using namespace ConversationAPI;
using Testing::ANONYMOUS;
using namespace ConversationListConditions;
using OwnedItem = std::unique_ptr<ConversationItem>;
using Owned = std::unique_ptr<Conversation>;

const std::string CTI = "CTI Assisted";

class ConditionsTest : public testing::Test
{
  protected:
    ConversationItem* live(const char* callId, ActiveCall::activeCallState state, const char* number)
    {
        return phone.live(callId, state, 5, number);
    }

    ConversationItem* conference(const char* callId, ActiveCall::activeCallState state)
    {
        return phone.live(callId, state, 5, {Testing::Phone::party("11"), Testing::Phone::party("12")});
    }

    Testing::Phone phone;
};

/** Which items belong to which conversations when neither says so by an id. */
TEST_F(ConditionsTest, ItemsFindTheirConversationByCallOrParty)
{
    const auto CONNECTED = ActiveCall::CONNECTED, HELD = ActiveCall::REPRESENT_HELD_CALL,
               PICKUP = ActiveCall::GROUP_PICKUP_INCOMING, PICKED_UP = ActiveCall::GROUP_PICKUP_CONNECTED,
               CLEARING = ActiveCall::CLEARING, REMOTE = ActiveCall::REMOTE_CALL;
    const struct
    {
        ConversationItem *held, *sought;
        bool matches;
    } cases[] = {{phone.missed(1, "11"), phone.missed(2, "11"), true},
                 {phone.missed(1, "11"), phone.missed(2, "111"), false},
                 {phone.missed(1, "11"), phone.missed(2, "", "", "Lee"), false},
                 {phone.missed(1, "030 1234567"), phone.missed(2, "0049 30 1234567"), true},
                 {phone.missed(1, "11", "", ANONYMOUS), phone.missed(2, "12", "", ANONYMOUS), true},
                 {phone.missed(1, "", "", ANONYMOUS), phone.missed(2, "12"), false},
                 {phone.missed(1, "11", "", CTI), phone.missed(2, "11", "", CTI), false},
                 {phone.missed(1, "11"), phone.missed(2, "11", "", CTI), false},
                 {phone.missed(1, "11"), live("1", CONNECTED, "11"), true},
                 {phone.missed(1, "11"), live("1", CLEARING, "11"), false},
                 {phone.missed(1, "11"), conference("1", ActiveCall::CONFERENCE), false},
                 {conference("1", ActiveCall::CONFERENCE), phone.missed(1, "11"), false},
                 {conference("1", ActiveCall::CONFERENCE), live("1", CONNECTED, "99"), true},
                 {live("1", CONNECTED, "11"), phone.missed(1, "11"), true},
                 {live("1", CONNECTED, "11"), live("2", CONNECTED, "11"), false},
                 {live("1", CONNECTED, "11"), live("1", CLEARING, "12"), true},
                 {live("", CONNECTED, "11"), live("", CONNECTED, "12"), true},
                 {live("1", HELD, "11"), live("1", CONNECTED, "12"), true},
                 {live("1", HELD, "11"), live("2", CONNECTED, "11"), false},
                 {live("1", HELD, "11"), live("2", HELD, "11"), true}, // the item is not live: by number
                 {live("1", REMOTE, "11"), live("2", CONNECTED, "11"), true},
                 {live("GPU", PICKUP, "11"), live("2", PICKED_UP, "12"), true},
                 {live("GPU", PICKUP, "11"), live("2", CONNECTED, "11"), false},
                 {live("1", PICKUP, "11"), live("2", PICKED_UP, "11"), false},
                 {live("2", PICKED_UP, "11"), live("GPU", PICKUP, "11"), false},
                 {phone.groupCall(1, "11", "g"), phone.groupCall(2, "11", "g"), true},
                 {phone.groupCall(1, "11", "g"), phone.groupCall(2, "11", "h"), false},
                 {phone.groupCall(1, "11", "g"), phone.groupCall(2, "12", "g"), false},
                 {phone.groupCall(1, "11", "g"), phone.missed(2, "11"), false},
                 {phone.missed(1, "11"), phone.groupCall(2, "11", "g"), false},
                 {phone.missed(1, "11"), new Testing::ItemInState(4, 1), false}};
    for (std::size_t i = 0; i < std::size(cases); ++i)
    {
        const Owned conversation = phone.conversation({cases[i].held});
        const OwnedItem sought(cases[i].sought);
        EXPECT_EQ(ConversationItemMatcher(sought.get())(conversation.get()), cases[i].matches) << i;
        EXPECT_EQ(IsSameConversationAsAndDirectCondition(sought.get())(conversation.get()), cases[i].matches) << i;
        conversation->setType(Conversation::GROUP);
        EXPECT_FALSE(IsSameConversationAsAndDirectCondition(sought.get())(conversation.get())) << i;
    }
}

TEST_F(ConditionsTest, IdsAndFlagsGoBeforeNumbers)
{
    StaticConversationIDGenerator ownId("C");
    const struct
    {
        const char *exchange, *itemExchange, *itemId, *number;
        bool extra, phantom, isLive, matches;
    } cases[] = {{"x", "y", "C", "11", false, false, false, false},
                 {"x", "x", "D", "99", true, true, false, true},
                 {"x", "", "", "11", false, false, false, true},
                 {"", "x", "", "11", false, false, false, true},
                 {"x", "", "D", "11", false, false, false, false},
                 {"", "", "C", "99", false, false, false, true},
                 {"", "", "C", "99", true, false, false, false},
                 {"", "", "C", "99", true, false, true, true},
                 {"", "", "", "11", true, false, false, false},
                 {"", "", "C", "11", false, true, true, false},
                 {"", "", "PhantomConversation", "11", false, true, false, false}};
    for (std::size_t i = 0; i < std::size(cases); ++i)
    {
        const auto& one = cases[i];
        const Owned conversation(phone.conversations.createConversation(phone.missed(1, "11"), ownId));
        conversation->setExchangeContactId(one.exchange);
        conversation->setExtraActiveConversation(one.extra);
        conversation->setPhantom(one.phantom);
        const OwnedItem sought(one.isLive ? live("1", ActiveCall::CONNECTED, one.number) : phone.missed(2, one.number));
        sought->setExchangeContactId(one.itemExchange);
        sought->setConversationId(one.itemId);
        EXPECT_EQ(ConversationItemMatcher(sought.get())(conversation.get()), one.matches) << i;
    }
}

TEST_F(ConditionsTest, CallIds)
{
    const Owned call =
        phone.conversation({live("1", ActiveCall::CONNECTED, "11"), live("2", ActiveCall::INCOMING_CALL, "11"),
                            live("GPU", ActiveCall::GROUP_PICKUP_INCOMING, "11")});
    const Owned history = phone.conversation({phone.missed(1, "11")});
    EXPECT_TRUE(CallIDCondition("1")(call.get()));
    EXPECT_FALSE(CallIDCondition("2")(call.get())) << "not the initial item's";
    EXPECT_TRUE(CallIDCondition("GPU")(call.get()));
    EXPECT_FALSE(CallIDCondition("GPU")(history.get()));
    EXPECT_TRUE(CallIDCondition("")(history.get()));
    EXPECT_FALSE(CallIDCondition("")(call.get()));
    const OwnedItem same(live("9", ActiveCall::CONNECTED, "11")), other(live("1", ActiveCall::CONNECTED, "12"));
    EXPECT_TRUE(ActiveCallMatcherIgnoringCallID(same.get())(call.get()));
    EXPECT_FALSE(ActiveCallMatcherIgnoringCallID(other.get())(call.get()));
    EXPECT_FALSE(ActiveCallMatcherIgnoringCallID(same.get())(history.get()));
}

TEST_F(ConditionsTest, TypesUsersAndPhantoms)
{
    const Owned one = phone.contact("Lee", "11"), other = phone.contact("Fox", "12");
    one->setUserId("u");
    EXPECT_TRUE(HasAnyNumberMatchingAndIsDirectType("11")(one.get()));
    EXPECT_TRUE(UserIdMatchesAndIsDirectType("u")(one.get()));
    EXPECT_FALSE(UserIdMatchesAndIsDirectType("u")(other.get()));
    one->setType(Conversation::GROUP);
    EXPECT_FALSE(HasAnyNumberMatchingAndIsDirectType("11")(one.get()));
    EXPECT_FALSE(UserIdMatchesAndIsDirectType("u")(one.get()));
    other->setPhantom(true);
    EXPECT_FALSE(PhantomCondition(other.get())(one.get()));
    EXPECT_FALSE(PhantomCondition(one.get())(other.get()));
    one->setPhantom(true);
    EXPECT_TRUE(PhantomCondition(one.get())(other.get()));
}

TEST_F(ConditionsTest, FreeText)
{
    const Owned contact = phone.contact("M\xC3\xBCller-7 LTD", "11", "0301234567");
    const std::map<std::string, bool> texts = {{"", true},       {"ler-7 ltd", true}, {"LTD", true}, {"lt d", false},
                                               {"4930", true},   {"+4930", false},    {"11", true},  {"12", true},
                                               {"49-30", false}, {"7", true},         {"93", true},  {"99", false},
                                               {"*", false},     {"r-7", true}};
    ConversationMatcher matcher;
    for (const auto& [text, matches] : texts)
    {
        EXPECT_EQ(matcher.matches(contact.get(), text), matches) << text;
    }
    EXPECT_TRUE(is_digits("") && is_digits("0123456789*#"));
    EXPECT_FALSE(is_digits("+49") || is_digits("1-2") || is_digits("1 "));
}

} // namespace
