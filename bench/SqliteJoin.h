/**
 * The list as a developer would ask a database for it: calls grouped by contact, else by number, newest first.
 *
 * In memory, indexed, with a prepared query.
 */
#pragma once

#include "Contacts.h"
#include "JournalRecords.h"

#include <sqlite3.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace Bench
{
class SqliteJoin
{
  public:
    SqliteJoin(const std::vector<CallRecord>& calls, const std::vector<ContactRecord>& contacts)
    {
        run("CREATE TABLE call(entry TEXT, time TEXT, number TEXT, name TEXT, kind INTEGER);"
            "CREATE TABLE contact(id INTEGER PRIMARY KEY, name TEXT);"
            "CREATE TABLE contact_number(number TEXT, contact INTEGER);"
            "BEGIN");
        const Statement call = prepare("INSERT INTO call VALUES(?,?,?,?,?)");
        for (const CallRecord& record : calls)
        {
            insert(call, {record.entryId, record.time, record.number, record.firstName + record.lastName,
                          std::to_string(record.kind)});
        }
        const Statement contact = prepare("INSERT INTO contact VALUES(?,?)");
        const Statement number = prepare("INSERT INTO contact_number VALUES(?,?)");
        for (std::size_t i = 0; i < contacts.size(); ++i)
        {
            const std::string id = std::to_string(i + 1);
            insert(contact, {id, contacts[i].firstName + contacts[i].lastName});
            insert(number, {contacts[i].workNumber, id});
            insert(number, {contacts[i].mobileNumber, id});
        }
        run("COMMIT; CREATE INDEX by_number ON contact_number(number); CREATE INDEX by_contact ON "
            "contact_number(contact); CREATE INDEX calls_by_number ON call(number)");
        rows_ = prepare("SELECT coalesce(n.contact, c.number) AS party, coalesce(p.name, c.name), count(*), "
                        "max(c.time) AS newest, c.kind FROM call c LEFT JOIN contact_number n ON n.number = c.number "
                        "LEFT JOIN contact p ON p.id = n.contact GROUP BY party "
                        "UNION ALL SELECT p.id, p.name, 0, '', 0 FROM contact p WHERE NOT EXISTS("
                        "SELECT 1 FROM contact_number n JOIN call c ON c.number = n.number WHERE n.contact = p.id) "
                        "ORDER BY newest DESC");
    }

    /** Reads all rows; answers how many there are. */
    std::size_t read()
    {
        std::size_t count = 0;
        std::size_t size = 0;
        while (sqlite3_step(rows_.get()) == SQLITE_ROW)
        {
            ++count;
            size += static_cast<std::size_t>(sqlite3_column_bytes(rows_.get(), 1));
        }
        sqlite3_reset(rows_.get());
        return size == 0 ? 0 : count;
    }

  private:
    struct Close
    {
        void operator()(sqlite3* database) const { sqlite3_close(database); }
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    using Database = std::unique_ptr<sqlite3, Close>;
    using Statement = std::unique_ptr<sqlite3_stmt, Close>;

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

    void run(const char* sql) { check(sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr)); }

    Statement prepare(const char* sql)
    {
        sqlite3_stmt* statement = nullptr;
        check(sqlite3_prepare_v2(database_.get(), sql, -1, &statement, nullptr));
        return Statement(statement);
    }

    static void insert(const Statement& statement, const std::vector<std::string>& values)
    {
        int place = 0;
        for (const std::string& value : values)
        {
            check(sqlite3_bind_text(statement.get(), ++place, value.c_str(), -1, SQLITE_TRANSIENT));
        }
        check(sqlite3_step(statement.get()));
        check(sqlite3_reset(statement.get()));
    }

    Database database_ = open();
    Statement rows_;
};
} // namespace Bench
