#include "AggregatorFixture.h"

#include <random>

namespace
{
using namespace Aggregation;

TEST(RebuildTest, GroupsTheSameWayAsItemByItem)
{
    using Change = std::function<void(ConversationItem&)>;
    const auto inConversation = [](ConversationItem& item) { item.setConversationId("abc"); };
    const auto ofContact = [](ConversationItem& item) { item.setExchangeContactId("x1"); };
    const auto ofGroup = [](ConversationItem& item)
    {
        auto& call = static_cast<MissedCallConversationItem&>(item);
        call.setGroupStatus(true);
        call.setGroupName("Sales");
    };
    const Change plain = [](ConversationItem&) {};
    const struct
    {
        const char* what;
        std::vector<std::tuple<std::string, std::string, Change>> items; ///< number, name, the rest; oldest first
        std::set<std::string> rows;
    } cases[] = {
        {"spellings of one number",
         {{"030 1234567", "Ann", plain}, {"+49301234567", "Ann", plain}, {"0301234568", "Bob", plain}},
         {"Ann: e1 e0", "Bob: e2"}},
        {"no suffix match", {{"4711", "", plain}, {"14711", "", plain}}, {"4711: e0", "14711: e1"}},
        {"names without numbers", {{"", "Ann", plain}, {"", "Ann", plain}}, {"Ann: e0", "Ann: e1"}},
        {"callers unknown",
         {{"", "", plain}, {"4711", "Ann", plain}, {"", "", plain}},
         {"Caller.Unknown.XXX: e2 e0", "Ann: e1"}},
        {"a conversation's id",
         {{"4711", "Ann", inConversation}, {"4712", "Bob", inConversation}, {"4713", "Cid", plain}},
         {"Bob: e1 e0", "Cid: e2"}},
        {"a contact's id", {{"4711", "Ann", ofContact}, {"4711", "Ann", plain}}, {"Ann: e1 e0"}},
        {"group calls",
         {{"4711", "", ofGroup}, {"4711", "", ofGroup}, {"4711", "", plain}},
         {"4711: e1 e0", "4711: e2"}},
        {"a group call of somebody unknown",
         {{"", "", plain}, {"", "", ofGroup}, {"", "", plain}},
         {"Caller.Unknown.XXX: e2 e0", "Caller.Unknown.XXX: e1"}},
    };
    for (const auto& one : cases)
    {
        World w;
        for (const auto& [number, name, change] : one.items)
        {
            ConversationItem* item = w.missed("e" + std::to_string(w.journal.held.size()), number, name);
            change(*item);
            w.journal.add(item);
        }
        for (const char* how : {"item by item", "rebuilt", "again"})
        {
            const Texts rows = w.rows();
            EXPECT_EQ(std::set<std::string>(rows.begin(), rows.end()), one.rows) << one.what << ' ' << how;
            EXPECT_EQ(rows.size(), one.rows.size());
            w.aggregator.conversationItemsChanged();
        }
    }
}

TEST(RebuildTest, CallsThatAreShownAsHeldComeBeforeHistoryButNotBeforeNewerTexts)
{
    World w;
    const auto call = [&w](const std::string& id, long time)
    {
        ActiveCall one(nullptr, id, CallPartyIdentifier("", "", id, CallPartyIdentifier::WORK_1, "", false),
                       ActiveCall::NO_CONFERENCE);
        one.setState(ActiveCall::REPRESENT_HELD_CALL);
        one.setCallInitiatedTime(time);
        return w.items.getActiveCallConversationItem(one);
    };
    for (ConversationItem* item : {w.items.getMissedCallConversationItem(25, "4711", "", ""), call("41", 22),
                                   w.items.getTextConversationItem("", 20, "4712", "", ""),
                                   w.items.getTextConversationItem("", 30, "4713", "", ""),
                                   w.items.getMissedCallConversationItem(27, "4711", "", ""), call("42", 28)})
    {
        w.journal.keep(item);
    }
    w.aggregator.conversationItemsChanged();
    Texts names;
    for (const Conversation* row : *w.aggregator.getConversations())
    {
        names.push_back(row->getContactName());
    }
    EXPECT_EQ(names, (Texts{"4713", "42", "41", "4711", "4712"}));
}

TEST(RebuildTest, IdentifiersSurvive)
{
    World w;
    w.history("e1", "4711", "Ann");
    w.history("e2", "", "", "Caller.Unknown.XXX");
    w.history("e3", "4713", "Cid");
    w.event("c1", ActiveCall::CONNECTED, "4711", "Ann");
    w.event("c2", ActiveCall::INCOMING_CALL, "4711");
    w.event("c3", ActiveCall::OUTGOING_CALL, "4714", "Dan");
    w.event("c4", ActiveCall::OUTGOING_CALL, "4715", "", "CTI Assisted");
    w.event("c5", ActiveCall::OUTGOING_CALL, "", "Eve");
    w.event("c1", ActiveCall::REMOTE_ON_HOLD, "4711");
    const auto ids = [&w]
    {
        Texts all;
        for (const char* known : {"e1", "c1", "c2", "e2", "e3", "c3", "c4", "c5"})
        {
            all.push_back(known + w.idOf(known));
        }
        return all;
    };
    const Texts before = ids();
    w.observer.take();
    for (int i = 0; i < 3; ++i)
    {
        w.aggregator.conversationItemsChanged();
        EXPECT_EQ(ids(), before);
        EXPECT_EQ(w.observer.take(), (Texts{"changed"}));
        EXPECT_EQ(w.contradictions(), "");
    }
    EXPECT_EQ(w.rows(), (Texts{"Ann: c1/3 e1", "Eve: c5/11", "CTI Assisted: c4/11", "Dan: c3/11", "*Ann: c2/10",
                               "Cid: e3", "Caller.Unknown.XXX: e2"}));
    for (const char* call : {"c1", "c2", "c3", "c4", "c5"})
    {
        w.calls.clearActiveCallEvent(call);
    }
    w.aggregator.sourceSubscribed();
    EXPECT_EQ(w.idOf("e1"), before[0].substr(2));
    w.event("c3", ActiveCall::OUTGOING_CALL, "4714", "Dan");
    EXPECT_NE("c3" + w.idOf("c3"), before[5]) << "nobody used it any more";
}

TEST(RebuildTest, WhatMustNotBeDeletedIsNotOffered)
{
    World w;
    w.items.setVoiceMailNumber("900");
    const auto add = [&w](ConversationItem* item, bool deletable)
    {
        item->setDeleteOnConversationList(deletable);
        item->setEntryId("e" + std::to_string(w.journal.held.size()));
        w.journal.add(item);
    };
    add(w.missed("", "4711"), true);
    add(w.missed("", "4712"), false);
    add(w.items.getVoicemailConversationItem(++World::now()), true);
    add(w.missed("", "4711"), true);
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_TRUE(w.holding("e0")->isDeletable());
        EXPECT_FALSE(w.holding("e1")->isDeletable());
        EXPECT_FALSE(w.holding("e2")->isDeletable());
        w.aggregator.conversationItemsChanged();
    }
}
} // namespace
