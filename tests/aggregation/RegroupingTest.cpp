#include "AggregatorFixture.h"

#include "ConversationAPI/StaticConversationIDGenerator.h"

namespace
{
using namespace Aggregation;

TEST(RegroupingTest, AContactsTwoNumbersBecomeOneConversationThatSurvives)
{
    World w;
    w.history("e1", "4711", "A");
    w.history("e2", "4712", "B");
    w.history("e3", "4713", "C");
    w.observer.take();
    const auto contact = w.contact("Ann", "4712", "4711");
    w.aggregator.conversationUpdated(contact.get());
    EXPECT_EQ(w.rows(), (Texts{"Ann: e2 e1", "C: e3"}));
    EXPECT_EQ(w.idOf("e1"), contact->getConversationId());
    EXPECT_EQ(w.holding("e1")->getContactSource(), Conversation::NO_CONTACT);
    EXPECT_EQ(w.holding("e1")->getConversationNumbers(), (Texts{"4712", "", "4711", ""}));
    for (int i = 0; i < 2; ++i)
    {
        w.aggregator.conversationItemsChanged();
        w.aggregator.conversationUpdated(contact.get());
        w.event("c1", ActiveCall::CONNECTED, i == 0 ? "4711" : "4712");
        EXPECT_EQ(describe(*w.holding("c1")), "Ann: c1/1 e2 e1");
        w.calls.clearActiveCallEvent("c1");
        EXPECT_EQ(w.idOf("e1") + w.idOf("e2"), contact->getConversationId() + contact->getConversationId());
        EXPECT_EQ(w.contradictions(), "");
    }
    w.aggregator.conversationItemsChanged();
    EXPECT_EQ(w.list().size(), 2U) << "without the contact having told of itself again";
    EXPECT_EQ(w.idOf("e1"), contact->getConversationId());
}

TEST(RegroupingTest, AnIdOfTheContactsOwnSurvivesARebuild)
{
    World w;
    w.history("e1", "4711");
    w.history("e2", "4712");
    StaticConversationIDGenerator key("the contact's key");
    std::unique_ptr<Conversation> contact(w.conversations.createConversation(key));
    contact->setPhoneNumbers("4711", "4712", "", "", "4711", CallPartyIdentifier::WORK_1);
    contact->setContactSource(Conversation::DIRECTORY_CONTACT);
    contact->init();
    w.aggregator.conversationUpdated(contact.get());
    w.aggregator.conversationItemsChanged();
    EXPECT_EQ(w.list().size(), 1U);
    EXPECT_EQ(w.idOf("e1") + w.idOf("e2"), "the contact's keythe contact's key");
}

TEST(RegroupingTest, TwoContactsThatShareANumberAlreadyCalledStayTwo)
{
    World w;
    w.history("e1", "4711");
    const auto lee = w.contact("Lee", "4711", "4712");
    const auto fox = w.contact("Fox", "4711", "4713");
    EXPECT_NE(lee->getConversationId(), fox->getConversationId());
    w.aggregator.conversationUpdated(lee.get());
    w.aggregator.conversationUpdated(fox.get());
    EXPECT_EQ(w.rows(), (Texts{"Lee: e1"})) << "a conversation keeps its first contact";
}

TEST(RegroupingTest, CallsOfAContactsTwoNumbersAreTakenInTheOrderOfAll)
{
    World w;
    w.history("e1", "4711", "Oldest");
    w.history("e2", "4712", "Newest");
    w.history("e3", "4711");
    const auto contact = w.contact("", "4711", "4712");
    w.aggregator.conversationUpdated(contact.get());
    w.aggregator.conversationItemsChanged();
    EXPECT_EQ(w.rows(), (Texts{"Newest: e3 e2 e1"}));
}

/** The journal tells of each call which of the party's numbers it was. */
TEST(RegroupingTest, CallsThatComeTogetherTeachEachNumber)
{
    World w;
    const auto add = [&w](const char* entry, const std::string& number, bool isMobile)
    {
        ConversationItem* item = w.missed(entry, number, "Ann");
        item->setPhoneNumbers(isMobile ? "" : number, "", isMobile ? number : "", "");
        w.journal.keep(item);
    };
    add("b2", "1002", true);
    add("a2", "1001", false);
    add("b1", "1002", false);
    add("a1", "1001", false);
    w.aggregator.conversationItemsChanged();
    const auto ann = w.contact("Ann", "1001", "1002");
    w.aggregator.conversationUpdated(ann.get());
    ASSERT_EQ(w.rows(), (Texts{"Ann: a1 b1 a2 b2"}));
    w.aggregator.conversationItemsChanged();
    EXPECT_EQ(w.rows(), (Texts{"Ann: a1 b1 a2 b2"}));
    EXPECT_NE(w.list().findByNumber("1002"), nullptr);
}

/** A source may keep a pointer to what it has told of, and copies must not change with it. */
TEST(RegroupingTest, ASourcesItemStaysInItsConversationAlone)
{
    World w;
    for (const char* entry : {"e1", "e2"})
    {
        ConversationItem* item = w.missed(entry, "4711");
        w.aggregator.newConversationItem(item);
        const std::unique_ptr<Conversation> copy(w.holding(entry)->clone());
        const int before = copy->numberOfNewEvents();
        item->setViewed(false);
        EXPECT_EQ(copy->numberOfNewEvents(), before) << entry;
        EXPECT_GT(w.holding(entry)->numberOfNewEvents(), before) << entry;
        EXPECT_EQ(w.holding(entry)->getConversationItems().front(), item);
    }
}

TEST(RegroupingTest, ASecondLiveCallIsNamedButLeftAlone)
{
    World w;
    w.history("e1", "4711");
    w.history("e2", "4712");
    w.history("e3", "4713");
    w.event("c1", ActiveCall::CONNECTED, "4711");
    w.event("c2", ActiveCall::INCOMING_CALL, "4712");
    const std::string other = w.idOf("c2");
    auto contact = w.contact("Ann", "4711", "4712");
    contact->saveHomeNumber("4713");
    w.aggregator.conversationUpdated(contact.get());
    EXPECT_EQ(w.rows(), (Texts{"Ann: c1/1 e3 e1", "Ann: c2/10 e2"}));
    EXPECT_EQ(w.idOf("c1"), contact->getConversationId());
    EXPECT_EQ(w.idOf("c2"), other);
    EXPECT_EQ(w.contradictions(), "");
    w.calls.clearActiveCallEvent("c1");
    w.aggregator.conversationItemsChanged();
    w.aggregator.conversationUpdated(contact.get());
    EXPECT_EQ(w.rows(), (Texts{"Ann: c2/10 e3 e2 e1"})) << "one call alone unites all";
    EXPECT_EQ(w.contradictions(), "");
}

TEST(RegroupingTest, WhatAContactNoLongerCoversIsPlacedAfresh)
{
    World w;
    w.history("e1", "4711", "A");
    w.history("e2", "4712", "B");
    const auto contact = w.contact("Ann", "4711", "4712");
    w.aggregator.conversationUpdated(contact.get());
    ASSERT_EQ(w.rows(), (Texts{"Ann: e2 e1"}));
    w.observer.take();
    contact->setPhoneNumbers("4711", "", "", "", "4711", CallPartyIdentifier::WORK_1);
    w.aggregator.conversationUpdated(contact.get());
    EXPECT_EQ(w.rows(), (Texts{"Ann: e1", "B: e2"}));
    EXPECT_EQ(w.observer.take(), (Texts{"updated B: e2"}));
    EXPECT_EQ(w.idOf("e1"), contact->getConversationId());
    EXPECT_NE(w.idOf("e2"), contact->getConversationId());
    contact->setPhoneNumbers("4719", "", "", "", "4719", CallPartyIdentifier::WORK_1);
    w.aggregator.conversationUpdated(contact.get());
    EXPECT_EQ(w.rows(), (Texts{"B: e2", "A: e1"})) << "the contact's own conversation has nothing left";
    EXPECT_NE(w.idOf("e1"), contact->getConversationId());
    EXPECT_EQ(w.contradictions(), "");
    w.aggregator.deleteConversation(w.idOf("e2"));
    EXPECT_EQ(w.journal.held.size(), 1U) << "the journal entries went with the items";
}

TEST(RegroupingTest, ALiveCallWithoutANumberStaysWithItsContact)
{
    World w;
    w.history("e1", "4711", "Ann");
    const auto contact = w.contact("Ann", "4711", "");
    w.event("c1", ActiveCall::CONNECTED, "4711", "Ann");
    ActiveCall conference(&World::clock, "c2", World::party("4712", "Bob"), World::party("4713", "Cid"),
                          ActiveCall::SMALL_CONFERENCE);
    w.calls.activeCallEvent(conference);
    w.aggregator.conversationUpdated(contact.get());
    w.aggregator.conversationUpdated(w.contact("Bob", "4712", "").get());
    EXPECT_EQ(w.rows(), (Texts{"Ann: c1/1 e1", "Bob: c2/8"}))
        << "the contact knows nothing of a conference's other party";
    EXPECT_EQ(w.contradictions(), "");
}

TEST(RegroupingTest, WhatBelongsToNoContactIsLeftAlone)
{
    World w;
    w.history("e1", "4711", "A");
    w.history("e2", "", "", "Caller.Unknown.XXX");
    const Texts rows = w.rows();
    const std::string ids = w.idOf("e1") + w.idOf("e2");
    w.observer.take();
    w.aggregator.conversationUpdated(nullptr);
    w.aggregator.conversationUpdated(w.contact("Bob", "", "").get());
    w.aggregator.conversationUpdated(w.contact("Bob", "4712", "").get());
    w.aggregator.conversationUpdated(w.holding("e1"));
    w.aggregator.conversationUpdated(w.holding("e2"));
    EXPECT_EQ(w.rows(), rows);
    EXPECT_EQ(w.idOf("e1") + w.idOf("e2"), ids);
    EXPECT_TRUE(w.observer.take().empty());
}
} // namespace
