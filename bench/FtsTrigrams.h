/**
 * Names and numbers as a developer would ask a database for them: SQLite's full-text search with a trigram index.
 *
 * In memory, with a prepared query. It finds nothing for fewer than three characters, neither folds other accents than
 * SQLite does nor knows keypads or forms of numbers.
 */
#pragma once

#include "Contacts.h"
#include "Sqlite.h"

#include <string>
#include <vector>

namespace Bench
{
class FtsTrigrams
{
  public:
    static constexpr std::size_t SHORTEST_TEXT = 3;

    explicit FtsTrigrams(const std::vector<ContactRecord>& contacts)
    {
        database_.run("CREATE VIRTUAL TABLE contact USING fts5(name, work, mobile, tokenize='trigram'); BEGIN");
        const Sqlite::Statement contact = database_.prepare("INSERT INTO contact VALUES(?,?,?)");
        for (const ContactRecord& record : contacts)
        {
            Sqlite::execute(contact,
                            {record.firstName + " " + record.lastName, record.workNumber, record.mobileNumber});
        }
        database_.run("COMMIT; INSERT INTO contact(contact) VALUES('optimize')");
        matching_ = database_.prepare("SELECT rowid FROM contact WHERE contact MATCH ?");
    }

    /** How many rows contain the text. */
    std::size_t count(const std::string& text)
    {
        Sqlite::bind(matching_, {'"' + text + '"'});
        std::size_t rows = 0;
        while (sqlite3_step(matching_.get()) == SQLITE_ROW)
        {
            ++rows;
        }
        sqlite3_reset(matching_.get());
        return rows;
    }

  private:
    Sqlite database_;
    Sqlite::Statement matching_;
};
} // namespace Bench
