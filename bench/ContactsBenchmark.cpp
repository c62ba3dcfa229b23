/**
 * What a phonebook costs beside a history: reading all of it, and one contact more.
 *
 * Read the results as growth from one size to the next. The argument is the number of contacts and of calls, each of a
 * party of its own; half of the contacts have called.
 */
#include "Contacts.h"
#include "RecordSource.h"

#include "Contact.h"
#include "ContactGrouping.h"
#include "ConversationAPI/ConversationAggregator.h"
#include "ConversationAPI/ConversationItemAggregator.h"
#include "ConversationAPI/ConversationParticipantFactory.h"
#include "ConversationAPI/DirectoryServiceConversationSource.h"
#include "host/Phonebook.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <string>

namespace
{
using namespace ConversationAPI;
using Clock = std::chrono::steady_clock;

/** Wired as a telephone is. */
struct World
{
    explicit World(std::size_t size) : journal(items, Bench::oneCallEach(size))
    {
        conversations.setConversationItemFactory(&items);
        conversations.setConversationIDGenerator(&ids);
        ids.setConversationSources({&history, &contacts});
        contacts.addObserver(&grouping);
        aggregator.setSources({&history, &contacts}, false);
        aggregator.conversationSourcesReady();
        history.addItemSource(&journal);
        for (const Bench::ContactRecord& record : Bench::contactRecords(size))
        {
            phonebook.write(Deskphone::writeRequest({"", record.firstName, record.lastName, record.workNumber, "",
                                                     record.mobileNumber, ""}),
                            false);
        }
        phonebook.addObserver(&contacts);
    }

    ~World()
    {
        phonebook.removeObserver(&contacts);
        aggregator.setSources({}, false);
        contacts.removeObserver(&grouping);
    }

    ConversationParticipantFactory participants{nullptr};
    ConversationItemFactory items{&participants, nullptr};
    RandomCachingConversationIDGenerator ids;
    ConversationFactory conversations;
    Bench::RecordSource journal;
    Host::Phonebook phonebook;
    ConversationItemAggregator history{&conversations};
    DirectoryServiceConversationSource contacts{&conversations, &phonebook, nullptr};
    Deskphone::ContactGrouping grouping{contacts, history, ids};
    ConversationAggregator aggregator{&items};
};

/** As when a telephone is switched on: read again, the contacts would be known and the history grouped already. */
void BM_LoadPhonebook(benchmark::State& state)
{
    std::size_t rows = 0;
    for (auto _ : state)
    {
        state.PauseTiming();
        auto world = std::make_unique<World>(static_cast<std::size_t>(state.range(0)));
        state.ResumeTiming();
        world->contacts.phonebookDatabaseUpdated(true);
        state.PauseTiming();
        rows = world->aggregator.getConversations()->size();
        world.reset();
        state.ResumeTiming();
    }
    state.counters["rows"] = static_cast<double>(rows);
}

/** From the phonebook's notice to the end of all that it causes; a display that redraws its rows is not there. */
void BM_AddContact(benchmark::State& state)
{
    World world(static_cast<std::size_t>(state.range(0)));
    world.contacts.phonebookDatabaseUpdated(true);
    long added = 0;
    for (auto _ : state)
    {
        const std::string number = "+4977" + std::to_string(1'000'000 + added++);
        const std::string message = Deskphone::writeRequest({"", "New", "Contact", number, "", "", ""});
        const Clock::time_point start = Clock::now();
        world.phonebook.write(message, true);
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
    }
}
} // namespace

BENCHMARK(BM_LoadPhonebook)->Arg(500)->Arg(2'000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AddContact)->Arg(2'000)->Arg(10'000)->Iterations(50)->UseManualTime()->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
