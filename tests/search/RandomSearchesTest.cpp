#include "search/SearchFixture.h"

#include <random>

namespace
{
using namespace Searching;

/** Answers a search when it likes: at once, later, more than once, also after it was cancelled. */
struct Erratic : Source
{
    Erratic(int place, std::mt19937& chance) : Source(place, [](const auto&) {}), random(chance) {}
    std::vector<std::string> getMatchingConversationIds(std::string text) override { return {text}; }
    void getMatchingConversationIds(const std::string&, const std::string& id,
                                    ConversationSearchObserverIfc* observer) override
    {
        owed.push_back({id, observer});
        maybeAnswer();
    }
    void cancelSearch(const std::string&) override { maybeAnswer(); }

    void answer()
    {
        if (owed.empty())
        {
            return;
        }
        const auto [id, observer] = owed[random() % owed.size()];
        if (random() % 3 == 0)
        {
            observer->searchEnded(id);
        }
        else
        {
            observer->searchResults(id, {id}, ConversationSearchObserverIfc::DIRECTORY_RESULTS);
        }
    }

    void maybeAnswer()
    {
        if (random() % 4 == 0)
        {
            answer();
        }
    }

    std::mt19937& random;
    std::vector<std::pair<std::string, ConversationSearchObserverIfc*>> owed;
};

/** Text and id of a search are the same, and so is every result of it. */
struct Receiver : SearchResultsReceiver
{
    Receiver(ConversationSearcher& asked, std::mt19937& chance) : searcher(asked), random(chance) {}

    void receiveSearchResults(const std::vector<std::string>& ids, SearchResultsType) override
    {
        EXPECT_EQ(ids.at(0), current) << "a result of an old search";
        react(8);
    }
    void receiveSearchEnded() override
    {
        EXPECT_EQ(++ends[ending.empty() ? current : ending], 1);
        react(8);
    }

    void react(unsigned seldom)
    {
        if (random() % seldom == 0)
        {
            random() % 3 == 0 ? cancel() : start();
        }
    }

    void start()
    {
        current = "s" + std::to_string(++count);
        ending.clear();
        ends[current] = 0;
        searcher.startSearch(current, current, this);
    }

    /** Afterwards the search has had its end. */
    void cancel()
    {
        const std::string cancelled = current;
        ending = std::exchange(current, "");
        searcher.cancelSearch();
        EXPECT_EQ(ends.count(cancelled) == 0 ? 1 : ends[cancelled], 1) << cancelled;
    }

    ConversationSearcher& searcher;
    std::mt19937& random;
    std::string current, ending; ///< ids; `ending` while a search is cancelled
    int count = 0;
    std::map<std::string, int> ends;
};

TEST(RandomSearches, NoOldResultsAndOneEnd)
{
    for (unsigned seed = 1; seed <= 200; ++seed)
    {
        std::mt19937 random(seed);
        ConversationSearcher searcher;
        Erratic local(0, random), directory(2, random), webService(3, random);
        for (Erratic* source : {&webService, &local, &directory})
        {
            searcher.addSearchableConversationSource(source);
        }
        Receiver receiver(searcher, random);
        int ended = 0;
        for (int step = 0; step < 200; ++step)
        {
            receiver.react(4);
            directory.answer();
            webService.answer();
            if (!receiver.current.empty())
            {
                EXPECT_EQ(receiver.ends[receiver.current], searcher.isSearching() ? 0 : 1);
                ended += receiver.ends[receiver.current];
            }
        }
        EXPECT_GT(ended, 0);
        if (HasFailure())
        {
            FAIL() << "seed " << seed;
        }
    }
}
} // namespace
