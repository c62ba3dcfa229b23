#include "AggregatorFixture.h"

namespace
{
using namespace Aggregation;

/** What may happen from inside a notification, and what causes notifications. */
struct Reentrant : World
{
    using Act = std::function<void(Reentrant&, Conversation*)>;

    Reentrant()
    {
        journal.keep(missed("e1", "4711"));
        history("e2", "4712");
        event("c1", ActiveCall::CONNECTED, "4711");
        event("c2", ActiveCall::INCOMING_CALL, "4711");
        event("c3", ActiveCall::CONNECTED, "4713");
        ann = contact("Ann", "4711", "4712");
        aggregator.addObserver(&second);
        observer.take();
        second.take();
    }

    static std::map<std::string, Act> causes()
    {
        return {
            {"new call", [](Reentrant& w, auto*) { w.event("c4", ActiveCall::INCOMING_CALL, "4712"); }},
            {"hold", [](Reentrant& w, auto*) { w.event("c1", ActiveCall::LOCAL_ON_HOLD, "4711"); }},
            {"number", [](Reentrant& w, auto*) { w.event("c1", ActiveCall::CONNECTED, "4712"); }},
            {"end", [](Reentrant& w, auto*) { w.calls.clearActiveCallEvent("c1"); }},
            {"end of the only item", [](Reentrant& w, auto*) { w.calls.clearActiveCallEvent("c3"); }},
            {"history", [](Reentrant& w, auto*) { w.history("e" + std::to_string(World::now()), "4711"); }},
            {"contact", [](Reentrant& w, auto*) { w.aggregator.conversationUpdated(w.ann.get()); }},
            {"contact without its number",
             [](Reentrant& w, auto*)
             {
                 w.aggregator.conversationUpdated(w.ann.get());
                 w.ann->setPhoneNumbers("4713", "", "", "", "4713", CallPartyIdentifier::WORK_1);
                 w.aggregator.conversationUpdated(w.ann.get());
             }},
            {"rebuild", [](Reentrant& w, auto*) { w.aggregator.conversationItemsChanged(); }},
            {"subscribed", [](Reentrant& w, auto*) { w.aggregator.sourceSubscribed(); }},
        };
    }

    static std::map<std::string, Act> reactions()
    {
        std::map<std::string, Act> all = causes();
        all["leaves"] = [](Reentrant& w, auto*) { w.aggregator.removeObserver(&w.observer); };
        all["another leaves"] = [](Reentrant& w, auto*) { w.aggregator.removeObserver(&w.second); };
        all["another comes"] = [](Reentrant& w, auto*) { w.aggregator.addObserver(&w.third); };
        all["deletes it"] = [](Reentrant& w, Conversation* told)
        { w.aggregator.deleteConversation(told ? told->getConversationId() : w.idOf("e1")); };
        all["deletes all"] = [](Reentrant& w, auto*) { w.aggregator.deleteConversations(); };
        all["reads all"] = [](Reentrant& w, auto*) { w.aggregator.markAllMissedCallsRead(); };
        all["reloads"] = [](Reentrant& w, auto*) { w.aggregator.reloadCallsForNumber("4712"); };
        all["takes the calls off"] = [](Reentrant& w, auto*)
        {
            w.aggregator.removeItemSource(&w.calls);
            w.callsAreOff = true;
        };
        all["puts a journal on"] = [](Reentrant& w, auto*) { w.aggregator.addItemSource(&w.late); };
        return all;
    }

    Recorder second, third;
    Journal late;
    std::unique_ptr<Conversation> ann;
    bool callsAreOff = false;
};

TEST(ReentrancyTest, ObserversMayDoAnythingWhileBeingTold)
{
    for (const auto& cause : Reentrant::causes())
    {
        for (const auto& reaction : Reentrant::reactions())
        {
            if (cause.first == "contact")
            {
                continue; // tells nobody
            }
            SCOPED_TRACE(reaction.first + " on " + cause.first);
            Reentrant w;
            w.late.keep(w.missed("l1", "4711"));
            const auto react = [&](Conversation* told) { reaction.second(w, told); };
            (&w.observer < &w.second ? w.observer : w.second).reaction = react;
            cause.second(w, nullptr);
            w.observer.reaction = w.second.reaction = nullptr;
            if (reaction.first == "deletes it" || reaction.first == "reloads")
            {
                w.aggregator.conversationItemsChanged(); // a deleted row takes its live call along
            }
            w.aggregator.removeItemSource(&w.late);
            if (w.callsAreOff)
            {
                EXPECT_EQ(w.holding("c2"), nullptr);
                w.aggregator.addItemSource(&w.calls);
            }
            EXPECT_EQ(w.contradictions(), "");
            w.second.take();
            w.third.take();
            w.aggregator.conversationItemsChanged();
            EXPECT_EQ(w.second.told.size(), reaction.first == "another leaves" ? 0U : 1U);
            EXPECT_EQ(w.third.told.size(), reaction.first == "another comes" ? 1U : 0U);
        }
    }
}

TEST(ReentrancyTest, ARebuildWaitsForTheOutermostNotification)
{
    for (const auto& cause : Reentrant::causes())
    {
        if (cause.first == "contact")
        {
            continue; // tells nobody
        }
        SCOPED_TRACE(cause.first);
        Reentrant w;
        int askedFor = 0, meanwhile = -1;
        const auto asks = [&](Conversation* told)
        {
            meanwhile = w.journal.timesAsked;
            w.aggregator.conversationItemsChanged();
            w.aggregator.conversationItemsChanged();
            ++askedFor;
            EXPECT_EQ(w.journal.timesAsked, meanwhile);
            EXPECT_TRUE(told == nullptr || w.list().contains(told)) << describe(*told);
        };
        w.observer.reaction = w.second.reaction = asks;
        cause.second(w, nullptr);
        EXPECT_EQ(askedFor, 2);
        EXPECT_EQ(w.journal.timesAsked, meanwhile + 1) << "once, whoever asked and how often";
        EXPECT_EQ(w.contradictions(), "");
    }
}

TEST(ReentrancyTest, WhoLeavesOrIsGoneIsNotTold)
{
    Reentrant w;
    Recorder& first = &w.observer < &w.second ? w.observer : w.second;
    Recorder& last = &w.observer < &w.second ? w.second : w.observer;
    first.reaction = [&](Conversation*) { w.aggregator.removeObserver(&last); };
    w.event("c1", ActiveCall::LOCAL_ON_HOLD, "4711");
    EXPECT_TRUE(last.take().empty());
    w.aggregator.addObserver(&last);
    first.reaction = [&](Conversation* told) { w.aggregator.deleteConversation(told->getConversationId()); };
    w.history("e5", "4714");
    EXPECT_TRUE(last.take().empty()) << "of a conversation that is no more";
    first.take();
    first.reaction = [&](Conversation*) { w.calls.clearActiveCallEvent("c3"); };
    w.calls.clearActiveCallEvent("c2");
    EXPECT_EQ(first.take(), (Texts{"ended c2", "ended c3"}));
    EXPECT_EQ(last.take(), (Texts{"ended c3", "ended c2"}));
    w.aggregator.removeObserver(nullptr);
    w.aggregator.addObserver(nullptr);
    w.aggregator.addObserver(&first);
    w.aggregator.sourceSubscribed();
    EXPECT_EQ(first.take(), (Texts{"ready", "changed"})) << "once, however often it was added";
}

TEST(ReentrancyTest, ACallEndsByTheTextOfItsOwnId)
{
    Reentrant w;
    const std::string id(40, 'c');
    w.event(id, ActiveCall::CONNECTED, "4712");
    const std::string& text = w.holding(id)->shownItem()->callIdText().str();
    w.observer.take();
    w.second.take();
    w.observer.reaction = w.second.reaction = [&w](Conversation*) { w.aggregator.getConversation("none"); };
    EXPECT_TRUE(w.aggregator.removeActiveConversationItemForCall(text));
    EXPECT_EQ(w.observer.take(), Texts{"ended " + id});
    EXPECT_EQ(w.second.take(), Texts{"ended " + id});
}

} // namespace
