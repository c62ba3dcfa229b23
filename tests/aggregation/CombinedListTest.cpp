#include "CombinedFixture.h"
#include "ConversationAPI/StaticConversationIDGenerator.h"

#include <list>

namespace
{
using namespace Aggregation;

struct Prepared : Combined
{
    explicit Prepared(const Texts& events, bool isReady = true) : Combined(isReady) { runAll(events); }

    void runAll(const Texts& events)
    {
        std::for_each(events.begin(), events.end(), [this](const auto& event) { run(event); });
        screen.take();
        directory.notes.clear();
    }
    Conversation& contactOf(const std::string& name) { return *directory.named(name); }
    /** Of this id, and not told yet. */
    void knowContact(const std::string& id, const std::string& name, const std::string& number)
    {
        static std::list<StaticConversationIDGenerator> generators; // which outlive all conversations
        Conversation* made = conversations.createConversation(generators.emplace_back(id));
        made->setPhoneNumbers(number, "", "", "", number, CallPartyIdentifier::WORK_1);
        made->updateName(name, "");
        made->setContactSource(Conversation::DIRECTORY_CONTACT);
        made->setSource(&directory);
        made->init();
        directory.held.push_back(made);
    }
    const std::string& idOfRow(const std::string& sought) const { return rowOf(sought)->getConversationId(); }
};

TEST(CombinedListTest, OnePartyOfTwoSourcesIsOneRowWithTheIdOfTheFirst)
{
    for (const bool isHistoryFirst : {true, false})
    {
        Prepared w({"past e1 4711 A", "past e2 4712 B", "contact Ann 4711 4713"});
        ConversationSourceIfc *history = &w.aggregator, *directory = &w.directory;
        w.combined.setSources({nullptr, nullptr}, true);
        EXPECT_EQ(w.shown() + w.screen.take(), "list");
        EXPECT_FALSE(w.combined.markAllMissedCallsRead());
        w.knowContact("of the contact", "Bob", "4712");
        w.combined.setSourcesInPreferredOrder(isHistoryFirst ? history : directory,
                                              isHistoryFirst ? directory : history, true);
        EXPECT_EQ(w.shown().substr(1), " Bob: e2 | A Ann: e1");
        EXPECT_EQ(w.idOfRow("e2") == "of the contact", !isHistoryFirst);
        EXPECT_EQ(w.rowOf("e2")->getContactSource(), Conversation::DIRECTORY_CONTACT);
        EXPECT_EQ(w.rowOf("e2")->getSource(), directory);
        EXPECT_EQ(w.disagreements(), "");
        w.combined.setSourcesInPreferredOrder(nullptr, directory, true);
        EXPECT_EQ(w.rowsOf().size(), 2U);
        w.run("past e3 4714");
        EXPECT_EQ(w.rowsOf().size(), 2U) << "a source that was taken off is not heard any more";
    }
}

TEST(CombinedListTest, AContactUnitesTheRowsOfItsNumbersAndLosesWhatItNoLongerHas)
{
    Prepared w({"past e1 4711 A", "past e2 4712 B", "past e3 4713 C"});
    w.run("contact Ann 4711 4712");
    EXPECT_EQ(w.shown(), "C C: e3 | A Ann: e2 e1");
    EXPECT_EQ(w.screen.take(), "deleted B moved A@1 list");
    EXPECT_EQ(w.directory.notes, Texts{"updated"}) << "every source is told";
    w.run("contact Ann 4711");
    EXPECT_EQ(w.disagreements(), "");
    EXPECT_EQ(w.rowOf("e1")->getContactName(), "Ann");
    EXPECT_NE(w.rowOf("e2"), w.rowOf("e1"));
    w.run("contact Ann gone");
    EXPECT_EQ(w.disagreements(), "");
    EXPECT_EQ(w.rowsOf().size(), 3U);
}

TEST(CombinedListTest, AContactThatIsNewStillUnitesRows)
{
    Prepared w({"past e1 4711 A", "past e2 4712 B"});
    Conversation& ann = (w.runAll({"contact Ann 4719"}), w.contactOf("Ann"));
    ann.setPhoneNumbers("4711", "4712", "", "", "4719", CallPartyIdentifier::WORK_1);
    w.directory.tell(&ann);
    EXPECT_EQ(w.rowsOf().size(), 1U);
    EXPECT_EQ(w.disagreements(), "");
    EXPECT_EQ(w.idOfRow("e1"), ann.getConversationId());
}

/** One row that two of the numbers find, not next to each other, is merged and reported deleted once. */
TEST(CombinedListTest, NumbersThatFindRowsABA)
{
    Prepared w({"past e1 4710"});
    ConversationItem* several = w.missed("e2", "4711");
    several->setPhoneNumbers("4711", "", "4713", "");
    w.journal.add(several);
    w.runAll({"past e3 4712", "past e4 4714"});
    w.contactIs("Ann", "4719", "");
    w.screen.take();
    w.contactOf("Ann").setPhoneNumbers("4711", "4712", "4713", "4710", "4710", CallPartyIdentifier::HOME);
    w.directory.tell(&w.contactOf("Ann"));
    const std::string told = w.screen.take();
    for (const char* row : {"e1", "e2", "e3"})
    {
        EXPECT_EQ(w.rowOf(row), w.rowOf("Ann")) << told;
    }
    EXPECT_EQ(w.rowsOf().size(), 2U);
    EXPECT_EQ(w.disagreements(), "");
}

TEST(CombinedListTest, PresenceGoesToTheRowAlone)
{
    for (const bool isReady : {true, false})
    {
        Prepared w({"contact Ann 4711", "past e1 4711", "contact Bob 4712"}, isReady);
        const auto tellPresence = [&](const Conversation& known, Conversation::PresenceState presence)
        {
            const std::unique_ptr<Conversation> update(known.clone());
            update->setUpdateReason(Conversation::PRESENCE_UPDATED);
            update->setPresenceState(presence);
            w.directory.tell(update.get());
        };
        tellPresence(w.contactOf("Ann"), Conversation::BUSY);
        EXPECT_EQ(w.rowOf("Ann")->getPresenceState(), Conversation::BUSY);
        EXPECT_EQ(w.screen.take(), isReady ? "presence " + w.screen.nameOf(*w.rowOf("Ann")) : "");
        EXPECT_TRUE(w.directory.notes.empty()) << "it concerns no source";
        w.combined.setSources({&w.aggregator}, true);
        w.screen.take();
        tellPresence(w.contactOf("Bob"), Conversation::AWAY);
        EXPECT_EQ(w.screen.take(), "");
    }
}

TEST(CombinedListTest, TheListIsToldFromReadinessOnAndSingleRowsAlways)
{
    Prepared w({"past e1 4711 Ann"}, false);
    w.run("combine");
    w.combined.start();
    EXPECT_EQ(w.screen.take(), "");
    EXPECT_EQ(w.shown(), "A Ann: e1");
    w.run("past e2 4712 Bob");
    w.run("past e3 4711 Ann");
    w.run("contact Eve 4713");
    EXPECT_EQ(w.screen.take(), "new B@0 moved A@0 new C@2");
    w.aggregator.sourceSubscribed();
    EXPECT_EQ(w.screen.take(), "list");
    w.combined.conversationSourcesReady();
    EXPECT_EQ(w.screen.take(), "") << "being ready tells nothing by itself";
    w.combined.start();
    EXPECT_EQ(w.screen.take(), "list");
    EXPECT_TRUE(w.rowsOf().getModifiedConversations().empty());
    EXPECT_EQ(w.disagreements(), "");
}

TEST(CombinedListTest, TheOrderOfNamesComesWithTheWholeList)
{
    Prepared w({"past e1 4711 Bob", "past e2 4712 ann", "past e3 4713 Cid"});
    w.combined.setSortType(2);
    w.run("combine");
    EXPECT_EQ(w.shown(), "C Cid: e3 | B ann: e2 | A Bob: e1");
    w.combined.setSortType(1);
    w.run("combine");
    EXPECT_EQ(w.shown(), "B ann: e2 | A Bob: e1 | C Cid: e3");
    w.run("past e4 4711 Bob");
    EXPECT_EQ(w.shown(), "A Bob: e4 e1 | C Cid: e3 | B ann: e2") << "a single row's change sorts by time";
    w.combined.start();
    EXPECT_EQ(w.shown(), "B ann: e2 | A Bob: e4 e1 | C Cid: e3");
}

TEST(CombinedListTest, OnePhantomAtMostAndNoCallIsLost)
{
    Prepared w({"past e1 4711", "contact Ann 4711 4712", "past e2 4713 Bob", "answer c1 4711", "ring c2 4712"});
    w.contactOf("Ann").saveHomeNumber("4714");
    w.runAll({"contact Eve 4719"});
    w.directory.tell(&w.contactOf("Ann"));
    EXPECT_EQ(w.disagreements(), "") << w.shown();
    w.run("hold c2");
    EXPECT_EQ(w.rowsOf().getPhantomConversation(), w.rowOf("c2"));
    w.run("ring c3 4714");
    EXPECT_EQ(w.rowsOf().getPhantomConversation(), w.rowOf("c2"));
    EXPECT_EQ(w.disagreements(), "") << w.shown();
    for (const char* event : {"hold c3", "combine", "end c2", "answer c3", "end c1", "hold c3", "end c3"})
    {
        w.run(event);
        EXPECT_EQ(w.disagreements(), "") << event << ": " << w.shown();
    }
}

/** History that comes together with the phantom's call belongs to the root. */
TEST(CombinedListTest, ThePhantomShowsItsCallAndLeavesHistoryToTheRoot)
{
    Prepared w({"contact Ann 4711 4712", "answer c1 4711", "ring c2 4712"});
    std::unique_ptr<Conversation> update(w.holding("c2")->clone());
    update->append(w.missed("e1", "4712"));
    w.combined.conversationUpdated(update.get());
    EXPECT_EQ(describe(*w.rowOf("c1")), "Ann: c1/1 e1");
    EXPECT_EQ(describe(*w.rowOf("c2")), "Ann: c2/10");
    EXPECT_EQ(w.rowsOf().getPhantomConversation(), w.rowOf("c2"));
}

TEST(CombinedListTest, AGroupCallNeverMakesAPhantom)
{
    Prepared w({"contact Ann 4711 4712", "group GPU 4711"});
    for (const char* event : {"ring c2 4712", "combine", "hold c2", "end GPU", "answer c2", "end c2"})
    {
        w.run(event);
        EXPECT_FALSE(w.rowsOf().hasPhantomConversation());
        EXPECT_EQ(w.disagreements(), "") << event << ": " << w.shown();
    }
}

TEST(CombinedListTest, AnotherMailboxNumberMakesBothRowsAnew)
{
    Prepared w({"past e1 4711 Old", "past e2 4712 New", "past e3 4713 Bob"});
    w.combined.voiceMailChanged("4711", "4711");
    EXPECT_EQ(w.screen.take() + join(w.directory.notes), "");
    w.combined.voiceMailChanged("4711", "4712");
    EXPECT_EQ(w.screen.take(), "deleted A deleted B new A@1 new B@1");
    EXPECT_EQ(w.shown(), "C Bob: e3 | B New: e2 | A Old: e1");
    EXPECT_EQ(w.directory.notes, Texts{"4711>4712"});
    w.combined.voiceMailChanged("", "4799");
    EXPECT_EQ(w.screen.take(), "");
    EXPECT_EQ(w.disagreements(), "");
}

TEST(CombinedListTest, LookUps)
{
    Prepared w({"past e1 4711 Ann", "contact Bob 4712 4713", "answer c1 4714"});
    w.contactOf("Bob").setUserId("u");
    w.run("combine");
    EXPECT_EQ(w.combined.getConversationThatHasAnyNumberMatching(""), nullptr);
    EXPECT_EQ(w.combined.getConversationThatHasAnyNumberMatching("4713"), w.rowOf("Bob"));
    EXPECT_EQ(w.combined.getConversationThatHasAnyNumberMatching("4799"), nullptr);
    EXPECT_EQ(w.combined.getConversation(std::string("c1")), w.rowOf("c1"));
    EXPECT_EQ(w.combined.getConversation(std::string()), nullptr);
    EXPECT_EQ(w.combined.getConversation(0U), w.rowOf("c1"));
    EXPECT_EQ(w.combined.getConversation(9U), nullptr);
    EXPECT_EQ(w.combined.getConversationByContact("", "", "4711"), w.rowOf("e1"));
    EXPECT_EQ(w.combined.getDirectConversationByContact("", "", "4711"), w.rowOf("e1"));
    EXPECT_EQ(w.combined.getConversationForUser("u"), w.rowOf("Bob"));
    EXPECT_EQ(w.combined.getConversationForUser("v"), nullptr);
    EXPECT_TRUE(w.combined.hasConversationWithConversationId(w.idOfRow("e1")));
    EXPECT_FALSE(w.combined.hasConversationWithConversationId(""));
    w.combined.setSources({&w.aggregator}, true);
    EXPECT_EQ(w.combined.getConversationForUser("u"), nullptr);
}

TEST(CombinedListTest, WhatOnlyASourceHasIsFoundAsATemporaryCopy)
{
    Prepared w({"past e1 4711 Ann", "past e2 4715 Cid"});
    w.contactIs("Bob", "4712", "4713");
    const std::string bob = w.contactOf("Bob").getConversationId();
    w.combined.deleteConversations();
    w.rowsOf().findAndDeleteConversationsThatMatch(ConversationListConditions::ConversationIDCondition(bob));
    w.combined.conversationUpdated(nullptr);
    Conversation* found = w.combined.getConversationByConversationID(bob);
    ASSERT_NE(found, nullptr);
    EXPECT_NE(found, &w.contactOf("Bob"));
    EXPECT_FALSE(w.rowsOf().contains(found));
    EXPECT_EQ(w.combined.getConversationByConversationID(bob), found) << "it is kept";
    EXPECT_EQ(w.combined.getConversationByConversationID("nobody's"), nullptr);
    EXPECT_EQ(w.combined.getConversationByConversationID(""), nullptr);
    w.screen.take();
    w.combined.makeConversationPermanent(bob);
    EXPECT_EQ(w.rowOf("Bob"), found);
    EXPECT_EQ(w.screen.take().substr(0, 4), "new ");
    w.combined.makeTemporaryConversationPermanent(nullptr);
    w.combined.makeConversationPermanent("nobody's");
    EXPECT_EQ(w.screen.take(), "");
}

TEST(CombinedListTest, ARowThatASourceKnowsAContactOfIsFoundWithIt)
{
    Prepared w({"past e1 4711"});
    w.knowContact(w.idOfRow("e1"), "Ann", "4711");
    Conversation* found = w.combined.getConversationByConversationID(w.idOfRow("e1"));
    EXPECT_NE(found, w.rowOf("e1"));
    EXPECT_EQ(describe(*found), "Ann: e1");
    EXPECT_EQ(w.shown(), "A 4711: e1");
    w.combined.makeTemporaryConversationPermanent(found);
    EXPECT_EQ(w.shown(), "A Ann: e1") << "folded into the row";
    EXPECT_EQ(w.screen.take(), "moved A@0");
    w.rowOf("e1")->setTemporary(true);
    w.combined.clearTemporaryConversations();
    EXPECT_EQ(w.screen.take(), "deleted A");
    EXPECT_EQ(w.directory.notes, Texts{"clear"});
    w.runAll({"combine", "answer c1 4711"});
    w.rowOf("c1")->setTemporary(true);
    w.combined.clearTemporaryConversations();
    EXPECT_EQ(w.shown(), "A Ann: c1/1 e1") << "a live call keeps its row";
}

TEST(CombinedListTest, DeletingTakesHistoryFirstAndTheContactOnlyWithoutAny)
{
    Prepared w({"past e1 4711", "contact Ann 4711 4712", "past e2 4713 Bob"});
    w.combined.deleteConversation("");
    w.combined.deleteConversation("nobody's");
    w.screen.take();
    w.directory.notes.clear();
    w.run("delete e1");
    EXPECT_EQ(w.screen.take(), "deleted A list");
    EXPECT_EQ(w.shown(), "B Bob: e2 | A Ann:");
    EXPECT_TRUE(w.directory.notes.empty());
    EXPECT_EQ(w.journal.held.size(), 1U);
    w.run("delete Ann");
    EXPECT_EQ(w.shown(), "B Bob: e2");
    EXPECT_EQ(w.directory.notes, Texts{"delete"});
    w.runAll({"contact Eve 4714", "answer c1 4711"});
    w.combined.deleteConversations();
    EXPECT_EQ(w.screen.take(), "list");
    EXPECT_EQ(w.directory.notes, Texts{"delete all"});
    EXPECT_EQ(w.rowsOf().size(), 2U) << w.shown();
    EXPECT_EQ(w.disagreements(), "");
}

TEST(CombinedListTest, ACallThatEndsTakesAlongWhatWasShownBecauseOfIt)
{
    Prepared w({"contact Ann 4711", "contact Eve 4712", "answer c1 4711", "hold c1", "answer c2 4712", "ring c3 4713"});
    w.rowOf("c1")->setTemporary(true);
    for (const char* call : {"c1", "c2", "c3"})
    {
        w.combined.removeActiveItemForCall("unknown", nullptr);
        w.calls.clearActiveCallEvent(call);
    }
    EXPECT_EQ(w.shown(), "B Eve:");
    w.run("answer c4 4712");
    w.combined.removeActiveItemForCall("c4", &w.directory);
    EXPECT_EQ(w.shown(), "") << "told by the row's own source";
}

TEST(CombinedListTest, MarkingMissedCallsAsSeenReachesAllSources)
{
    Prepared w({"past e1 4711", "past e2 4712"});
    w.journal.held.front()->setViewed(false);
    w.run("regroup");
    EXPECT_EQ(w.rowsOf().getCurrentEventNotifications().first, 1);
    EXPECT_TRUE(w.combined.markAllMissedCallsRead());
    EXPECT_EQ(w.rowsOf().getCurrentEventNotifications().first, 0);
    EXPECT_EQ(w.list().getCurrentEventNotifications().first, 0);
    EXPECT_EQ(w.directory.notes, Texts{"read"});
}
} // namespace
