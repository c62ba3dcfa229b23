/**
 * What the item aggregator costs, beside what else could be done with the same calls.
 *
 * Read the results as ratios within one run: BM_Rebuild to BM_PlainGroupBy, to BM_HashGroupBy and to BM_MakeItems;
 * and as growth from one size to the next.
 */
#include "JournalRecords.h"
#include "PlainItem.h"
#include "RecordSource.h"

#include "ConversationAPI/ActiveCallConversationItemSource.h"
#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationItemAggregator.h"
#include "ConversationAPI/ConversationParticipantFactory.h"
#include "host/LogSink.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <unordered_map>

namespace
{
using namespace ConversationAPI;

/** The library as a telephone builds it, as far as the item aggregator goes. */
struct Telephone
{
    explicit Telephone(std::size_t journalEntries) : journal(items, Bench::journalRecords(journalEntries))
    {
        conversations.setConversationItemFactory(&items);
        conversations.setConversationIDGenerator(&ids);
        aggregator = std::make_unique<ConversationItemAggregator>(&conversations);
        ids.setConversationSources({aggregator.get()});
        aggregator->addItemSource(&journal);
        aggregator->addItemSource(&liveCalls);
    }

    ConversationParticipantFactory participants{nullptr};
    ConversationItemFactory items{&participants, nullptr};
    RandomCachingConversationIDGenerator ids;
    ConversationFactory conversations;
    Bench::RecordSource journal;
    ActiveCallConversationItemSource liveCalls{&items};
    std::unique_ptr<ConversationItemAggregator> aggregator;
};

std::size_t entries(const benchmark::State& state)
{
    return static_cast<std::size_t>(state.range(0));
}

void BM_MakeItems(benchmark::State& state)
{
    ConversationParticipantFactory participants(nullptr);
    ConversationItemFactory factory(&participants, nullptr);
    Bench::RecordSource source(factory, Bench::journalRecords(entries(state)));
    for (auto _ : state)
    {
        for (const ConversationItem* item : source.getConversationItems())
        {
            delete item;
        }
    }
}

/** What would be written instead of the library: the calls of each number, newest first, as plain values. */
void BM_PlainGroupBy(benchmark::State& state)
{
    const std::vector<Bench::CallRecord> records = Bench::journalRecords(entries(state));
    for (auto _ : state)
    {
        std::unordered_map<std::string, std::vector<Bench::PlainItem>> groups;
        for (const Bench::CallRecord& record : records)
        {
            groups[record.number].emplace_back(record);
        }
        for (auto& group : groups)
        {
            std::sort(group.second.begin(), group.second.end(),
                      [](const Bench::PlainItem& a, const Bench::PlainItem& b) { return a.time > b.time; });
        }
        benchmark::DoNotOptimize(groups.size());
    }
}

using Groups = std::unordered_map<std::string, std::vector<std::unique_ptr<ConversationItem>>>;

void sortGroups(Groups& groups)
{
    for (auto& group : groups)
    {
        std::sort(group.second.begin(), group.second.end(),
                  [](const auto& a, const auto& b) { return a->timeStampUTC() > b->timeStampUTC(); });
    }
    benchmark::DoNotOptimize(groups.size());
}

/** The same of the library's own items: copies of what the source gives, which are few allocations each. */
void BM_HashGroupBy(benchmark::State& state)
{
    ConversationParticipantFactory participants(nullptr);
    ConversationItemFactory factory(&participants, nullptr);
    Bench::RecordSource source(factory, Bench::journalRecords(entries(state)));
    for (auto _ : state)
    {
        Groups groups;
        for (ConversationItem* item : source.getConversationItems())
        {
            groups[item->participants().front().comparableNumberText()].emplace_back(item->clone());
            delete item;
        }
        sortGroups(groups);
    }
}

/** The same by somebody who may keep the source's items: the least that grouping can cost. */
void BM_HashGroupByWithoutCopies(benchmark::State& state)
{
    ConversationParticipantFactory participants(nullptr);
    ConversationItemFactory factory(&participants, nullptr);
    Bench::RecordSource source(factory, Bench::journalRecords(entries(state)));
    for (auto _ : state)
    {
        Groups groups;
        for (ConversationItem* item : source.getConversationItems())
        {
            groups[item->participants().front().comparableNumberText()].emplace_back(item);
        }
        sortGroups(groups);
    }
}

void BM_Rebuild(benchmark::State& state)
{
    Telephone telephone(entries(state));
    for (auto _ : state)
    {
        telephone.aggregator->conversationItemsChanged();
    }
    state.counters["conversations"] = static_cast<double>(telephone.aggregator->getConversations()->size());
}

/** As many parties as entries, so that the list holds that many conversations. */
class ManyConversations
{
  public:
    explicit ManyConversations(std::size_t count) : telephone_(0)
    {
        for (std::size_t i = 0; i < count; ++i)
        {
            Bench::CallRecord record{
                "e" + std::to_string(i), Bench::journalTime(static_cast<long>(i) * 60), numberOf(i), "First", "Last",
                static_cast<int>(i % 3)};
            telephone_.aggregator->newConversationItem(Bench::makeItem(telephone_.items, record));
        }
    }

    static std::string numberOf(std::size_t i) { return "+4930" + std::to_string(1'000'000 + i); }

    ActiveCall call(ActiveCall::activeCallState state, std::size_t party) const
    {
        ActiveCall call(nullptr, "call",
                        CallPartyIdentifier("", "", numberOf(party), CallPartyIdentifier::WORK_1, "", false),
                        ActiveCall::NO_CONFERENCE);
        call.setState(state);
        call.setCallInitiatedTime(1'790'000'000);
        return call;
    }

    Telephone& telephone() { return telephone_; }

  private:
    Telephone telephone_;
};

template <typename Work>
double secondsOf(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/** One event of a live call: it rings with a party of the history, is answered, is held. */
void BM_LiveCallEvent(benchmark::State& state)
{
    ManyConversations many(entries(state));
    ActiveCallConversationItemSource& calls = many.telephone().liveCalls;
    const std::vector<ActiveCall::activeCallState> states = {ActiveCall::INCOMING_CALL, ActiveCall::CONNECTED,
                                                             ActiveCall::LOCAL_ON_HOLD};
    std::size_t party = 0;
    std::size_t step = 0;
    for (auto _ : state)
    {
        const ActiveCall call = many.call(states[step], party);
        state.SetIterationTime(secondsOf([&] { calls.activeCallEvent(call); }));
        if (++step == states.size())
        {
            calls.clearActiveCallEvent("call");
            step = 0;
            party = (party + 7919) % entries(state);
        }
    }
}

/** The end of a live call, which collects the identifiers that nobody uses any more. */
void BM_LiveCallEnd(benchmark::State& state)
{
    ManyConversations many(entries(state));
    ActiveCallConversationItemSource& calls = many.telephone().liveCalls;
    std::size_t party = 0;
    for (auto _ : state)
    {
        calls.activeCallEvent(many.call(ActiveCall::CONNECTED, party));
        state.SetIterationTime(secondsOf([&] { calls.clearActiveCallEvent("call"); }));
        party = (party + 7919) % entries(state);
    }
}
} // namespace

// First, so that it does not meet a heap that the others have left in pieces.
BENCHMARK(BM_Rebuild)->Arg(500)->Arg(2'000)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_MakeItems)->Arg(500)->Arg(2'000)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PlainGroupBy)->Arg(500)->Arg(2'000)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_HashGroupBy)->Arg(500)->Arg(2'000)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_HashGroupByWithoutCopies)->Arg(500)->Arg(2'000)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LiveCallEvent)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(50'000)
    ->Iterations(3'000)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LiveCallEnd)->Arg(1'000)->Arg(10'000)->Iterations(1'000)->UseManualTime()->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
