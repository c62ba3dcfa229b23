#include "host/internal/JournalDatabase.h"

#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Transaction.h>
#include <SQLiteCpp/VariadicBind.h>
#include <algorithm>
#include <array>
#include <sqlite3.h>

namespace Host
{
namespace
{
namespace fs = std::filesystem;
using Info = MissedCallItem::MissedCallInfo;

/** The user waits meanwhile. */
constexpr int BUSY_TIMEOUT_MS = 100;

constexpr std::uint64_t MOST_PAGES = 0xFFFFFFFE; // of an SQLite file

/** What brings a file from the version that is the index to the next one. Never changed, only added to. */
constexpr std::array<const char*, 2> MIGRATIONS{
    R"(CREATE TABLE entries (
           entry_id TEXT NOT NULL PRIMARY KEY,
           kind INTEGER NOT NULL CHECK (kind BETWEEN 0 AND 3),
           viewed INTEGER NOT NULL
       ) WITHOUT ROWID;
       CREATE TABLE calls (
           entry_id TEXT NOT NULL REFERENCES entries,
           position INTEGER NOT NULL, -- in the entry, oldest first
           first_name TEXT NOT NULL,
           surname TEXT NOT NULL,
           number TEXT NOT NULL,
           number_type INTEGER NOT NULL,
           time TEXT NOT NULL, -- ISO 8601 with offset
           duration TEXT NOT NULL, -- minutes:seconds
           redirecting_number TEXT NOT NULL,
           redirecting_first_name TEXT NOT NULL,
           redirecting_last_name TEXT NOT NULL,
           redirecting_number_type INTEGER NOT NULL,
           answered INTEGER NOT NULL,
           PRIMARY KEY (entry_id, position)
       ) WITHOUT ROWID)",
    R"(ALTER TABLE calls ADD COLUMN group_name TEXT NOT NULL DEFAULT '';
       ALTER TABLE calls ADD COLUMN group_number TEXT NOT NULL DEFAULT '';
       ALTER TABLE calls ADD COLUMN viewed INTEGER NOT NULL DEFAULT 0;
       UPDATE calls SET viewed = (SELECT viewed FROM entries WHERE entries.entry_id = calls.entry_id);
       ALTER TABLE entries DROP COLUMN viewed)"};
constexpr int SCHEMA_VERSION = static_cast<int>(MIGRATIONS.size());

/** A commit waits for the disk once; folding the log into the file is for moments when nobody waits. */
constexpr const char* SETTINGS = R"(
    PRAGMA journal_mode = WAL;
    PRAGMA synchronous = FULL;
    PRAGMA wal_autocheckpoint = 0;
    PRAGMA journal_size_limit = 1048576;
    PRAGMA foreign_keys = ON)";

constexpr const char* SELECT_ALL = R"(
    SELECT entry_id, kind, first_name, surname, number, number_type, time, duration, redirecting_number,
           redirecting_first_name, redirecting_last_name, redirecting_number_type, answered, group_name, group_number,
           viewed
    FROM entries JOIN calls USING (entry_id) ORDER BY entry_id, position)";

constexpr const char* INSERT_CALL = R"(
    INSERT INTO calls (entry_id, position, first_name, surname, number, number_type, time, duration,
                       redirecting_number, redirecting_first_name, redirecting_last_name, redirecting_number_type,
                       answered, group_name, group_number, viewed)
    VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?))";

[[noreturn]] void throwDamaged(const char* what)
{
    throw SQLite::Exception(what, SQLITE_CORRUPT);
}

int versionOf(SQLite::Database& database)
{
    const int version = database.execAndGet("PRAGMA user_version").getInt();
    if (version > SCHEMA_VERSION)
    {
        throw NewerJournalSchema();
    }
    const bool isEmpty = database.execAndGet("SELECT count(*) FROM sqlite_master").getInt() == 0;
    if (version < 0 || (version == 0) != isEmpty)
    {
        throwDamaged("no journal");
    }
    return version;
}

/** Nobody else migrates the file meanwhile. */
void migrateOnce(SQLite::Database& database)
{
    SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
    const int version = versionOf(database);
    if (version < SCHEMA_VERSION)
    {
        database.exec(MIGRATIONS.at(static_cast<std::size_t>(version)));
        database.exec("PRAGMA user_version = " + std::to_string(version + 1));
    }
    transaction.commit();
}

void limitSize(SQLite::Database& database, std::uint64_t maxSize)
{
    if (maxSize != 0)
    {
        const auto pageSize = static_cast<std::uint64_t>(database.execAndGet("PRAGMA page_size").getInt());
        const std::uint64_t pages = std::clamp<std::uint64_t>(maxSize / pageSize, 1, MOST_PAGES);
        database.execAndGet("PRAGMA max_page_count = " + std::to_string(pages));
    }
}

void check(SQLite::Database& database)
{
    if (database.execAndGet("PRAGMA quick_check(1)").getString() != "ok")
    {
        throwDamaged("failed the quick check");
    }
    if (SQLite::Statement(database, "PRAGMA foreign_key_check").executeStep())
    {
        throwDamaged("calls without an entry");
    }
}

SQLite::Database openForWriting(const fs::path& file, std::uint64_t maxSize)
{
    SQLite::Database database(file.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, BUSY_TIMEOUT_MS);
    if (sqlite3_db_readonly(database.getHandle(), "main") == 1)
    {
        throw SQLite::Exception("opened for reading only", SQLITE_READONLY);
    }
    versionOf(database); // a file of a newer version is not even set to another journal mode
    database.exec(SETTINGS);
    limitSize(database, maxSize);
    while (versionOf(database) < SCHEMA_VERSION)
    {
        migrateOnce(database);
    }
    check(database);
    return database;
}

/** A number that the type does not have counts as none. */
NumberType::NT numberTypeOf(const SQLite::Column& column)
{
    const int type = column.getInt();
    return type >= NumberType::NONE && type <= NumberType::MOBILE ? static_cast<NumberType::NT>(type)
                                                                  : NumberType::NONE;
}

JournalCall callOf(SQLite::Statement& row, JournalCall::Kind kind)
{
    int column = 2;
    const auto text = [&row, &column] { return row.getColumn(column++).getString(); };
    JournalCall call;
    call.kind = kind;
    call.firstName = text();
    call.surname = text();
    call.info.setRemoteNumber(text());
    call.info.setNumberType(numberTypeOf(row.getColumn(column++)));
    call.info.setCallTime(text());
    call.info.setDuration(text());
    call.info.setRedirectingNumber(text());
    call.info.setRedirectingFirstName(text());
    call.info.setRedirectingLastName(text());
    call.info.setRedirectingNumberType(numberTypeOf(row.getColumn(column++)));
    call.info.setAnswered(row.getColumn(column++).getInt() != 0);
    call.info.setGroupName(text());
    call.info.setGroupNumber(text());
    call.info.setViewed(row.getColumn(column++).getInt() != 0);
    return call;
}

std::vector<JournalEntry> readAll(SQLite::Database& database)
{
    std::vector<JournalEntry> entries;
    SQLite::Statement row(database, SELECT_ALL);
    while (row.executeStep())
    {
        std::string id = row.getColumn(0).getString();
        if (entries.empty() || entries.back().id != id)
        {
            entries.emplace_back();
            entries.back().id = std::move(id);
            entries.back().kind = static_cast<JournalCall::Kind>(row.getColumn(1).getInt()); // checked by the schema
        }
        entries.back().calls.emplace_back(callOf(row, entries.back().kind));
    }
    return entries;
}

/** SQLite then asks for no lock and no write-ahead log beside the file, neither of which it may be able to make. */
std::string unchangingUri(const fs::path& file)
{
    std::string uri = "file:";
    for (const char character : fs::absolute(file).string())
    {
        const bool isSpecial = character == '%' || character == '?' || character == '#';
        constexpr const char* DIGITS = "0123456789ABCDEF";
        const auto byte = static_cast<unsigned char>(character);
        uri += isSpecial ? std::string{'%', DIGITS[byte / 16], DIGITS[byte % 16]} : std::string(1, character);
    }
    return uri + "?immutable=1";
}

std::vector<JournalEntry> openAndRead(const std::string& file, int flags)
{
    SQLite::Database database(file, flags, BUSY_TIMEOUT_MS);
    if (versionOf(database) != SCHEMA_VERSION)
    {
        throw SQLite::Exception("needs a migration", SQLITE_READONLY);
    }
    check(database);
    return readAll(database);
}

/** One that failed the last time is as good as new. */
template <typename... Values>
void run(SQLite::Statement& statement, const Values&... values)
{
    statement.tryReset();
    SQLite::bind(statement, values...);
    statement.exec();
}
} // namespace

NewerJournalSchema::NewerJournalSchema() : std::runtime_error("schema of a newer version") {}

JournalDatabase::JournalDatabase(const fs::path& file, std::uint64_t maxSize)
    : database_(openForWriting(file, maxSize)), deleteCalls_(database_, "DELETE FROM calls WHERE entry_id = ?"),
      deleteEntry_(database_, "DELETE FROM entries WHERE entry_id = ?"),
      insertEntry_(database_, "INSERT INTO entries (entry_id, kind) VALUES (?, ?)"), insertCall_(database_, INSERT_CALL)
{
}

/** The plain way knows the write-ahead log, but needs the files beside that only a writer can make. */
std::vector<JournalEntry> JournalDatabase::readUnwritable(const fs::path& file, bool& lacksLog)
{
    try
    {
        lacksLog = false;
        return openAndRead(file.string(), SQLite::OPEN_READONLY);
    }
    catch (const SQLite::Exception&)
    {
        std::error_code error;
        const auto size = fs::file_size(file.string() + "-wal", error);
        lacksLog = !error && size > 0;
        return openAndRead(unchangingUri(file), SQLite::OPEN_READONLY | SQLite::OPEN_URI);
    }
}

std::vector<JournalEntry> JournalDatabase::read()
{
    return readAll(database_);
}

void JournalDatabase::write(const std::set<std::string>& entryIds, const JournalEntries& entries)
{
    SQLite::Transaction transaction(database_, SQLite::TransactionBehavior::IMMEDIATE);
    for (const std::string& id : entryIds)
    {
        run(deleteCalls_, id);
        run(deleteEntry_, id);
        if (const JournalEntry* entry = entries.find(id))
        {
            insert(*entry);
        }
    }
    transaction.commit();
}

void JournalDatabase::insert(const JournalEntry& entry)
{
    run(insertEntry_, entry.id, static_cast<int>(entry.kind));
    int position = 0;
    for (const JournalEntry::Call& each : entry.calls)
    {
        const Info& info = each.call.info;
        run(insertCall_, entry.id, position++, each.call.firstName, each.call.surname, info.getRemoteNumber(),
            static_cast<int>(info.getNumberType()), info.getCallTime(), info.getDuration(), info.getRedirectingNumber(),
            info.getRedirectingFirstName(), info.getRedirectingLastName(),
            static_cast<int>(info.getRedirectingNumberType()), static_cast<int>(info.getAnswered()),
            info.getGroupName(), info.getGroupNumber(), static_cast<int>(info.getViewed()));
    }
}

void JournalDatabase::checkpoint()
{
    database_.exec("PRAGMA wal_checkpoint(PASSIVE)");
}

bool JournalDatabase::isInPlace()
{
    int hasMoved = 0;
    return sqlite3_file_control(database_.getHandle(), "main", SQLITE_FCNTL_HAS_MOVED, &hasMoved) != SQLITE_OK ||
           hasMoved == 0;
}
} // namespace Host
