/** The call journal's SQLite file: its schema, and reading and writing entries. Throws as StoredDatabase does. */
#pragma once

#include "host/internal/FileFaults.h"
#include "host/internal/JournalEntries.h"
#include "host/internal/StoredDatabase.h"

#include <set>
#include <string>

namespace Host
{
class JournalDatabase final : public StoredDatabase
{
  public:
    using Record = JournalEntry;
    using Content = JournalEntries;

    static constexpr FileWording WORDING{"journal", "call journal"};

    JournalDatabase(const std::filesystem::path& file, std::uint64_t maxSize);

    /** The entries of a file that cannot be written, with the present schema; `lacksLog` tells whether those are
     *  missing that only the write-ahead log has. */
    static std::vector<JournalEntry> readUnwritable(const std::filesystem::path& file, bool& lacksLog);

    std::vector<JournalEntry> read();

    /** Gives these entries the state that they have, or do not have, in `entries`; all of them or none. When it
     *  returns, they are on the disk. */
    void write(const std::set<std::string>& entryIds, const JournalEntries& entries);

  private:
    void insert(const JournalEntry& entry);

    SQLite::Statement deleteCalls_;
    SQLite::Statement deleteEntry_;
    SQLite::Statement insertEntry_;
    SQLite::Statement insertCall_;
};
} // namespace Host
