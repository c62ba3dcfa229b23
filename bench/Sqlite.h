/** A database in memory; what goes wrong is thrown. */
#pragma once

#include <sqlite3.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace Bench
{
class Sqlite
{
    struct Close
    {
        void operator()(sqlite3* database) const { sqlite3_close(database); }
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };

  public:
    using Statement = std::unique_ptr<sqlite3_stmt, Close>;

    void run(const char* sql) { check(sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr)); }

    /** Valid as long as the database. */
    Statement prepare(const char* sql)
    {
        sqlite3_stmt* statement = nullptr;
        check(sqlite3_prepare_v2(database_.get(), sql, -1, &statement, nullptr));
        return Statement(statement);
    }

    static void bind(const Statement& statement, const std::vector<std::string>& values)
    {
        int place = 0;
        for (const std::string& value : values)
        {
            check(sqlite3_bind_text(statement.get(), ++place, value.c_str(), -1, SQLITE_TRANSIENT));
        }
    }

    /** A statement that answers no rows. */
    static void execute(const Statement& statement, const std::vector<std::string>& values)
    {
        bind(statement, values);
        check(sqlite3_step(statement.get()));
        check(sqlite3_reset(statement.get()));
    }

  private:
    using Database = std::unique_ptr<sqlite3, Close>;

    static Database open()
    {
        sqlite3* database = nullptr;
        check(sqlite3_open(":memory:", &database));
        return Database(database);
    }

    static void check(int result)
    {
        if (result != SQLITE_OK && result != SQLITE_DONE)
        {
            throw std::runtime_error(sqlite3_errstr(result));
        }
    }

    Database database_ = open();
};
} // namespace Bench
