#include "host/internal/JournalDatabase.h"

#include <SQLiteCpp/Transaction.h>

namespace Host
{
namespace
{
using Info = MissedCallItem::MissedCallInfo;

const Migrations& migrations()
{
    static const Migrations ladder{
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
    return ladder;
}

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

} // namespace

JournalDatabase::JournalDatabase(const std::filesystem::path& file, std::uint64_t maxSize)
    : StoredDatabase(file, migrations(), maxSize), deleteCalls_(database(), "DELETE FROM calls WHERE entry_id = ?"),
      deleteEntry_(database(), "DELETE FROM entries WHERE entry_id = ?"),
      insertEntry_(database(), "INSERT INTO entries (entry_id, kind) VALUES (?, ?)"),
      insertCall_(database(), INSERT_CALL)
{
}

std::vector<JournalEntry> JournalDatabase::readUnwritable(const std::filesystem::path& file, bool& lacksLog)
{
    std::vector<JournalEntry> entries;
    StoredDatabase::readUnwritable(
        file, migrations(), [&entries](SQLite::Database& database) { entries = readAll(database); }, lacksLog);
    return entries;
}

std::vector<JournalEntry> JournalDatabase::read()
{
    return readAll(database());
}

void JournalDatabase::write(const std::set<std::string>& entryIds, const JournalEntries& entries)
{
    SQLite::Transaction transaction(database(), SQLite::TransactionBehavior::IMMEDIATE);
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
} // namespace Host
