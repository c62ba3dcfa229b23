#include "AggregatorFixture.h"

namespace
{
using namespace Aggregation;

class SourceRequestsTest : public testing::Test
{
  protected:
    SourceRequestsTest()
    {
        w.journal.name = "journal ";
        network.name = "network ";
        w.journal.notes = network.notes = &asked;
        w.aggregator.addItemSource(&network);
        w.history("e1", "4711", "Ann");
        w.history("e2", "4712", "Bob");
        network.add(w.missed("n1", "4711", "Ann"));
        w.observer.take();
    }

    Texts takeAsked() { return std::exchange(asked, {}); }

    Texts asked;
    Journal network;
    World w;
};

TEST_F(SourceRequestsTest, DeletingAConversationDeletesItsEntriesEverywhere)
{
    w.aggregator.deleteConversation("");
    w.aggregator.deleteConversation("unknown");
    EXPECT_TRUE(takeAsked().empty());
    w.aggregator.deleteConversation(w.idOf("e1"));
    EXPECT_EQ(takeAsked(), (Texts{"journal delete e1 n1", "network delete e1 n1"}));
    EXPECT_EQ(w.rows(), (Texts{"Bob: e2"}));
    EXPECT_TRUE(w.observer.take().empty());
    const auto reportsAtOnce = [this] { w.aggregator.conversationItemsChanged(); };
    w.history("e3", "4711");
    w.journal.whenCalled = network.whenCalled = reportsAtOnce;
    w.aggregator.deleteConversation(w.idOf("e3"));
    EXPECT_EQ(w.rows(), (Texts{"Bob: e2"})) << "a source that reports at once leaves nothing dangling";
    EXPECT_EQ(w.contradictions(), "");
    w.event("c1", ActiveCall::CONNECTED, "4713");
    w.aggregator.deleteConversations();
    EXPECT_EQ(w.rows(), (Texts{"4713: c1/1"})) << "a live call is not history";
}

TEST_F(SourceRequestsTest, DeletingAllTellsNobody)
{
    w.event("c1", ActiveCall::CONNECTED, "4711");
    w.observer.take();
    const std::string id = w.idOf("c1");
    w.aggregator.deleteConversations();
    EXPECT_EQ(takeAsked(), (Texts{"journal deleteAll", "network deleteAll"}));
    EXPECT_EQ(w.rows(), (Texts{"4711: c1/1"}));
    EXPECT_EQ(w.idOf("c1"), id);
    EXPECT_TRUE(w.observer.take().empty());
}

TEST_F(SourceRequestsTest, AChangedMailboxNumberReloadsTheOldThenTheNew)
{
    w.aggregator.reloadCallsForNumber("4799");
    w.aggregator.reloadCallsForNumber("");
    EXPECT_TRUE(takeAsked().empty());
    w.aggregator.voiceMailChanged("4712", "4711");
    EXPECT_EQ(takeAsked(),
              (Texts{"journal reload e2", "network reload e2", "journal reload e1 n1", "network reload e1 n1"}));
    EXPECT_EQ(w.rows(), (Texts{"Bob: e2", "Ann: n1 e1"}));
    EXPECT_EQ(w.observer.take(), (Texts{"updated Bob: e2", "updated Ann: e1", "updated Ann: n1 e1"}));
    w.journal.whenCalled = [this] { w.aggregator.deleteConversations(); };
    w.aggregator.reloadCallsForNumber("4711");
    EXPECT_TRUE(w.rows().empty());
}

TEST_F(SourceRequestsTest, MarkingAsReadReachesEverySource)
{
    const auto unseen = [this](const std::string& entry)
    {
        ConversationItem* item = w.holding(entry)->getConversationItems().front();
        item->setViewed(false);
        return item;
    };
    ConversationItem* missed = unseen("e2");
    ConversationItem* answered = unseen("e1");
    static_cast<MissedCallConversationItem*>(answered)->setAnswerStatus(true);
    w.aggregator.markAllMissedCallsRead();
    EXPECT_EQ(takeAsked(), (Texts{"journal age e1 n1 e2", "network age e1 n1 e2"})) << "though the first one failed";
    EXPECT_TRUE(missed->getViewed());
    EXPECT_FALSE(answered->getViewed()) << "somebody else answered";
}

TEST_F(SourceRequestsTest, SourcesComeAndGo)
{
    Journal one, two, empty;
    one.keep(w.missed("o1", "4713"));
    two.keep(w.missed("t1", "4713"));
    two.keep(nullptr);
    std::vector<ConversationItemSourceIfc*> sources = {&one, nullptr, &empty, &two};
    w.aggregator.addItemSources(sources);
    EXPECT_EQ(w.observer.take(), (Texts{"changed"})) << "one rebuild for all";
    EXPECT_EQ(w.rows().front(), "4713: t1 o1");
    w.aggregator.removeItemSource(&empty);
    w.aggregator.removeItemSource(nullptr);
    w.aggregator.addItemSource(nullptr);
    w.aggregator.addItemSource(&empty);
    EXPECT_TRUE(w.observer.take().empty());
    w.aggregator.addItemSource(&one);
    w.aggregator.removeItemSource(&one);
    EXPECT_EQ(w.observer.take(), (Texts{"changed", "changed"}));
    EXPECT_EQ(w.rows().front(), "4713: t1") << "however often it was added";
    EXPECT_EQ(one.observer, nullptr);
    EXPECT_EQ(two.observer, &w.aggregator);
}

} // namespace
