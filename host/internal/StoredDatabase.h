/**
 * An SQLite file that the host keeps something in: opening it with its schema up to date and its content checked.
 * Base of the classes that know what is in the file.
 *
 * Everything throws SQLite::Exception when SQLite fails, with SQLITE_CORRUPT also for content that breaks the schema
 * and SQLITE_READONLY for a file that can only be read.
 */
#pragma once

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/VariadicBind.h>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <vector>

namespace Host
{
/** SQL that brings a file from the version that is the index to the next one. Never changed, only added to. */
using Migrations = std::vector<const char*>;

/** The schema is one that this program does not know yet. */
class NewerSchema : public std::runtime_error
{
  public:
    NewerSchema();
};

class StoredDatabase
{
  public:
    StoredDatabase(const StoredDatabase&) = delete;
    StoredDatabase& operator=(const StoredDatabase&) = delete;

    /** Moves what is in the write-ahead log to the file proper, as far as nobody is reading it. */
    void checkpoint();

    /** Whether the file is still there under its name. */
    bool isInPlace();

  protected:
    /** Opens the file for writing, or makes one with its folder, brings it to the present schema and checks it.
     *  `maxSize` in bytes, 0 for no limit. */
    StoredDatabase(const std::filesystem::path& file, const Migrations& migrations, std::uint64_t maxSize);
    ~StoredDatabase() = default;

    /** Has a file read that cannot be written; it must have the present schema. `read` may be called again when what
     *  it read the first time cannot be relied on. `lacksLog` tells whether what only the write-ahead log has is
     *  missing. */
    static void readUnwritable(const std::filesystem::path& file, const Migrations& migrations,
                               const std::function<void(SQLite::Database&)>& read, bool& lacksLog);

    SQLite::Database& database() { return database_; }

    /** Runs a prepared statement; one that failed the last time is as good as new. */
    template <typename... Values>
    static void run(SQLite::Statement& statement, const Values&... values)
    {
        statement.tryReset();
        SQLite::bind(statement, values...);
        statement.exec();
    }

  private:
    SQLite::Database database_;
};
} // namespace Host
