#include "aggregation/AggregatorFixture.h"

namespace
{
using namespace Aggregation;

class CallObserver : public ConversationItemSourceObserverIfc
{
  public:
    void conversationItemsChanged() override { told.push_back("rebuild"); }
    void conversationItemChanged(ConversationItem* item) override { note("changed ", item); }
    void newConversationItem(ConversationItem* item) override { note("new ", item); }
    bool removeActiveConversationItemForCall(const std::string& callId) override
    {
        told.push_back("remove " + callId);
        std::exchange(whenRemoving, [] {})();
        return finds;
    }
    void sourceSubscribed() override { told.push_back("subscribed"); }

    Texts told;
    bool finds = true;
    std::function<void()> whenRemoving = [] {};

  private:
    void note(const std::string& what, ConversationItem* item)
    {
        const std::unique_ptr<ConversationItem> owned(item);
        const auto parties = item->getParticipantsCopy();
        std::string text = what + describe(*item);
        for (const ConversationParticipant& one : parties)
        {
            text += " " + one.getName() + "," + one.getNumber();
        }
        told.push_back(text + (item->lastNumber().empty() ? "" : " last " + item->lastNumber()));
    }
};

class ActiveCallSourceTest : public testing::Test
{
  protected:
    ActiveCallSourceTest() { source.setObserver(&observer); }

    ConversationParticipantFactory participants{nullptr};
    ConversationItemFactory items{&participants, nullptr};
    ActiveCallConversationItemSource source{&items};
    CallObserver observer;
};

TEST_F(ActiveCallSourceTest, TellsWhatAnEventChanges)
{
    const auto call = [](auto... details) { return World::call("c1", details...); };
    const auto conference = [](const std::string& number, const std::string& second)
    {
        return ActiveCall(nullptr, "c1", World::party(number, "Ann"), World::party(second, ""),
                          ActiveCall::SMALL_CONFERENCE);
    };
    ActiveCall forwarded = call(ActiveCall::CONNECTED, "11", "Ann", "Lee");
    const CallPartyIdentifier secretary = World::party("99", "Eve");
    forwarded.setForwardParty(&secretary);
    ActiveCall withIcon = call(ActiveCall::CONNECTED, "11", "Ann", "Lee");
    withIcon.setHDAudioIconStatus(true);
    const ActiveCall connected = call(ActiveCall::CONNECTED, "11", "Ann", "Lee");
    const struct
    {
        const char* what;
        ActiveCall before, event;
        Texts told;
    } cases[] = {
        {"the same again", connected, connected, {}},
        {"an icon alone shows nothing", connected, withIcon, {}},
        {"a hold", connected, call(ActiveCall::LOCAL_ON_HOLD, "11", "Ann", "Lee"), {"changed c1/2 Ann Lee,11 last 11"}},
        {"a hold that names nobody", connected, call(ActiveCall::LOCAL_ON_HOLD, ""), {"changed c1/2 Ann Lee,11"}},
        {"another number",
         connected,
         call(ActiveCall::CONNECTED, "12", "Ann", "Lee"),
         {"remove c1", "new c1/1 Ann Lee,12 last 12"}},
        {"another number without a name",
         connected,
         call(ActiveCall::LOCAL_ON_HOLD, "12"),
         {"remove c1", "new c1/2 ,12 last 12"}},
        {"another name",
         connected,
         call(ActiveCall::CONNECTED, "11", "Bea", "Lee"),
         {"remove c1", "new c1/1 Bea Lee,11 last 11"}},
        {"details only",
         connected,
         call(ActiveCall::CALL_INFO_UPDATE, "11", "Bea"),
         {"remove c1", "new c1/1 Bea Lee,11 last 11"}},
        {"no details",
         connected,
         call(ActiveCall::CALL_INFO_UPDATE, "11"),
         {"remove c1", "new c1/1 Ann Lee,11 last 11"}},
        {"a forwarding", connected, forwarded, {"remove c1", "new c1/1 Ann Lee,11 last 11"}},
        {"the party of a computer's call",
         call(ActiveCall::OUTGOING_CALL, "11", "", "CTI Assisted"),
         call(ActiveCall::OUTGOING_CALL, "11"),
         {"remove c1", "new c1/11 ,11 last 11"}},
        {"a clearing", connected, call(ActiveCall::CLEARING, "11"), {"changed c1/15 Ann Lee,11 last 11"}},
        {"a conference again", conference("11", "12"), conference("11", "12"), {"changed c1/8 Ann,11 ,12 last 11"}},
        {"a conference of others", conference("11", "12"), conference("13", "14"), {"changed c1/8 Ann,13 ,14 last 13"}},
        {"a call becomes a conference",
         connected,
         conference("11", "12"),
         {"remove c1", "new c1/8 Ann Lee,11 ,12 last 11"}},
    };
    for (const auto& one : cases)
    {
        ActiveCallConversationItemSource fresh(&items);
        fresh.activeCallEvent(one.before);
        fresh.setObserver(&observer);
        observer.told.clear();
        fresh.activeCallEvent(one.event);
        fresh.callDetailsUpdatedEvent(call(ActiveCall::CLEARING, "77"));
        EXPECT_EQ(observer.told, one.told) << one.what;
    }
}

TEST_F(ActiveCallSourceTest, ACallLivesFromItsFirstEventUntilItIsCleared)
{
    source.activeCallEvent(World::call("", ActiveCall::CONNECTED, "11"));
    source.clearActiveCallEvent("");
    source.clearActiveCallEvent("c9");
    EXPECT_TRUE(observer.told.empty());
    source.activeCallEvent(World::call("c1", ActiveCall::INCOMING_CALL, "11"));
    EXPECT_TRUE(source.callIsCached("c1") && source.callNotCached("c2") && source.callNotCached(""));
    source.clearActiveCallEvent("c1");
    source.clearActiveCallEvent("c1");
    EXPECT_EQ(observer.told, (Texts{"new c1/10 ,11 last 11", "remove c1"}));
    source.activeCallEvent(World::call("c2", ActiveCall::CONNECTED, "11"));
    observer.told.clear();
    observer.finds = false;
    source.clearActiveCallEvent("c2");
    EXPECT_EQ(observer.told, (Texts{"remove c2", "rebuild"}));
}

TEST_F(ActiveCallSourceTest, RemembersTheCallsWithoutAnObserver)
{
    source.clearObserver();
    source.activeCallEvent(World::call("c10", ActiveCall::CONNECTED, "11", "Ann"));
    source.activeCallEvent(World::call("c9", ActiveCall::INCOMING_CALL, "12"));
    source.activeCallEvent(World::call("c10", ActiveCall::LOCAL_ON_HOLD, ""));
    source.clearActiveCallEvent("c9");
    source.activeCallEvent(World::call("a", ActiveCall::CALL_WAITING, "14"));
    source.deleteAllCalls();
    source.deleteCalls({"a"});
    source.reloadCalls({"a"});
    EXPECT_TRUE(source.ageAllMissedCalls({"a"}));
    EXPECT_EQ(source.getItemSourceType(), 3);
    Texts all;
    for (ConversationItem* item : source.getConversationItems())
    {
        all.push_back(describe(*item) + " " + item->lastNumber());
        delete item;
    }
    EXPECT_EQ(all, (Texts{"a/22 14", "c10/2 11"}));
    EXPECT_TRUE(observer.told.empty());
}

TEST_F(ActiveCallSourceTest, WhatHappensWhileACallMovesHolds)
{
    source.activeCallEvent(World::call("c1", ActiveCall::CONNECTED, "11"));
    observer.told.clear();
    observer.whenRemoving = [this] { source.clearObserver(); };
    source.activeCallEvent(World::call("c1", ActiveCall::CONNECTED, "12"));
    EXPECT_EQ(observer.told, (Texts{"remove c1"})) << "the observer left";
    source.setObserver(&observer);
    observer.told.clear();
    observer.whenRemoving = [this] { source.clearActiveCallEvent("c1"); };
    source.activeCallEvent(World::call("c1", ActiveCall::CONNECTED, "13"));
    EXPECT_EQ(observer.told, (Texts{"remove c1", "remove c1"})) << "the call ended";
    EXPECT_TRUE(source.callNotCached("c1"));
}
} // namespace
