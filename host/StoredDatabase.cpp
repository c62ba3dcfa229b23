#include "host/internal/StoredDatabase.h"

#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Transaction.h>
#include <algorithm>
#include <fcntl.h>
#include <sqlite3.h>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace Host
{
namespace
{
namespace fs = std::filesystem;

/** The user waits meanwhile. */
constexpr int BUSY_TIMEOUT_MS = 100;

constexpr std::uint64_t MOST_PAGES = 0xFFFFFFFE; // of an SQLite file

/** A commit waits for the disk once; folding the log into the file is for moments when nobody waits. */
constexpr const char* SETTINGS = R"(
    PRAGMA journal_mode = WAL;
    PRAGMA synchronous = FULL;
    PRAGMA wal_autocheckpoint = 0;
    PRAGMA journal_size_limit = 1048576;
    PRAGMA foreign_keys = ON)";

[[noreturn]] void throwDamaged(const char* what)
{
    throw SQLite::Exception(what, SQLITE_CORRUPT);
}

/** The folder holds whom the user knows and talked to: if it is new, it is the user's alone. */
void makeFolder(const fs::path& folder)
{
    std::error_code error;
    if (fs::create_directories(folder, error))
    {
        fs::permissions(folder, fs::perms::owner_all, error);
    }
}

/** One that exists keeps the rights it has; SQLite gives those of the file to its log. */
void makeFileOfUserAlone(const fs::path& file)
{
    const int descriptor = ::open(file.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor != -1)
    {
        ::close(descriptor);
    }
}

std::size_t versionOf(SQLite::Database& database, const Migrations& migrations)
{
    const int version = database.execAndGet("PRAGMA user_version").getInt();
    if (version > static_cast<int>(migrations.size()))
    {
        throw NewerSchema();
    }
    const bool isEmpty = database.execAndGet("SELECT count(*) FROM sqlite_master").getInt() == 0;
    if (version < 0 || (version == 0) != isEmpty)
    {
        throwDamaged("another program's database");
    }
    return static_cast<std::size_t>(version);
}

/** Nobody else migrates the file meanwhile. */
void migrateOnce(SQLite::Database& database, const Migrations& migrations)
{
    SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
    const std::size_t version = versionOf(database, migrations);
    if (version < migrations.size())
    {
        database.exec(migrations[version]);
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
        throwDamaged("rows that refer to none");
    }
}

SQLite::Database openForWriting(const fs::path& file, const Migrations& migrations, std::uint64_t maxSize)
{
    makeFolder(file.parent_path());
    makeFileOfUserAlone(file);
    SQLite::Database database(file.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, BUSY_TIMEOUT_MS);
    if (sqlite3_db_readonly(database.getHandle(), "main") == 1)
    {
        throw SQLite::Exception("opened for reading only", SQLITE_READONLY);
    }
    versionOf(database, migrations); // a file of a newer version is not even set to another journal mode
    database.exec(SETTINGS);
    limitSize(database, maxSize);
    while (versionOf(database, migrations) < migrations.size())
    {
        migrateOnce(database, migrations);
    }
    check(database);
    return database;
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

void openAndRead(const std::string& file, int flags, const Migrations& migrations,
                 const std::function<void(SQLite::Database&)>& read)
{
    SQLite::Database database(file, flags, BUSY_TIMEOUT_MS);
    if (versionOf(database, migrations) != migrations.size())
    {
        throw SQLite::Exception("needs a migration", SQLITE_READONLY);
    }
    check(database);
    read(database);
}
} // namespace

NewerSchema::NewerSchema() : std::runtime_error("schema of a newer version") {}

StoredDatabase::StoredDatabase(const fs::path& file, const Migrations& migrations, std::uint64_t maxSize)
    : database_(openForWriting(file, migrations, maxSize))
{
}

/** The plain way knows the write-ahead log, but needs the files beside that only a writer can make. */
void StoredDatabase::readUnwritable(const fs::path& file, const Migrations& migrations,
                                    const std::function<void(SQLite::Database&)>& read, bool& lacksLog)
{
    try
    {
        lacksLog = false;
        openAndRead(file.string(), SQLite::OPEN_READONLY, migrations, read);
    }
    catch (const SQLite::Exception&)
    {
        std::error_code error;
        const auto size = fs::file_size(file.string() + "-wal", error);
        lacksLog = !error && size > 0;
        openAndRead(unchangingUri(file), SQLite::OPEN_READONLY | SQLite::OPEN_URI, migrations, read);
    }
}

void StoredDatabase::checkpoint()
{
    database_.exec("PRAGMA wal_checkpoint(PASSIVE)");
}

bool StoredDatabase::isInPlace()
{
    int hasMoved = 0;
    return sqlite3_file_control(database_.getHandle(), "main", SQLITE_FCNTL_HAS_MOVED, &hasMoved) != SQLITE_OK ||
           hasMoved == 0;
}
} // namespace Host
