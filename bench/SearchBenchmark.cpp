/**
 * What a keystroke in the search field costs, beside the plain matcher and a full-text index of SQLite.
 *
 * Read the results as ratios within one run. Each benchmark searches for what stands in the field after one more
 * keystroke; the first letters, which match most, cost most. The argument is the number of contacts.
 */
#include "Contacts.h"
#include "FtsTrigrams.h"

#include "ConversationAPI/ConversationFinder.h"
#include "ConversationAPI/ConversationItemFactory.h"
#include "ConversationAPI/ConversationParticipantFactory.h"
#include "ConversationAPI/RandomCachingConversationIDGenerator.h"
#include "ConversationAPI/SearchableConversationSource.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace
{
using namespace ConversationAPI;

/** What is typed, to the end; from a letter that nearly all names have to a number in another form. */
const std::vector<std::string> TYPED = {"a",    "ann", "mueller", "zoé b",    "lée",
                                        "berg", "5",   "266 5",   "030 1004", "1234"};

/** Names of people, about 30,000 different ones, one in five with an accent. */
std::vector<Bench::ContactRecord> people(std::size_t count)
{
    const std::vector<std::string> first = {"Ann",  "Zoé",    "Peter", "Jürgen", "Maria", "Hannah", "Tom",   "Wei",
                                            "Olga", "José",   "Lena",  "Björn",  "Sofia", "Paul",   "Clara", "Ahmed",
                                            "Ines", "Dmitri", "Eva",   "Łukasz", "Nora",  "Viktor", "Rosa"};
    const std::vector<std::string> start = {"Müller", "Gold", "Stein", "Lé", "Alten", "Kirch", "Sand", "Bau", "Wald"};
    const std::vector<std::string> middle = {"", "en", "er", "hof", "burg", "mann", "bach", "feld", "er-Schmidt"};
    const std::vector<std::string> end = {"",     "berg", "son", "ski",  "ova",   "meier", "thal", "inger",
                                          "dorf", "heim", "au",  "rath", "stedt", "wig",   "ke",   "sen"};
    std::vector<Bench::ContactRecord> records = Bench::contactRecords(count);
    for (std::size_t i = 0; i < count; ++i)
    {
        const std::size_t mixed = i * 7919;
        records[i].firstName = first[mixed % first.size()];
        records[i].lastName =
            start[mixed / 3 % start.size()] + middle[mixed / 5 % middle.size()] + end[mixed / 7 % end.size()];
    }
    return records;
}

/** An aggregator with contacts alone. */
struct Contacts
{
    explicit Contacts(std::size_t count)
    {
        conversations.setConversationItemFactory(&items);
        conversations.setConversationIDGenerator(&ids);
        for (const Bench::ContactRecord& record : people(count))
        {
            directory.add(conversations, record);
        }
        aggregator.setSources({&directory}, true);
        aggregator.conversationSourcesReady();
    }
    ~Contacts() { aggregator.setSources({}, false); }

    ConversationParticipantFactory participants{nullptr};
    ConversationItemFactory items{&participants, nullptr};
    RandomCachingConversationIDGenerator ids;
    ConversationFactory conversations;
    Bench::ContactSource directory;
    SearchableConversationSource aggregator{&items};
};

std::size_t contacts(const benchmark::State& state)
{
    return static_cast<std::size_t>(state.range(0));
}

const std::string& typed(const benchmark::State& state)
{
    return TYPED[static_cast<std::size_t>(state.range(1))];
}

void search(benchmark::State& state, SearchableConversationSourceIfc& source)
{
    std::size_t found = 0;
    for (auto _ : state)
    {
        found = source.getMatchingConversationIds(typed(state)).size();
    }
    state.counters["found"] = static_cast<double>(found);
    state.SetLabel("\"" + typed(state) + "\"");
}

void BM_Finder(benchmark::State& state)
{
    Contacts telephone(contacts(state));
    ConversationFinder finder(telephone.aggregator);
    telephone.aggregator.start();
    finder.getMatchingConversationIds("");
    search(state, finder);
}

void BM_PlainMatcher(benchmark::State& state)
{
    Contacts telephone(contacts(state));
    search(state, telephone.aggregator);
}

void BM_FtsTrigrams(benchmark::State& state)
{
    Bench::FtsTrigrams database(people(contacts(state)));
    if (typed(state).size() < Bench::FtsTrigrams::SHORTEST_TEXT)
    {
        state.SkipWithError("too short for trigrams");
    }
    std::size_t found = 0;
    for (auto _ : state)
    {
        found = database.count(typed(state));
    }
    state.counters["found"] = static_cast<double>(found);
    state.SetLabel("\"" + typed(state) + "\"");
}

/** The first keystroke after the whole list was made anew. */
void BM_FinderAfterNewList(benchmark::State& state)
{
    Contacts telephone(contacts(state));
    ConversationFinder finder(telephone.aggregator);
    for (auto _ : state)
    {
        telephone.aggregator.start();
        benchmark::DoNotOptimize(finder.getMatchingConversationIds("ann"));
    }
}

/** The first keystroke after one row changed. */
void BM_FinderAfterChange(benchmark::State& state)
{
    Contacts telephone(contacts(state));
    ConversationFinder finder(telephone.aggregator);
    telephone.aggregator.start();
    unsigned row = 0;
    for (auto _ : state)
    {
        finder.conversationUpdatedAndMoved(telephone.aggregator.getConversation(row), 0);
        row = (row + 7919) % static_cast<unsigned>(contacts(state));
        benchmark::DoNotOptimize(finder.getMatchingConversationIds("ann"));
    }
}

void BM_MakeFinder(benchmark::State& state)
{
    Contacts telephone(1);
    for (auto _ : state)
    {
        const ConversationFinder finder(telephone.aggregator);
    }
}

void keystrokes(benchmark::internal::Benchmark* benchmark)
{
    for (std::size_t i = 0; i < TYPED.size(); ++i)
    {
        benchmark->Args({10'000, static_cast<long>(i)});
    }
    benchmark->Unit(benchmark::kMicrosecond);
}
} // namespace

BENCHMARK(BM_Finder)->Apply(keystrokes);
BENCHMARK(BM_PlainMatcher)->Apply(keystrokes);
BENCHMARK(BM_FtsTrigrams)->Apply(keystrokes);
BENCHMARK(BM_FinderAfterChange)->Arg(10'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_FinderAfterNewList)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_MakeFinder)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
