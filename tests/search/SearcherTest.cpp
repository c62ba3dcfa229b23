#include "ConversationAPI/SearchableConversationSource.h"
#include "ConversationAPI/WSIConversationSearchInterface.h"
#include "aggregation/CombinedFixture.h"
#include "search/SearchFixture.h"

namespace
{
using namespace Searching;

// Cases are told as text: priorities of the sources, what happens, what sources and receiver hear.

TEST(Searcher, AsksSourcesByPriorityAndEndsWithTheFirst)
{
    const struct
    {
        const char *priorities, *steps, *notes;
    } cases[] = {
        {"302", "start s1 a, results s1 2, end s1", "0? a, got 0:a 1, 2? a s1, 3? a s1, got x 2, ended"},
        // a second end ends nothing
        {"02", "start s1 a, end s1, results s1 3, end s1, cancel",
         "0? a, got 0:a 1, 2? a s1, ended, got x 3, 0- s1, 2- s1"},
        // answers to an old search
        {"02", "start s1 a, start s2 b, results s1 2, end s1, end s2",
         "0? a, got 0:a 1, 2? a s1, 0? b, got 0:b 1, 2? b s2, ended"},
        {"", "start s1 a, cancel", "got 1, ended"},
        // the network's directory alone, and when there is none
        {"012", "network, start s1 a, end s1", "1? a, got 1:a 1, ended"},
        {"02", "network, start s1 a", "0? a, got 0:a 1, ended"},
        // nothing local
        {"23", "start s1 a, cancel, results s1 3, end s1", "2? a, got 2:a 1, 3? a s1, 2- s1, 3- s1, ended"},
        {"02", "cancel", "0- , 2- "},
        // a local search beside another
        {"02", "start s1 a, local b, end s1", "0? a, got 0:a 1, 2? a s1, 0? b, got 0:b 1, ended, ended"},
        // two of a priority
        {"002", "start s1 a, end s1", "0? a, got 0:a 1, 2? a s1, ended"},
        // what happens while somebody is told
        {"023", "on 2? a s1: end s1, start s1 a", "0? a, got 0:a 1, 2? a s1, ended, 3? a s1"},
        {"023", "on got 0:a 1: start s2 b, start s1 a, end s2",
         "0? a, got 0:a 1, 0? b, got 0:b 1, 2? b s2, 3? b s2, ended"},
        {"023", "on got 0:a 1: cancel, start s1 a", "0? a, got 0:a 1, 0- s1, 2- s1, 3- s1, ended"},
        {"023", "on 2? a s1: start s2 b, start s1 a, end s2",
         "0? a, got 0:a 1, 2? a s1, 0? b, got 0:b 1, 2? b s2, 3? b s2, ended"},
        {"02", "on 0? a: start s2 b, start s1 a, end s2", "0? a, 0? b, got 0:b 1, 2? b s2, ended"},
        {"023", "on 2? a s1: remove, start s1 a, end s1", "0? a, got 0:a 1, 2? a s1, ended"},
        // whoever leaves is to forget the searcher, and the last one ends the search
        {"02", "start s1 a, remove, end s1, cancel", "0? a, got 0:a 1, 2? a s1, 2- s1, ended, 0- s1"},
        {"023", "start s1 a, remove, end s1", "0? a, got 0:a 1, 2? a s1, 3? a s1, 3- s1, ended"},
        {"02", "start s1 a, end s1, remove", "0? a, got 0:a 1, 2? a s1, ended, 2- s1"},
        {"023", "start s1 a, remove 0, remove 1, remove 2", "0? a, got 0:a 1, 2? a s1, 3? a s1, 2- s1, 3- s1, ended"},
        {"023", "on 2? a s1: remove 1, start s1 a, end s1", "0? a, got 0:a 1, 2? a s1, 2- s1, 3? a s1, ended"},
        {"02", "on 2? a s1: remove 1, start s1 a", "0? a, got 0:a 1, 2? a s1, 2- s1, ended"},
        {"02", "on ended: start s2 b, start s1 a, cancel, end s2",
         "0? a, got 0:a 1, 2? a s1, 0- s1, 2- s1, ended, 0? b, got 0:b 1, 2? b s2, ended"},
    };
    for (const auto& one : cases)
    {
        Bench bench(one.priorities);
        bench.run(one.steps);
        EXPECT_EQ(bench.notes, one.notes) << one.steps;
        EXPECT_FALSE(bench.searcher.isSearching()) << one.steps;
    }
}

TEST(Searcher, OnlyTheSourceItselfIsRemoved)
{
    Bench bench("00");
    bench.searcher.removeSearchableConversationSource(bench.sources[1].get());
    bench.searcher.addSearchableConversationSource(nullptr);
    bench.run("local a");
    bench.searcher.removeSearchableConversationSource(bench.sources[0].get());
    bench.run("local a");
    EXPECT_EQ(bench.notes, "0? a, got 0:a 1, ended, got 1, ended");
}

TEST(Searcher, TheAggregatorAnswersInListOrder)
{
    Aggregation::Combined world;
    SearchableConversationSource local(&world.items);
    for (const char* name : {"Ann", "Bob", "Hannah"})
    {
        world.contactIs(name, name + std::string("1"), "");
    }
    local.setSources({&world.directory}, true);
    EXPECT_EQ(local.getMatchingConversationIds("ANN").size(), 2U);
    EXPECT_EQ(local.getMatchingConversationIds("").size(), 3U);
    EXPECT_EQ(local.getSourceTypeWithPriority(), 0U);
    local.setSources({}, false);
}

/** A web service that writes down what it is asked. */
struct WebService : WSIServiceIfc, WSIServiceConversationObserverIfc
{
    void search(const std::string& text, int kind, int max, std::vector<WSIItem>& items) override
    {
        asked.push_back(text + " " + std::to_string(kind) + " " + std::to_string(max));
        items.resize(2);
    }
    bool searchPhonebook(const std::string& digits, std::vector<WSIItem>&) override
    {
        asked.push_back(digits);
        return true;
    }
    void deleteItem(const std::string&) override {}
    void wsiSearchResults(const std::string& searchId, std::vector<WSIItem> items) override
    {
        asked.push_back(searchId + "=" + items[0].searchId + items[1].searchId);
    }
    void wsiSearchEnded(const std::string&) override { asked.push_back("ended"); }
    void wsiSearchResponseEvent(const WSIItem&) override {}

    std::vector<std::string> asked;
};

TEST(WebServiceSearch, AsksOnlyWhatTheServiceCanAnswer)
{
    WebService service;
    WSIConversationSearchInterface search(&service);
    std::vector<WSIItem> found;
    search.getMatchingConversationIds("ann", "s1", nullptr);
    EXPECT_FALSE(search.searchSystemPhonebook("4711", found));
    search.addWSISource(&service);
    search.getMatchingConversationIds("", "s1", nullptr);
    search.getMatchingConversationIds("ann", "s1", nullptr);
    for (const char* text : {"", "47", "47a1", "+471", "47 11"})
    {
        EXPECT_FALSE(search.searchSystemPhonebook(text, found)) << text;
    }
    EXPECT_TRUE(search.searchSystemPhonebook("471", found));
    EXPECT_EQ(service.asked, (std::vector<std::string>{"ann 4 50", "s1=s1s1", "471"}));
}
} // namespace
