#include "ConversationAPI/AggregatorConversationSource.h"
#include "ConversationAPI/DirectoryServiceConversationSource.h"
#include "ConversationAPI/IdsInUseIfc.h"
#include "aggregation/CombinedFixture.h"
#include "host/CloudNotices.h"
#include "sources/NetworkLogFeed.h"
#include "support/InMemoryDirectory.h"

namespace
{
using namespace Sources;

struct HistoryFeed : Combined
{
    HistoryFeed() : Combined(false) { journal.observer = nullptr; }
    void subscribe()
    {
        journal.observer = &aggregator;
        aggregator.sourceSubscribed();
    }
    void add(const std::string& name)
    {
        ConversationItem* item = missed(name, numberOf(name), name);
        journal.observer ? journal.add(item) : journal.keep(item);
    }

    ConversationSourceIfc& source = aggregator;
};

struct PhonebookFeed : Testing::Phone
{
    void subscribe()
    {
        service.observer = &source;
        source.phonebookDatabaseUpdated(true);
    }
    void add(const std::string& name)
    {
        service.write(Testing::entryXml({{"Firstname", name}, {"Office", numberOf(name)}}), true);
    }

    Testing::InMemoryDirectory service;
    DirectoryServiceConversationSource source{&conversations, &service, nullptr};
};

struct CloudFeed : Testing::Phone
{
    void subscribe() { service.putUser({"me", "Max", "", "", "", "", {}}) && service.logIn("me"); }
    void add(const std::string& name)
    {
        service.putUser({name, name, "", "", "", "", {}});
        service.putConversation({"with " + name, 0, "", "me", {"me", name}, false, {}});
    }

    Host::CloudService service;
    QuorvelServiceConversationSource source{&items, &conversations, nullptr};
    Host::CloudNotices notices{service, source};
};

struct CombinedFeed : HistoryFeed
{
    void add(const std::string& name)
    {
        HistoryFeed::add(name);
        combined.conversationsChanged(); // the source tells of whole lists alone
    }

    AggregatorConversationSource source{combined};
};

Texts namesIn(const ConversationList& list)
{
    std::set<std::string> names;
    std::for_each(list.begin(), list.end(), [&names](auto* one) { names.insert(one->getContactName()); });
    return Texts(names.begin(), names.end());
}

template <typename Feed>
struct ConversationSourceContract : testing::Test
{
    void begin()
    {
        feed.subscribe();
        feed.source.addObserver(&observer);
        feed.source.addObserver(&other);
    }

    Texts names() const { return namesIn(*feed.source.getConversations()); }

    const std::string& idOf(const std::string& name) const
    {
        ConversationList& list = *feed.source.getConversations();
        return list.atIndex(list.atIndex(0)->getContactName() == name ? 0 : 1)->getConversationId();
    }

    /** How much both together were told since the last time. */
    std::size_t told() { return observer.take().size() + other.take().size(); }

    Recorder observer, other;
    Feed feed;
};

using ConversationFeeds = testing::Types<HistoryFeed, NetworkLogFeed, PhonebookFeed, CloudFeed, CombinedFeed>;
TYPED_TEST_SUITE(ConversationSourceContract, ConversationFeeds);

TYPED_TEST(ConversationSourceContract, TellsEachObserverOfEachChangeOnce)
{
    auto& t = *this;
    auto& source = t.feed.source;
    t.feed.add("Ann");
    EXPECT_TRUE(t.names().empty() && source.getInUseConversationIds().empty());
    t.begin();
    source.addObserver(&t.observer);
    source.addObserver(nullptr);
    EXPECT_EQ(t.names(), Texts{"Ann"});
    t.feed.add("Bob");
    EXPECT_EQ(t.told(), 2U);
    Recorder late;
    t.observer.reaction = t.other.reaction = [&](Conversation*)
    {
        source.removeObserver(&t.observer);
        source.removeObserver(&t.other);
        source.addObserver(&late);
    };
    t.feed.add("Cleo");
    EXPECT_EQ(t.told(), 1U) << "who was told first has taken off both";
    EXPECT_TRUE(late.take().empty());
    late.reaction = [&](Conversation*) { source.removeObserver(&late); };
    t.feed.add("Dan");
    t.feed.add("Eve");
    source.removeObserver(&late);
    EXPECT_EQ(late.take().size() + t.told(), 1U);
    EXPECT_EQ(t.names(), (Texts{"Ann", "Bob", "Cleo", "Dan", "Eve"}));
}

TYPED_TEST(ConversationSourceContract, FindsByIdWhatWasNotDeleted)
{
    auto& t = *this;
    auto& source = t.feed.source;
    t.feed.add("Ann");
    t.begin();
    t.feed.add("Bob");
    const std::string ann = t.idOf("Ann");
    EXPECT_EQ(source.getConversation(ann)->getContactName(), "Ann");
    EXPECT_THAT(source.getInUseConversationIds(), testing::UnorderedElementsAre(ann, t.idOf("Bob")));
    t.told();
    source.deleteConversation(t.idOf("Ann")); // the conversation's own text, which goes with it
    EXPECT_LE(t.told(), 2U) << "once each, and of its history nobody";
    EXPECT_EQ(source.getConversation(ann), nullptr);
    EXPECT_EQ(source.getInUseConversationIds(), Texts{t.idOf("Bob")});
    if (const auto* holder = dynamic_cast<const IdsInUseIfc*>(&source))
    {
        EXPECT_TRUE(Testing::tellsTheHashesOf({t.idOf("Bob")}, *holder));
    }
    Testing::Phone elsewhere;
    const auto stranger = elsewhere.contact("Stranger", "99");
    for (const std::string unknown : {"", "unknown", "%n%s"})
    {
        EXPECT_EQ(source.getConversation(unknown), nullptr);
        EXPECT_EQ(source.getConversationForUser(unknown), nullptr);
        source.voiceMailChanged(unknown, "98");
        source.conversationUpdated(unknown.empty() ? nullptr : stranger.get());
    }
    source.clearSearchResults();
    source.deleteConversation("");
    EXPECT_EQ(t.told(), 0U);
    source.deleteConversation("unknown");
    EXPECT_LE(t.told(), 2U) << "combined rows are made anew";
    EXPECT_EQ(t.names(), Texts{"Bob"});
}

TYPED_TEST(ConversationSourceContract, WhatIsToldLivesUntilAllWereTold)
{
    auto& t = *this;
    t.begin();
    t.feed.add("Ann");
    t.observer.reaction = t.other.reaction = [&t](Conversation* told)
    {
        t.observer.reaction = t.other.reaction = nullptr;
        const ConversationList& list = *t.feed.source.getConversations();
        const std::vector<Conversation*> all(list.begin(), list.end()); // as a display has it that goes through them
        t.feed.source.deleteConversation(told ? told->getConversationId() : t.idOf("Bob"));
        EXPECT_EQ(std::count_if(all.begin(), all.end(), [](auto* one) { return one->getContactName() == "Bob"; }), 1);
        EXPECT_TRUE(!told || told->getContactName() == "Bob");
    };
    t.feed.add("Bob");
    EXPECT_EQ(t.names(), Texts{"Ann"});
    EXPECT_EQ(t.feed.source.getInUseConversationIds(), Texts{t.idOf("Ann")});
}

TYPED_TEST(ConversationSourceContract, OutlivesTheAggregatorThatItFeeds)
{
    auto& t = *this;
    t.feed.add("Ann");
    t.feed.subscribe();
    {
        ConversationAggregator aggregator;
        const ConversationList& shown = *aggregator.getConversations();
        aggregator.setSources({&t.feed.source}, true);
        aggregator.conversationSourcesReady();
        t.feed.add("Bob");
        EXPECT_EQ(namesIn(shown), (Texts{"Ann", "Bob"}));
        aggregator.deleteConversation(t.idOf("Ann"));
        EXPECT_EQ(namesIn(shown), Texts{"Bob"});
        EXPECT_EQ(t.names(), Texts{"Bob"});
        aggregator.setSources({}, true);
        t.feed.add("Cleo");
        EXPECT_EQ(namesIn(shown), Texts{});
    }
    t.feed.add("Dan");
    EXPECT_EQ(t.names(), (Texts{"Bob", "Cleo", "Dan"}));
}
} // namespace
