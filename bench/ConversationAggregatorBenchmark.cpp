/**
 * What the combined list costs, beside what else could be done with the same calls and contacts.
 *
 * Read the results as ratios within one run, and as growth from one size to the next. The arguments are the number
 * of calls, each of a party of its own, and the number of contacts, half of which have called.
 */
#include "Contacts.h"
#include "PeakMemory.h"
#include "RecordSource.h"
#include "SqliteJoin.h"

#include "ConversationAPI/ActiveCallConversationItemSource.h"
#include "ConversationAPI/ConversationAggregator.h"
#include "ConversationAPI/ConversationItemAggregator.h"
#include "ConversationAPI/ConversationObserver.h"
#include "ConversationAPI/ConversationParticipantFactory.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <unordered_map>

namespace
{
using namespace ConversationAPI;
using Clock = std::chrono::steady_clock;

/** A display that notes when it is told something. */
class Display : public ConversationObserver
{
  public:
    void conversationListChanged(ConversationList*) override { told = Clock::now(); }
    void conversationPresenceUpdated(Conversation*) override { told = Clock::now(); }
    void conversationUpdatedAndMoved(Conversation*, int) override { told = Clock::now(); }
    void newConversation(Conversation*, int) override { told = Clock::now(); }
    void conversationDeleted(Conversation*) override { told = Clock::now(); }

    Clock::time_point told;
};

/** What there is before anything is combined. */
struct Inputs
{
    Inputs(std::size_t calls, std::size_t contacts) : journal(items, Bench::oneCallEach(calls))
    {
        conversations.setConversationItemFactory(&items);
        conversations.setConversationIDGenerator(&ids);
        for (const Bench::ContactRecord& record : Bench::contactRecords(contacts))
        {
            directory.add(conversations, record);
        }
    }

    ConversationParticipantFactory participants{nullptr};
    ConversationItemFactory items{&participants, nullptr};
    RandomCachingConversationIDGenerator ids;
    ConversationFactory conversations;
    Bench::RecordSource journal;
    Bench::ContactSource directory;
    ActiveCallConversationItemSource liveCalls{&items};
};

/** The library as a telephone builds it, up to the display. */
struct Telephone
{
    explicit Telephone(Inputs& inputs) : history(&inputs.conversations), aggregator(&inputs.items)
    {
        inputs.ids.setConversationSources({&history, &inputs.directory});
        aggregator.addObserver(&display);
        aggregator.setSourcesInPreferredOrder(&history, &inputs.directory, false);
        aggregator.conversationSourcesReady();
        history.addItemSource(&inputs.liveCalls);
        history.addItemSource(&inputs.journal);
    }

    ConversationItemAggregator history;
    Display display;
    ConversationAggregator aggregator;
};

std::size_t calls(const benchmark::State& state)
{
    return static_cast<std::size_t>(state.range(0));
}

std::size_t contacts(const benchmark::State& state)
{
    return static_cast<std::size_t>(state.range(1));
}

void BM_Combine(benchmark::State& state)
{
    Inputs inputs(calls(state), contacts(state));
    Telephone telephone(inputs);
    for (auto _ : state)
    {
        telephone.aggregator.conversationsChanged();
    }
    state.counters["rows"] = static_cast<double>(telephone.aggregator.getConversations()->size());
}

void BM_RebuildAndCombine(benchmark::State& state)
{
    Inputs inputs(calls(state), contacts(state));
    const auto telephone = std::make_unique<Telephone>(inputs);
    for (auto _ : state)
    {
        telephone->history.conversationItemsChanged();
    }
    state.counters["rows"] = static_cast<double>(telephone->aggregator.getConversations()->size());
}

/** Not a time: the memory that the first list takes beyond journal and directory. */
void BM_PeakMemory(benchmark::State& state)
{
    Inputs inputs(calls(state), contacts(state));
    for (auto _ : state)
    {
        const Bench::PeakMemory peak;
        const Telephone telephone(inputs);
        state.counters["MiB"] = static_cast<double>(Bench::PeakMemory::bytes()) / (1024 * 1024);
    }
}

/** What a row needs least to be shown. */
struct SmallItem
{
    std::string name;
    std::string time;
    int kind;
};

/** One small object for each call, in a group for each number: the least that somebody would write. */
void BM_FlatGroupBy(benchmark::State& state)
{
    const std::vector<Bench::CallRecord> records = Bench::oneCallEach(calls(state));
    for (auto _ : state)
    {
        std::unordered_map<std::string, std::vector<std::unique_ptr<SmallItem>>> groups;
        for (const Bench::CallRecord& record : records)
        {
            groups[record.number].push_back(
                std::make_unique<SmallItem>(SmallItem{record.lastName, record.time, record.kind}));
        }
        benchmark::DoNotOptimize(groups.size());
    }
}

/** The library's own items and contacts, copied, grouped by number, joined by the contacts' numbers and sorted. */
void BM_GroupByAndJoin(benchmark::State& state)
{
    struct Row
    {
        std::unique_ptr<Conversation> contact;
        std::vector<std::unique_ptr<ConversationItem>> items;

        long newest() const { return items.empty() ? 0 : items.front()->timeStampUTC(); }
    };
    Inputs inputs(calls(state), contacts(state));
    for (auto _ : state)
    {
        std::vector<Row> rows(inputs.directory.getConversations()->size());
        std::unordered_map<std::string, std::size_t> places;
        std::size_t place = 0;
        for (const Conversation* contact : *inputs.directory.getConversations())
        {
            for (const std::string& number : contact->getConversationNumbers())
            {
                places.emplace(number, place);
            }
            rows[place++].contact.reset(contact->clone());
        }
        for (ConversationItem* item : inputs.journal.getConversationItems())
        {
            const auto [known, isNew] =
                places.emplace(item->participants().front().comparableNumberText(), rows.size());
            if (isNew)
            {
                rows.emplace_back();
            }
            rows[known->second].items.emplace_back(item->clone());
            delete item;
        }
        std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.newest() > b.newest(); });
        benchmark::DoNotOptimize(rows.size());
    }
}

void BM_SqliteQuery(benchmark::State& state)
{
    Bench::SqliteJoin database(Bench::oneCallEach(calls(state)), Bench::contactRecords(contacts(state)));
    std::size_t rows = 0;
    for (auto _ : state)
    {
        rows = database.read();
    }
    state.counters["rows"] = static_cast<double>(rows);
}

void BM_SqliteLoadAndQuery(benchmark::State& state)
{
    const std::vector<Bench::CallRecord> records = Bench::oneCallEach(calls(state));
    const std::vector<Bench::ContactRecord> people = Bench::contactRecords(contacts(state));
    for (auto _ : state)
    {
        Bench::SqliteJoin database(records, people);
        benchmark::DoNotOptimize(database.read());
    }
}

/** From call control's event to the display's callback: a call rings with a known party, is answered, is held. */
void BM_LiveCallToDisplay(benchmark::State& state)
{
    Inputs inputs(calls(state), contacts(state));
    Telephone telephone(inputs);
    const std::vector<ActiveCall::activeCallState> states = {ActiveCall::INCOMING_CALL, ActiveCall::CONNECTED,
                                                             ActiveCall::LOCAL_ON_HOLD};
    std::size_t party = 0;
    std::size_t step = 0;
    for (auto _ : state)
    {
        ActiveCall call(nullptr, "call",
                        CallPartyIdentifier("", "", Bench::partyNumber(party), CallPartyIdentifier::WORK_1, "", false),
                        ActiveCall::NO_CONFERENCE);
        call.setState(states[step]);
        call.setCallInitiatedTime(1'790'000'000);
        const Clock::time_point start = Clock::now();
        inputs.liveCalls.activeCallEvent(call);
        state.SetIterationTime(std::chrono::duration<double>(telephone.display.told - start).count());
        if (++step == states.size())
        {
            inputs.liveCalls.clearActiveCallEvent("call");
            step = 0;
            party = (party + 7919) % calls(state);
        }
    }
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Args({500, 200})->Args({2'000, 2'000})->Args({10'000, 10'000})->Args({50'000, 50'000});
    benchmark->Unit(benchmark::kMicrosecond);
}
} // namespace

// First, so that they do not meet a heap that the others have left in pieces.
BENCHMARK(BM_RebuildAndCombine)->Apply(sizes);
BENCHMARK(BM_Combine)->Apply(sizes);
BENCHMARK(BM_FlatGroupBy)->Apply(sizes);
BENCHMARK(BM_GroupByAndJoin)->Apply(sizes);
BENCHMARK(BM_SqliteQuery)->Apply(sizes);
BENCHMARK(BM_SqliteLoadAndQuery)->Apply(sizes);
BENCHMARK(BM_PeakMemory)->Args({10'000, 10'000})->Iterations(1);
BENCHMARK(BM_LiveCallToDisplay)
    ->Args({10'000, 10'000})
    ->Args({50'000, 50'000})
    ->Iterations(3'000)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
