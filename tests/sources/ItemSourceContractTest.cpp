#include "ConversationAPI/JournalServiceConversationItemSource.h"
#include "host/Journal.h"
#include "sources/NetworkLogFeed.h"

namespace
{
using namespace Sources;

/** Calls of call control, each under its caller's name. They need no subscription. */
struct LiveCallFeed : Testing::Phone
{
    void subscribe() {}
    void add(const std::string& name)
    {
        source.activeCallEvent(World::call(name, ActiveCall::CONNECTED, numberOf(name), name));
    }
    void remove(const std::string& name) { source.clearActiveCallEvent(name); }

    ActiveCallConversationItemSource source{&items};
};

struct JournalFeed : Testing::Phone
{
    void subscribe()
    {
        source.setJournalServiceSubscribed(true);
        source.notifyObserversForSubscription();
    }
    void add(const std::string& name)
    {
        Host::JournalCall call;
        MissedCallItem entry;
        call.info.setCallTime("2026-03-05T09:00:00Z");
        call.setParty(party(numberOf(name), name));
        service.getCall(entryIds[name] = service.addCall(call), entry);
        source.missedCallsUpdate(entry, entryIds[name], JournalServiceObserverIfc::ADDED);
    }
    void remove(const std::string& name)
    {
        service.deleteEntries({entryIds[name]});
        source.notifyObserver();
    }

    Host::Journal service;
    std::map<std::string, std::string> entryIds;
    JournalServiceConversationItemSource source{&service, &items, &Testing::digitAnalysis()};
};

/** Keeps what it is given and counts what it is told. */
struct ItemObserver : ConversationItemSourceObserverIfc
{
    void conversationItemsChanged() override { note(); }
    void conversationItemChanged(ConversationItem* item) override { note(item); }
    void newConversationItem(ConversationItem* item) override { note(item); }
    void sourceSubscribed() override { note(); }
    bool removeActiveConversationItemForCall(const std::string&) override { return note(); }
    bool note(ConversationItem* item = nullptr)
    {
        given.emplace_back(item);
        ++timesTold;
        std::exchange(reaction, [] {})();
        return true;
    }
    int take() { return std::exchange(timesTold, 0); }
    int timesTold = 0;
    std::vector<std::unique_ptr<ConversationItem>> given;
    std::function<void()> reaction = [] {}; ///< runs once
};

template <typename Feed>
struct ItemSourceContract : testing::Test, Feed
{
    Texts names()
    {
        std::set<std::string> all;
        for (ConversationItem* item : this->source.getConversationItems())
        {
            all.insert(std::unique_ptr<ConversationItem>(item)->participants().front().getName());
        }
        return Texts(all.begin(), all.end());
    }

    ItemObserver observer, other;
};

using ItemFeeds = testing::Types<LiveCallFeed, JournalFeed, NetworkLogFeed>;
TYPED_TEST_SUITE(ItemSourceContract, ItemFeeds);

TYPED_TEST(ItemSourceContract, TellsWhoObservesItNowOfEachChangeOnce)
{
    auto& t = *this;
    const bool needsSubscription = !std::is_same_v<TypeParam, LiveCallFeed>;
    t.add("Ann");
    t.source.setObserver(&t.observer);
    EXPECT_EQ(t.names().empty(), needsSubscription);
    t.subscribe();
    EXPECT_EQ(t.observer.take() == 1, needsSubscription);
    EXPECT_EQ(t.names(), Texts{"Ann"});
    t.source.setObserver(&t.observer);
    t.observer.reaction = [&t]
    {
        EXPECT_EQ(t.names(), (Texts{"Ann", "Bob"})) << "what is told is so already";
        t.add("Cleo");
    };
    t.add("Bob");
    t.observer.reaction = [&t] { t.remove("Dan"); };
    t.add("Dan");
    EXPECT_EQ(t.observer.take(), 4);
    t.observer.reaction = [&t] { t.source.setObserver(&t.other); };
    t.remove("Ann");
    t.other.reaction = [&t] { t.source.clearObserver(); };
    t.add("Eve");
    t.remove("Cleo");
    EXPECT_EQ(t.observer.take() + t.other.take(), 2);
    EXPECT_EQ(t.names(), (Texts{"Bob", "Eve"}));
}

TYPED_TEST(ItemSourceContract, OutlivesTheAggregatorThatItFeeds)
{
    auto& t = *this;
    t.subscribe();
    t.add("Ann");
    const Testing::Items held = t.source.getConversationItems();
    {
        ConversationItemAggregator aggregator(&t.conversations);
        aggregator.addItemSource(&t.source);
        t.add("Bob");
        t.remove("Ann");
        ASSERT_EQ(aggregator.getConversations()->size(), 1U);
        EXPECT_EQ(aggregator.getConversations()->atIndex(0)->getContactName(), "Bob");
        aggregator.removeItemSource(&t.source);
        t.add("Cleo");
        EXPECT_EQ(aggregator.getConversations()->size(), 0U);
    }
    EXPECT_EQ(held.at(0)->participants().front().getName(), "Ann") << "the items are the caller's";
    Testing::deleteAll(held);
    t.source.setObserver(&t.observer);
    for (const Texts& unknown : {Texts{}, Texts{""}, Texts{"unknown", "", "unknown", "%n"}})
    {
        t.source.reloadCalls(unknown);
        t.source.deleteCalls(unknown);
        t.source.ageAllMissedCalls(unknown);
    }
    EXPECT_EQ(t.observer.take(), 0);
    EXPECT_EQ(t.names(), (Texts{"Bob", "Cleo"}));
}
} // namespace
