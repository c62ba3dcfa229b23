/**
 * The call journal's SQLite file: its schema, and reading and writing entries.
 *
 * Everything throws SQLite::Exception when SQLite fails, with SQLITE_CORRUPT also for content that breaks the schema
 * and SQLITE_READONLY for a file that can only be read.
 */
#pragma once

#include "host/internal/JournalEntries.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <cstdint>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace Host
{
/** The schema is one that this program does not know yet. */
class NewerJournalSchema : public std::runtime_error
{
  public:
    NewerJournalSchema();
};

class JournalDatabase
{
  public:
    /** Opens the file for writing, or makes one, brings it to the present schema and checks it. */
    JournalDatabase(const std::filesystem::path& file, std::uint64_t maxSize);

    /** The entries of a file that cannot be written, with the present schema; `lacksLog` tells whether those are
     *  missing that only the write-ahead log has. */
    static std::vector<JournalEntry> readUnwritable(const std::filesystem::path& file, bool& lacksLog);

    std::vector<JournalEntry> read();

    /** Gives these entries the state that they have, or do not have, in `entries`; all of them or none. When it
     *  returns, they are on the disk. */
    void write(const std::set<std::string>& entryIds, const JournalEntries& entries);

    /** Moves what is in the write-ahead log to the file proper, as far as nobody is reading it. */
    void checkpoint();

    /** Whether the file is still there under its name. */
    bool isInPlace();

  private:
    void insert(const JournalEntry& entry);

    SQLite::Database database_;
    SQLite::Statement deleteCalls_;
    SQLite::Statement deleteEntry_;
    SQLite::Statement insertEntry_;
    SQLite::Statement insertCall_;
};
} // namespace Host
