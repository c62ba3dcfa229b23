#include "ConversationAPI/ActiveCallConversationItem.h"
#include "support/Phone.h"

namespace
{
using namespace ConversationAPI;
using Testing::Phone;

using Owned = std::unique_ptr<ConversationItem>;

TEST(ItemKindsTest, StatesOfLiveCalls)
{
    const std::map<int, int> states = {{0, 1},   {1, 2},   {2, 3},   {3, 8},   {4, 10},  {5, 11},
                                       {6, 13},  {7, 15},  {8, 16},  {9, 17},  {10, 18}, {11, 19},
                                       {12, 21}, {13, 22}, {14, 23}, {15, 11}, {16, 26}, {99, 11}};
    Phone phone;
    for (const auto& [call, state] : states)
    {
        const Owned item(phone.live("1", static_cast<ActiveCall::activeCallState>(call), 5, "11"));
        EXPECT_EQ(static_cast<int>(item->getState()), state) << call;
    }
}

TEST(ItemKindsTest, ADialledCallThatWasForwardedIsOlderThanWhatItProduced)
{
    Phone phone;
    for (const auto& [before, after] : std::map<long, long>{{1000, 999}, {1, 0}, {0, 0}})
    {
        const Owned dialled(phone.items.getDialledCallConversationItem(before, "11", "", ""));
        const Owned received(phone.items.getReceivedCallConversationItem(before, "11", "", ""));
        for (ConversationItem* item : {dialled.get(), received.get()})
        {
            item->setForwardedCallParty(Phone::party("12"));
            EXPECT_EQ(item->getForwardedCallParty()->getNumber(), "12");
        }
        EXPECT_EQ(dialled->timeStampUTC(), after);
        EXPECT_EQ(received->timeStampUTC(), before);
    }
}

TEST(ItemKindsTest, TheNumberToCallBack)
{
    Phone phone;
    const Owned item(phone.missed(1, "11", "", "Lee"));
    item->setPhoneNumbers("21", "22", "23", "24");
    const std::map<int, std::string> numbers = {{0, "21"}, {1, "24"}, {2, "21"}, {3, "22"}, {4, "23"}};
    for (const auto& [type, number] : numbers)
    {
        item->setLastPhoneNumberType(static_cast<NumberType::NT>(type));
        EXPECT_EQ(item->lastNumber(), number) << type;
    }
    item->setLastPhoneNumber("31");
    EXPECT_EQ(item->lastNumber(), "31");
    item->clearParticipants();
    item->setNumber("1");
    EXPECT_EQ(item->lastNumber() + item->toString(), "31no participants");
    EXPECT_EQ(item->modificationTimeStampUTC(), 1);
}

/** What makes two items one conversation, the strongest rule first. */
TEST(ItemKindsTest, SamenessOfItems)
{
    Phone phone;
    const auto history = [&](const char* number, const char* conversation = "", const char* exchange = "")
    {
        ConversationItem* item = phone.missed(1, number);
        item->setConversationId(conversation);
        item->setExchangeContactId(exchange);
        return item;
    };
    const auto pickup = ActiveCall::GROUP_PICKUP_INCOMING, pickedUp = ActiveCall::GROUP_PICKUP_CONNECTED;
    const struct
    {
        ConversationItem *a, *b;
        bool same, sameOtherWay, sameIgnoringCall;
    } cases[] = {{phone.groupCall(1, "11", "g"), history("11"), false, false, true},
                 {phone.groupCall(1, "11", "g"), phone.groupCall(2, "11", "g"), true, true, true},
                 {phone.groupCall(1, "11", "g"), phone.groupCall(2, "11", "h"), false, false, true},
                 {phone.groupCall(1, "11", "g"), phone.groupCall(2, "12", "g"), false, false, false},
                 {history("11", "c", "x"), history("11", "c", "y"), false, false, true},
                 {history("11", "c", "x"), history("12", "d", "x"), true, true, false},
                 {history("11", "c", "x"), history("12", "c", ""), true, true, true},
                 {history("11", "c"), history("11", "d"), false, false, false},
                 {history("11", "c"), history("11", ""), true, true, true},
                 {phone.live("1", ActiveCall::CONNECTED, 1, "11"), phone.live("2", ActiveCall::CONNECTED, 1, "11"),
                  false, false, true},
                 {phone.live("1", ActiveCall::CONNECTED, 1, "11"), phone.live("1", ActiveCall::CLEARING, 1, "12"), true,
                  true, false},
                 {phone.live("1", ActiveCall::CALL_WAITING_IGNORED, 1, "11"),
                  phone.live("2", ActiveCall::CONNECTED, 1, "11"), true, true, true},
                 {phone.live("1", ActiveCall::CONNECTED, 1, "11"), history("11"), true, true, true},
                 {phone.live("GPU", pickup, 1, "11"), phone.live("2", pickedUp, 1, "12"), true, false, false},
                 {phone.live("1", pickup, 1, "11"), phone.live("2", pickedUp, 1, "11"), false, false, true}};
    for (std::size_t i = 0; i < std::size(cases); ++i)
    {
        const Owned a(cases[i].a), b(cases[i].b);
        EXPECT_EQ(a->isSameConversationAs(*b), cases[i].same) << i;
        EXPECT_EQ(b->isSameConversationAs(*a), cases[i].sameOtherWay) << i;
        EXPECT_EQ(a->isSameConversationIgnoringCallID(*b), cases[i].sameIgnoringCall) << i;
    }
}
} // namespace
