/**
 * The list as a developer would ask a database for it: calls grouped by contact, else by number, newest first.
 *
 * In memory, indexed, with a prepared query.
 */
#pragma once

#include "Contacts.h"
#include "JournalRecords.h"
#include "Sqlite.h"

#include <string>
#include <vector>

namespace Bench
{
class SqliteJoin
{
  public:
    SqliteJoin(const std::vector<CallRecord>& calls, const std::vector<ContactRecord>& contacts)
    {
        database_.run("CREATE TABLE call(entry TEXT, time TEXT, number TEXT, name TEXT, kind INTEGER);"
                      "CREATE TABLE contact(id INTEGER PRIMARY KEY, name TEXT);"
                      "CREATE TABLE contact_number(number TEXT, contact INTEGER);"
                      "BEGIN");
        const Sqlite::Statement call = database_.prepare("INSERT INTO call VALUES(?,?,?,?,?)");
        for (const CallRecord& record : calls)
        {
            Sqlite::execute(call, {record.entryId, record.time, record.number, record.firstName + record.lastName,
                                   std::to_string(record.kind)});
        }
        const Sqlite::Statement contact = database_.prepare("INSERT INTO contact VALUES(?,?)");
        const Sqlite::Statement number = database_.prepare("INSERT INTO contact_number VALUES(?,?)");
        for (std::size_t i = 0; i < contacts.size(); ++i)
        {
            const std::string id = std::to_string(i + 1);
            Sqlite::execute(contact, {id, contacts[i].firstName + contacts[i].lastName});
            Sqlite::execute(number, {contacts[i].workNumber, id});
            Sqlite::execute(number, {contacts[i].mobileNumber, id});
        }
        database_.run("COMMIT; CREATE INDEX by_number ON contact_number(number); CREATE INDEX by_contact ON "
                      "contact_number(contact); CREATE INDEX calls_by_number ON call(number)");
        rows_ = database_.prepare(
            "SELECT coalesce(n.contact, c.number) AS party, coalesce(p.name, c.name), count(*), "
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
    Sqlite database_;
    Sqlite::Statement rows_;
};
} // namespace Bench
