#include "AggregatorFixture.h"

namespace
{
using namespace Aggregation;

const std::string ANONYMOUS = "Caller.Unknown.XXX";

TEST(LiveCallsTest, TheRoadOfOneCall)
{
    World w;
    w.event("c1", ActiveCall::INCOMING_CALL, "4711", "Ann", "Lee");
    EXPECT_EQ(w.observer.take(), (Texts{"updated Ann Lee: c1/10"}));
    const std::string id = w.idOf("c1");
    EXPECT_EQ(id.size(), 36U);
    w.event("c1", ActiveCall::CONNECTED, "4711", "Ann", "Lee");
    EXPECT_EQ(w.list().atIndex(0)->timeStampUTC(), World::now()) << "the time is that of the answer";
    w.event("c1", ActiveCall::CONNECTED, "4711", "Ann", "Lee");
    w.event("c1", ActiveCall::LOCAL_ON_HOLD, "4711");
    EXPECT_EQ(w.observer.take(), (Texts{"updated Ann Lee: c1/1", "updated Ann Lee: c1/2"}));
    EXPECT_EQ(w.idOf("c1"), id);
    w.event("c1", ActiveCall::CALL_INFO_UPDATE, "4711", "Bea", "Lee");
    EXPECT_EQ(w.observer.take(), (Texts{"ended c1", "updated Bea Lee: c1/2"}));
    w.event("c1", ActiveCall::CLEARING, "4711");
    w.calls.clearActiveCallEvent("unknown");
    w.calls.clearActiveCallEvent("c1");
    w.calls.clearActiveCallEvent("c1");
    EXPECT_EQ(w.observer.take(), (Texts{"updated Bea Lee: c1/15", "ended c1"}));
    EXPECT_EQ(w.list().size(), 0U);
    w.history("e1", "4711", "Ann", "Lee");
    const std::string afterwards = w.idOf("e1");
    EXPECT_NE(afterwards, id) << "nobody used it any more";
    w.event("c2", ActiveCall::OUTGOING_CALL, "4711");
    EXPECT_EQ(w.rows(), (Texts{"Ann Lee: c2/11 e1"}));
    w.calls.clearActiveCallEvent("c2");
    EXPECT_EQ(w.rows(), (Texts{"Ann Lee: e1"}));
    EXPECT_EQ(w.idOf("e1"), afterwards);
}

TEST(LiveCallsTest, TwoCallsOfOnePartyEndInEitherOrder)
{
    for (const bool hasHistory : {false, true})
    {
        for (const bool firstEndsFirst : {false, true})
        {
            World w;
            const std::string past = hasHistory ? " e1" : "";
            if (hasHistory)
            {
                w.history("e1", "4711");
            }
            w.event("c1", ActiveCall::CONNECTED, "4711", "Ann", "Lee");
            w.event("c1", ActiveCall::LOCAL_ON_HOLD, "4711");
            w.event("c2", ActiveCall::INCOMING_CALL, "4711");
            w.event("c2", ActiveCall::CONNECTED, "4711");
            ASSERT_EQ(w.rows(), (Texts{"Ann Lee: c1/2" + past, "*Ann Lee: c2/1"}));
            const std::string first = w.idOf("c1"), second = w.idOf("c2");
            EXPECT_NE(first, second);
            w.event("c3", ActiveCall::CALL_WAITING, "4711", "Bea");
            EXPECT_EQ(w.rows().back(), "*Bea: c3/22");
            EXPECT_NE(w.idOf("c3"), second);
            w.calls.clearActiveCallEvent("c3");
            w.calls.clearActiveCallEvent(firstEndsFirst ? "c1" : "c2");
            w.history("e2", "4711");
            w.event(firstEndsFirst ? "c2" : "c1", ActiveCall::REMOTE_ON_HOLD, "4711");
            EXPECT_EQ(w.contradictions(), "");
            if (firstEndsFirst)
            {
                EXPECT_EQ(w.rows().front(), "*Ann Lee: c2/3") << "not with the history, where it would stand twice";
                EXPECT_EQ(w.idOf("c2"), second);
                EXPECT_EQ(w.idOf("e2") == first, hasHistory);
            }
            else
            {
                EXPECT_EQ(w.rows(), (Texts{"Ann Lee: c1/3 e2" + past}));
                EXPECT_EQ(w.idOf("e2"), first);
            }
            w.calls.clearActiveCallEvent(firstEndsFirst ? "c2" : "c1");
            EXPECT_EQ(w.list().size(), 1U);
            EXPECT_EQ(w.contradictions(), "");
        }
    }
}

TEST(LiveCallsTest, ACallMovesWithItsNumber)
{
    World w;
    w.history("e1", "4711", "Ann");
    w.history("e2", "030 1234567", "Bob");
    w.event("c1", ActiveCall::CONNECTED, "4711");
    EXPECT_EQ(w.rows(), (Texts{"Ann: c1/1 e1", "Bob: e2"}));
    const std::string ann = w.idOf("e1"), bob = w.idOf("e2");
    w.event("c1", ActiveCall::CONNECTED, "+49 30 1234567");
    EXPECT_EQ(w.rows(), (Texts{"Ann: e1", "Bob: c1/1 e2"}));
    w.event("c1", ActiveCall::CONNECTED, "4713", "Cid");
    EXPECT_EQ(w.rows(), (Texts{"Ann: e1", "Bob: e2", "Cid: c1/1"}));
    EXPECT_EQ(w.idOf("e1") + w.idOf("e2"), ann + bob);
    w.event("c1", ActiveCall::CALL_INFO_UPDATE, "", "Dan");
    EXPECT_EQ(w.rows().back(), "Dan: c1/1") << "the number is still known";
    EXPECT_EQ(w.list().atIndex(2)->getNumber(), "4713");
}

TEST(LiveCallsTest, ACallIsFoundBehindWhatItsConversationShowsFirst)
{
    World w;
    w.event("c1", ActiveCall::CALL_WAITING_IGNORED, "4711");
    w.history("e1", "4711");
    EXPECT_EQ(w.rows(), (Texts{"4711: e1 c1/21"})) << "an ignored call has no place ahead of what came later";
    w.event("c1", ActiveCall::CALL_WAITING_IGNORED, "4712");
    EXPECT_EQ(w.rows(), (Texts{"4711: e1", "4712: c1/21"})) << "nor is it shown twice when its party changes";
    w.history("e2", "4712");
    w.calls.clearActiveCallEvent("c1");
    EXPECT_EQ(w.rows(), (Texts{"4711: e1", "4712: e2"}));
}

TEST(LiveCallsTest, ARowThatBeganAsACallIsKnownByItsHistoryAfterwards)
{
    World w;
    w.event("c1", ActiveCall::CONNECTED, "4711");
    w.history("e1", "4711");
    w.calls.clearActiveCallEvent("c1");
    const std::string id = w.idOf("e1");
    w.event("c2", ActiveCall::INCOMING_CALL, "4711");
    w.aggregator.conversationItemsChanged();
    EXPECT_EQ(w.idOf("c2"), id);
    EXPECT_EQ(w.idOf("e1"), id);
}

TEST(LiveCallsTest, AGroupCallIsPickedUpWhereItRang)
{
    World w;
    w.event("GPU", ActiveCall::GROUP_PICKUP_INCOMING, "4711", "Ann");
    const std::string id = w.idOf("GPU");
    w.event("c1", ActiveCall::GROUP_PICKUP_CONNECTED, "4799", "Bob");
    EXPECT_EQ(w.rows(), (Texts{"Bob: c1/16 GPU/17"})) << "whoever is shown as its party";
    w.calls.clearActiveCallEvent("GPU");
    w.event("c1", ActiveCall::CONNECTED, "4799", "Bob");
    EXPECT_EQ(w.rows(), (Texts{"Bob: c1/1"}));
    EXPECT_EQ(w.idOf("c1"), id);
    w.calls.clearActiveCallEvent("c1");
    w.event("g2", ActiveCall::GROUP_PICKUP_INCOMING, "4711", "Ann");
    w.event("c3", ActiveCall::GROUP_PICKUP_CONNECTED, "4711", "Ann");
    EXPECT_EQ(w.rows(), (Texts{"Ann: g2/17", "*Ann: c3/16"})) << "only the call of that id is the group's";
}

TEST(LiveCallsTest, AConferenceStaysApart)
{
    World w;
    w.history("e1", "4711", "Ann");
    ActiveCall conference(&World::clock, "c1", World::party("4711", "Ann"), World::party("4712", "Bob"),
                          ActiveCall::SMALL_CONFERENCE);
    w.calls.activeCallEvent(conference);
    w.observer.take();
    w.calls.activeCallEvent(conference);
    EXPECT_EQ(w.observer.take(), (Texts{"updated Ann: c1/8"})) << "a conference is always refreshed";
    w.history("e2", "4711");
    w.history("e3", "4712");
    EXPECT_EQ(w.rows(), (Texts{"Ann: e2 e1", "Ann: c1/8", "4712: e3"}));
    EXPECT_EQ(w.holding("c1")->secondParty().firstName, "Bob");
    EXPECT_TRUE(w.holding("c1")->isConferenceConversation());
    const std::string id = w.idOf("c1");
    conference.setState(ActiveCall::CLEARING);
    w.calls.activeCallEvent(conference);
    EXPECT_EQ(w.idOf("c1"), id);
    w.calls.clearActiveCallEvent("c1");
    EXPECT_EQ(w.rows(), (Texts{"Ann: e2 e1", "4712: e3"}));
    w.event("c2", ActiveCall::CONNECTED, "4712", "Bob");
    ActiveCall grown(&World::clock, "c2", World::party("4712", "Bob"), World::party("4711", "Ann"),
                     ActiveCall::LARGE_CONFERENCE);
    w.calls.activeCallEvent(grown);
    EXPECT_EQ(w.rows(), (Texts{"Ann: e2 e1", "Bob: e3", "Bob: c2/8"}));
    EXPECT_TRUE(w.holding("c2")->isLargeConference());
}

TEST(LiveCallsTest, CallsPlacedByAComputerNeverGroup)
{
    World w;
    w.history("e1", "4711", "Ann");
    w.event("c1", ActiveCall::OUTGOING_CALL, "4711", "", "CTI Assisted");
    w.event("c2", ActiveCall::OUTGOING_CALL, "4711", "", "CTI Assisted");
    EXPECT_EQ(w.rows(), (Texts{"Ann: e1", "CTI Assisted: c1/11", "CTI Assisted: c2/11"}));
    EXPECT_NE(w.idOf("c1"), w.idOf("c2"));
    w.event("c1", ActiveCall::OUTGOING_CALL, "4711");
    EXPECT_EQ(w.rows(), (Texts{"Ann: c1/11 e1", "CTI Assisted: c2/11"})) << "until the party is known";
    w.event("c2", ActiveCall::CONNECTED, "4711");
    EXPECT_EQ(w.rows(), (Texts{"Ann: c1/11 e1", "*Ann: c2/1"}));
}

TEST(LiveCallsTest, AnonymousCallersShareOneConversation)
{
    World w;
    w.history("e1", "", "", ANONYMOUS);
    const std::string id = w.idOf("e1");
    w.event("c1", ActiveCall::CONNECTED, "");
    w.history("e2", "");
    EXPECT_EQ(w.rows(), (Texts{ANONYMOUS + ": c1/1 e2 e1"}));
    w.event("c2", ActiveCall::INCOMING_CALL, "", "", ANONYMOUS);
    EXPECT_EQ(w.rows().back(), "*" + ANONYMOUS + ": c2/10");
    w.event("c3", ActiveCall::INCOMING_CALL, "", "Bob");
    w.event("c4", ActiveCall::INCOMING_CALL, "", "Bob");
    EXPECT_EQ(w.rows().back(), "Bob: c4/10") << "a name is not enough to be the same";
    for (const char* call : {"c3", "c4", "c1", "c2"})
    {
        w.calls.clearActiveCallEvent(call);
    }
    w.history("e3", "");
    EXPECT_EQ(w.rows(), (Texts{ANONYMOUS + ": e3 e2 e1"}));
    w.aggregator.conversationItemsChanged();
    EXPECT_EQ(w.rows(), (Texts{ANONYMOUS + ": e3 e2 e1"}));
    EXPECT_EQ(w.idOf("e1"), id);
}

TEST(LiveCallsTest, ARebuildLeavesTheHistoryOfAnonymousCallersWithTheirFirstCall)
{
    World w;
    w.history("e1", "");
    const std::string id = w.idOf("e1");
    w.event("c1", ActiveCall::CONNECTED, "");
    w.event("c2", ActiveCall::INCOMING_CALL, "");
    w.aggregator.conversationItemsChanged();
    EXPECT_EQ(w.rows(), (Texts{ANONYMOUS + ": c1/1 e1", "*" + ANONYMOUS + ": c2/10"}));
    w.calls.clearActiveCallEvent("c2");
    w.calls.clearActiveCallEvent("c1");
    w.aggregator.conversationItemsChanged();
    EXPECT_EQ(w.idOf("e1"), id);
}
} // namespace
