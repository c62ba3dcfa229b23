#include "host/Journal.h"
#include "host/LogSink.h"
#include "host/SimulatedEventLoop.h"

#include <SQLiteCpp/Database.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;
using Host::Journal;
using Host::JournalCall;

constexpr const char* MORNING = "2026-03-05T08:00:00+01:00";
constexpr const char* NOON = "2026-03-05T12:00:00+01:00";
constexpr const char* EVENING = "2026-03-05T20:00:00+01:00";

JournalCall call(JournalCall::Kind kind, const std::string& number, const std::string& time,
                 const std::string& surname = "")
{
    JournalCall result;
    result.kind = kind;
    result.surname = surname;
    result.info.setRemoteNumber(number);
    result.info.setCallTime(time);
    return result;
}

JournalCall missed(const std::string& number, const std::string& time, bool viewed = false)
{
    JournalCall result = call(JournalCall::MISSED, number, time);
    result.info.setViewed(viewed);
    return result;
}

JournalCall detailed(JournalCall::Kind kind)
{
    JournalCall result = call(kind, std::string("+49\0 30", 7), NOON, "M\xC3\xBCller");
    result.firstName = "Eva";
    result.info.setNumberType(NumberType::MOBILE);
    result.info.setDuration("2:5");
    result.info.setRedirectingNumber("4711");
    result.info.setRedirectingFirstName("Re");
    result.info.setRedirectingLastName("Direct");
    result.info.setRedirectingNumberType(NumberType::WORK_2);
    result.info.setAnswered(true);
    result.info.setGroupName("Sales");
    result.info.setGroupNumber("500");
    return result;
}

/** All that the journal knows. */
std::string dump(const Journal& journal)
{
    std::string all;
    for (const JournalCall& each : journal.calls())
    {
        const auto& info = each.info;
        for (const std::string& text :
             {std::to_string(each.kind), each.firstName, each.surname, std::to_string(int{info.getViewed()}),
              info.getRemoteNumber(), std::to_string(info.getNumberType()), info.getCallTime(), info.getDuration(),
              info.getRedirectingNumber(), info.getRedirectingFirstName(), info.getRedirectingLastName(),
              std::to_string(info.getRedirectingNumberType()), std::to_string(int{info.getAnswered()}),
              info.getGroupName(), info.getGroupNumber()})
        {
            all += text + "/";
        }
        all += "\n";
    }
    return all;
}

class JournalRecorder : public JournalServiceObserverIfc
{
  public:
    void missedCallsUpdate(MissedCallItem entry, std::string id, ActionType action) override
    {
        note(id + (entry.getViewed() ? " seen " : " new ") + std::to_string(entry.getMissedCallInfoList().size()),
             action);
    }
    void receivedCallsUpdate(ReceivedCallItem, std::string id, ActionType action) override { note(id, action); }
    void dialledCallsUpdate(DialledCallItem, std::string id, ActionType action) override { note(id, action); }
    void forwardedCallsUpdate(ForwardedCallItem, std::string id, ActionType action) override { note(id, action); }

    /** Since the last time: action and id; of missed calls whether they are seen, and their number. */
    std::string take() { return std::exchange(seen_, ""); }

    std::function<void()> onNext;

  private:
    void note(const std::string& what, ActionType action)
    {
        seen_ += std::string(1, "AUD"[action]) + " " + what + "; ";
        if (const auto next = std::exchange(onNext, nullptr))
        {
            next();
        }
    }

    std::string seen_;
};

class JournalTest : public testing::Test
{
  protected:
    void SetUp() override
    {
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        Host::LogSink::instance().writeTo([this](const std::string&) { ++logLines_; });
    }

    void TearDown() override
    {
        Host::LogSink::instance().reset();
        fs::remove_all(folder_);
    }

    SQLite::Database database() const { return {file_.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE}; }

    std::string bytes(const fs::path& path) const
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    std::vector<fs::path> others() const
    {
        std::vector<fs::path> found;
        std::copy_if(fs::directory_iterator(folder_), fs::directory_iterator(), std::back_inserter(found),
                     [this](const fs::path& path) { return path != file_; });
        return found;
    }

    const fs::path folder_ = fs::path(testing::TempDir()) / ("journal_" + std::to_string(getpid()));
    const fs::path file_ = folder_ / "calls?#%41.sqlite";
    int logLines_ = 0;
};

TEST_F(JournalTest, GroupsOrdersAndBounds)
{
    Journal journal(Host::JournalLimits{2, 3});
    EXPECT_EQ(journal.addCall(missed("1", "2026-03-05T12:00:00+02:00")), "missed-1");
    journal.addCall(call(JournalCall::MISSED, "1", "2026-03-05T10:30:00Z", "Newest"));
    journal.addCall(call(JournalCall::MISSED, "1", "2026-03-05T11:15:00+01:00", "Middle")); // pushes out the first
    journal.addCall(missed("1", "someday"));                                                // too old for a full entry
    EXPECT_NE(journal.addCall(call(JournalCall::MISSED, "", MORNING, "1")), "missed-1");
    EXPECT_EQ(journal.addCall(missed("", MORNING)), journal.addCall(missed("", NOON)));
    std::deque<MissedCallItem> entries;
    journal.getCalls(entries);
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[1].getEntryId(), "missed-1");
    EXPECT_EQ(entries[1].getSurname(), "Newest");
    ASSERT_EQ(entries[1].getMissedCallInfoList().size(), 2U);
    EXPECT_EQ(entries[1].getMissedCallInfoList()[1].getCallTime(), "2026-03-05T11:15:00+01:00");
    EXPECT_EQ(entries[2].getSurname(), "1");
}

TEST_F(JournalTest, TellsWhatChangedInOneOrder)
{
    Journal journal(Host::JournalLimits{2, 2});
    JournalRecorder first;
    JournalRecorder second;
    journal.addObserver(&first);
    journal.addObserver(&second);
    first.onNext = [&] { journal.addCall(call(JournalCall::FORWARDED, "8", NOON)); };
    journal.addCall(missed("1", MORNING, true));
    EXPECT_EQ(second.take(), "A missed-1 seen 1; A forwarded-8; ");
    journal.addCall(missed("1", MORNING));
    EXPECT_EQ(second.take(), "") << "the very same call";
    journal.addCall(missed("1", NOON));
    journal.addCall(missed("1", EVENING, true));
    EXPECT_EQ(second.take(), "U missed-1 new 2; U missed-1 new 2; ");
    first.onNext = [&] { journal.removeObserver(&first); };
    EXPECT_TRUE(journal.ageMissedCalls({"forwarded-8", "missed-1", "nothing"}));
    journal.ageMissedCall("missed-1");
    EXPECT_EQ(second.take(), "U missed-1 seen 2; ");
    journal.addCall(missed("2", NOON));
    journal.addCall(missed("0", MORNING)); // older than all that are kept
    EXPECT_EQ(second.take(), "A missed-2 new 1; ");
    journal.addCall(missed("3", EVENING));
    EXPECT_EQ(second.take(), "A missed-3 new 1; D missed-2 new 1; ");
    journal.deleteEntries({"missed-3", "missed-7"});
    journal.deleteAllEntries();
    EXPECT_EQ(second.take(), "D missed-3 new 1; D forwarded-8; D missed-1 seen 2; ");
}

TEST_F(JournalTest, ARestartKeepsAll)
{
    std::string before;
    {
        Journal journal(file_.parent_path() / "new" / "folder" / "calls.sqlite");
        for (const auto kind :
             {JournalCall::DIALLED, JournalCall::RECEIVED, JournalCall::MISSED, JournalCall::FORWARDED})
        {
            journal.addCall(detailed(kind));
        }
        journal.addCall(call(JournalCall::MISSED, "", MORNING, std::string(999, 'x') + "\xC3\xBC"));
        journal.ageMissedCall(journal.addCall(missed("2", NOON)));
        EXPECT_TRUE(journal.isStored());
        before = dump(journal);
    }
    EXPECT_EQ(dump(Journal(folder_ / "new" / "folder" / "calls.sqlite")), before);
    EXPECT_NE(before.find("xx/0/"), std::string::npos) << "cut before the last character";
}

TEST_F(JournalTest, RestartsAndLocksChangeNothing)
{
    const Host::JournalLimits limits{3, 5};
    std::mt19937 random(1);
    const auto below = [&random](unsigned bound) { return static_cast<unsigned>(random() % bound); };
    Journal inMemory(limits);
    auto journal = std::make_unique<Journal>(file_, limits);
    std::unique_ptr<SQLite::Database> lock;
    for (int i = 0; i < 800; ++i)
    {
        const auto kind = static_cast<JournalCall::Kind>(below(4));
        const std::string time = "2026-03-05T12:" + std::to_string(10 + below(50)) + ":00Z";
        const JournalCall next = call(kind, std::to_string(below(9)), time);
        const std::string id = "missed-" + std::to_string(below(9));
        const unsigned action = below(12);
        for (Journal* each : {journal.get(), &inMemory})
        {
            action == 0 ? each->ageMissedCall(id) : action == 1 ? each->deleteEntries({id}) : void(each->addCall(next));
        }
        if (i % 200 == 10)
        {
            lock = std::make_unique<SQLite::Database>(database());
            lock->exec("BEGIN IMMEDIATE");
        }
        if (i % 200 == 13)
        {
            EXPECT_FALSE(journal->isStored());
            lock.reset();
            EXPECT_TRUE(journal->store());
            EXPECT_EQ(journal->problem(), "");
        }
        if (i % 25 == 24)
        {
            journal.reset();
            journal = std::make_unique<Journal>(file_, limits);
        }
        ASSERT_EQ(dump(*journal), dump(inMemory)) << i;
    }
}

/** A file may come from a journal that kept more. */
TEST_F(JournalTest, WhatIsTooMuchLeavesMemoryFileAndObserversAlike)
{
    {
        Journal journal(file_);
        for (const char* number : {"1", "2", "3"})
        {
            journal.addCall(missed(number, NOON));
        }
    }
    const Host::JournalLimits one{3, 1};
    std::string left;
    {
        Journal journal(file_, one);
        JournalRecorder recorder;
        journal.addObserver(&recorder);
        journal.addCall(missed("4", MORNING));
        left = dump(journal);
        const std::string told = recorder.take();
        EXPECT_EQ(std::count(told.begin(), told.end(), 'D'), 2) << told;
        EXPECT_EQ(told.find("missed-4"), std::string::npos) << told;
    }
    EXPECT_EQ(dump(Journal(file_, one)), left);
}

TEST_F(JournalTest, WhatIsGivenUpIsNeverStored)
{
    Journal(file_).addCall(missed("1", NOON));
    const std::string before = dump(Journal(file_));
    {
        Journal journal(file_);
        auto lock = std::make_unique<SQLite::Database>(database());
        lock->exec("BEGIN IMMEDIATE");
        journal.deleteAllEntries();
        EXPECT_FALSE(journal.store());
        journal.abandon();
        lock.reset();
        EXPECT_FALSE(journal.store());
    }
    EXPECT_EQ(dump(Journal(file_)), before);
}

TEST_F(JournalTest, MigratesAndLeavesNewerFilesAlone)
{
    const std::string old = "INSERT INTO entries VALUES ('missed-1', 2, 1);"
                            "INSERT INTO calls (entry_id, position, first_name, surname, number, number_type, time,"
                            " duration, redirecting_number, redirecting_first_name, redirecting_last_name,"
                            " redirecting_number_type, answered)"
                            " VALUES ('missed-1', 0, '', '', '1', 77, '2026', '', '', '', '', 0, 1);";
    Journal(file_).store();
    database().exec("ALTER TABLE calls DROP COLUMN group_name; ALTER TABLE calls DROP COLUMN group_number;"
                    "ALTER TABLE calls DROP COLUMN viewed;"
                    "ALTER TABLE entries ADD COLUMN viewed INTEGER NOT NULL DEFAULT 0;"
                    "PRAGMA user_version = 1;" +
                    old);
    EXPECT_EQ(dump(Journal(file_)), "2///1/1/0/2026////" + std::string("/0/1///\n"));
    database().exec("PRAGMA user_version = 3");
    const std::string before = bytes(file_);
    {
        Journal journal(file_);
        journal.addCall(missed("2", NOON));
        EXPECT_NE(journal.problem().find("newer"), std::string::npos);
        EXPECT_FALSE(journal.isStored());
    }
    EXPECT_EQ(bytes(file_), before);
}

TEST_F(JournalTest, SetsDamagedFilesAsideAndGoesOn)
{
    {
        Journal journal(file_);
        for (int i = 0; i < 300; ++i)
        {
            journal.addCall(missed(std::to_string(i), NOON));
        }
    }
    const std::string good = bytes(file_);
    std::vector<std::string> bad{"no database", std::string(5000, 'x')};
    for (std::size_t at = 0; at < good.size(); at += 1499)
    {
        bad.push_back(good.substr(0, at));
        bad.push_back(good);
        bad.back().replace(at, 40, 40, '\x7F');
    }
    std::size_t setAside = 0;
    for (const std::string& content : bad)
    {
        std::ofstream(file_, std::ios::binary) << content;
        {
            Journal journal(file_);
            journal.addCall(missed("new", NOON));
            ASSERT_TRUE(journal.isStored()) << journal.problem();
            EXPECT_EQ(journal.problem().empty(), others().size() == 2U) << "the log and its index alone";
        }
        for (const fs::path& file : others())
        {
            EXPECT_EQ(bytes(file), content);
            fs::remove(file);
            ++setAside;
        }
        EXPECT_NE(dump(Journal(file_)).find("/new/"), std::string::npos);
    }
    EXPECT_GT(setAside, bad.size() / 2);
}

TEST_F(JournalTest, JoinsWhatALockedFileHolds)
{
    {
        Journal journal(file_);
        journal.addCall(missed("1", MORNING, true));
        journal.addCall(missed("2", MORNING));
        journal.addCall(missed("3", MORNING));
    }
    Host::SimulatedEventLoop loop(0);
    const Host::EventLoop::Scope scope(loop);
    auto lock = std::make_unique<SQLite::Database>(database());
    lock->exec("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE");
    Journal journal(file_);
    JournalRecorder recorder;
    journal.addObserver(&recorder);
    journal.addCall(missed("1", NOON));
    journal.deleteEntries({journal.addCall(missed("2", NOON))});
    EXPECT_FALSE(journal.isStored());
    EXPECT_NE(journal.problem().find("locked"), std::string::npos);
    EXPECT_EQ(logLines_, 1) << "one line however often it fails";
    lock.reset();
    recorder.take();
    loop.advanceBy(31'000);
    EXPECT_EQ(recorder.take(), "U missed-1 new 2; A missed-3 new 1; ");
    EXPECT_TRUE(journal.isStored());
    EXPECT_EQ(dump(Journal(file_)), dump(journal));
}

TEST_F(JournalTest, DeletingAllReachesALockedFile)
{
    Journal(file_).addCall(missed("1", MORNING));
    auto lock = std::make_unique<SQLite::Database>(database());
    lock->exec("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE");
    Journal journal(file_);
    journal.deleteAllEntries();
    EXPECT_FALSE(journal.isStored());
    lock.reset();
    EXPECT_TRUE(journal.store());
    EXPECT_EQ(dump(Journal(file_)), "");
}

TEST_F(JournalTest, AFullFileKeepsNewCallsInMemory)
{
    Journal journal(file_, {20, 500, 32 * 1024});
    int added = 0;
    while (journal.isStored() && added < 400)
    {
        journal.addCall(missed(std::to_string(added++), NOON));
    }
    EXPECT_NE(journal.problem().find("no room"), std::string::npos);
    EXPECT_EQ(journal.calls().size(), static_cast<std::size_t>(added));
    journal.deleteEntries({"missed-1", "missed-2", "missed-3", "missed-4"});
    EXPECT_TRUE(journal.isStored());
    EXPECT_EQ(dump(Journal(file_)), dump(journal));
}

TEST_F(JournalTest, AReadOnlyFileIsServed)
{
    const bool isRoot = geteuid() == 0; // whom modes do not stop
    Journal(file_).addCall(missed("1", MORNING));
    fs::permissions(folder_, fs::perms(0555));
    fs::permissions(file_, fs::perms(0444));
    ASSERT_TRUE(!isRoot || seteuid(65534) == 0);
    Journal journal(file_);
    journal.addCall(missed("2", NOON));
    journal.ageMissedCall("missed-1");
    const std::string before = dump(journal);
    EXPECT_NE(journal.problem(), "");
    ASSERT_TRUE(!isRoot || seteuid(0) == 0);
    fs::permissions(folder_, fs::perms::owner_all);
    fs::permissions(file_, fs::perms::owner_all);
    EXPECT_TRUE(journal.store());
    EXPECT_EQ(dump(Journal(file_)), before);
    EXPECT_EQ(Journal(file_, {20, 1}).calls().size(), 2U) << "to look at it takes nothing away";
    Journal(file_, {20, 1}).addCall(missed("3", EVENING));
    EXPECT_EQ(Journal(file_).calls().size(), 1U) << "what is added makes the oldest leave";
}

TEST_F(JournalTest, AFileThatIsGoneOrNoneIsMadeAnew)
{
    fs::create_directory(file_);
    Journal journal(file_);
    journal.addCall(missed("1", MORNING));
    EXPECT_NE(journal.problem(), "");
    fs::remove(file_);
    EXPECT_TRUE(journal.store());
    fs::remove(file_);
    journal.addCall(missed("2", NOON));
    EXPECT_TRUE(journal.isStored());
    EXPECT_EQ(dump(Journal(file_)), dump(journal));
    database().exec("DROP TABLE calls");
    journal.addCall(missed("3", NOON));
    EXPECT_TRUE(journal.isStored());
    EXPECT_NE(journal.problem().find(".damaged-"), std::string::npos);
    EXPECT_EQ(dump(Journal(file_)), dump(journal));
    EXPECT_EQ(journal.calls().size(), 3U);
}
} // namespace
