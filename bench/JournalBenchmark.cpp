/**
 * What a telephone waits for when it is switched on, from opening its journal to the first list, and what storing the
 * end of a call costs.
 *
 * Read the parts as shares of their sum. The argument is the number of calls in the journal.
 */
#include "JournalRecords.h"

#include "ConversationAPI/ConversationAggregator.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationItemAggregator.h"
#include "ConversationAPI/ConversationParticipantFactory.h"
#include "ConversationAPI/JournalServiceConversationItemSource.h"
#include "ConversationAPI/RandomCachingConversationIDGenerator.h"
#include "host/Journal.h"
#include "host/LogSink.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace
{
using namespace ConversationAPI;
using Clock = std::chrono::steady_clock;

constexpr Host::JournalLimits BOUNDLESS{1'000'000, 1'000'000, 0};

double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

class TemporaryFolder
{
  public:
    TemporaryFolder()
    {
        std::string name = std::filesystem::temp_directory_path() / "journal-benchmark.XXXXXX";
        if (mkdtemp(name.data()) == nullptr)
        {
            throw std::runtime_error("no temporary folder");
        }
        path_ = name;
    }
    ~TemporaryFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::filesystem::path journal() const { return path_ / "call-journal.sqlite"; }

  private:
    std::filesystem::path path_;
};

Host::JournalCall callOf(const Bench::CallRecord& record)
{
    Host::JournalCall call;
    call.kind = static_cast<Host::JournalCall::Kind>(record.kind);
    call.firstName = record.firstName;
    call.surname = record.lastName;
    call.info.setRemoteNumber(record.number);
    call.info.setCallTime(record.time);
    call.setDuration(125);
    return call;
}

/** In memory first, so that the file is written in one transaction. */
void fill(const std::filesystem::path& file, std::size_t calls)
{
    Host::LogSink::instance().setLevel(0);
    std::filesystem::create_directory(file); // cannot be opened until it is gone
    Host::Journal journal(file, BOUNDLESS);
    for (const Bench::CallRecord& record : Bench::journalRecords(calls))
    {
        journal.addCall(callOf(record));
    }
    std::filesystem::remove(file);
    if (!journal.store())
    {
        throw std::runtime_error(journal.problem());
    }
}

/** Notes how long it takes to hand out its records. */
class TimedJournal : public JournalServiceIfc
{
  public:
    explicit TimedJournal(Host::Journal& journal) : journal_(journal) {}

    void getCalls(std::deque<MissedCallItem>& entries) override { timed(entries); }
    void getCalls(std::deque<ReceivedCallItem>& entries) override { timed(entries); }
    void getCalls(std::deque<DialledCallItem>& entries) override { timed(entries); }
    void getCalls(std::deque<ForwardedCallItem>& entries) override { timed(entries); }
    bool getCall(const std::string& id, MissedCallItem& record) override { return journal_.getCall(id, record); }
    bool getCall(const std::string& id, ReceivedCallItem& record) override { return journal_.getCall(id, record); }
    bool getCall(const std::string& id, DialledCallItem& record) override { return journal_.getCall(id, record); }
    bool getCall(const std::string& id, ForwardedCallItem& record) override { return journal_.getCall(id, record); }
    void deleteAllEntries() override {}
    void deleteEntries(const std::set<std::string>&) override {}
    bool ageMissedCalls(const std::set<std::string>&) override { return true; }
    void ageMissedCall(const std::string&) override {}

    double milliseconds = 0;

  private:
    template <typename Records>
    void timed(Records& records)
    {
        const Clock::time_point start = Clock::now();
        journal_.getCalls(records);
        milliseconds += millisecondsSince(start);
    }

    Host::Journal& journal_;
};

/** Notes how long the items take, records included. */
class TimedSource : public JournalServiceConversationItemSource
{
  public:
    using JournalServiceConversationItemSource::JournalServiceConversationItemSource;

    std::vector<ConversationItem*> getConversationItems() override
    {
        const Clock::time_point start = Clock::now();
        std::vector<ConversationItem*> items = JournalServiceConversationItemSource::getConversationItems();
        milliseconds += millisecondsSince(start);
        return items;
    }

    double milliseconds = 0;
};

/** The library as a telephone builds it, up to the display. */
struct Telephone
{
    explicit Telephone(JournalServiceIfc& journal) : source(&journal, &items, nullptr)
    {
        conversations.setConversationItemFactory(&items);
        conversations.setConversationIDGenerator(&ids);
        ids.setConversationSources({&history});
        history.addItemSource(&source);
        source.setJournalServiceSubscribed(true);
        aggregator.conversationSourcesReady();
    }

    ConversationParticipantFactory participants{nullptr};
    ConversationItemFactory items{&participants, nullptr};
    RandomCachingConversationIDGenerator ids;
    ConversationFactory conversations;
    TimedSource source;
    ConversationItemAggregator history{&conversations};
    ConversationAggregator aggregator{&items};
};

/** What each part takes, in milliseconds, and the library's share of the whole. */
void BM_FirstList(benchmark::State& state)
{
    const TemporaryFolder folder;
    fill(folder.journal(), static_cast<std::size_t>(state.range(0)));
    double opening = 0;
    double records = 0;
    double making = 0;
    double grouping = 0;
    double combining = 0;
    std::size_t rows = 0;
    for (auto _ : state)
    {
        const Clock::time_point start = Clock::now();
        Host::Journal journal(folder.journal(), BOUNDLESS);
        opening += millisecondsSince(start);

        TimedJournal timed(journal);
        Telephone telephone(timed);
        const Clock::time_point group = Clock::now();
        telephone.source.notifyObserver();
        grouping += millisecondsSince(group) - telephone.source.milliseconds;
        making += telephone.source.milliseconds - timed.milliseconds;
        records += timed.milliseconds;

        const Clock::time_point combine = Clock::now();
        telephone.aggregator.setSources({&telephone.history}, true);
        combining += millisecondsSince(combine);
        rows = static_cast<std::size_t>(telephone.aggregator.getConversations()->size());
    }
    const double library = making + grouping + combining;
    const auto each = static_cast<double>(state.iterations());
    state.counters["1_open_ms"] = opening / each;
    state.counters["2_records_ms"] = records / each;
    state.counters["3_items_ms"] = making / each;
    state.counters["4_group_ms"] = grouping / each;
    state.counters["5_combine_ms"] = combining / each;
    state.counters["library_share"] = library / (opening + records + library);
    state.counters["rows"] = static_cast<double>(rows);
}

/** One more call, to the moment when it is on the disk. */
void BM_StoreCall(benchmark::State& state)
{
    const TemporaryFolder folder;
    fill(folder.journal(), static_cast<std::size_t>(state.range(0)));
    const Host::JournalLimits limits{20, 1'000'000, 0};
    Host::Journal journal(folder.journal(), limits);
    const std::vector<Bench::CallRecord> records = Bench::journalRecords(1'000);
    long calls = 0;
    for (auto _ : state)
    {
        Host::JournalCall call = callOf(records[static_cast<std::size_t>(calls) % records.size()]);
        call.info.setCallTime(Bench::journalTime(-60 * ++calls));
        journal.addCall(call);
    }
    if (!journal.isStored())
    {
        state.SkipWithError("the calls are not stored");
    }
}
} // namespace

BENCHMARK(BM_FirstList)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StoreCall)->Arg(10'000)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
