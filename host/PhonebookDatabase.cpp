#include "host/internal/PhonebookDatabase.h"

#include <SQLiteCpp/Transaction.h>

namespace Host
{
namespace
{
/** A place is far from where the next one would be none any more. */
const Migrations& migrations()
{
    static const Migrations ladder{
        R"(CREATE TABLE contacts (
               place INTEGER NOT NULL PRIMARY KEY CHECK (place BETWEEN 1 AND 1000000000000),
               contact_id TEXT NOT NULL UNIQUE CHECK (contact_id <> ''),
               surname TEXT, -- this and all that follow: NULL when it was never told
               first_name TEXT,
               office TEXT,
               mobile TEXT,
               private TEXT,
               email TEXT,
               contact_group TEXT,
               default_number TEXT, -- 1 private, 2 office, 3 office2, 4 mobile, 0 the first that there is
               company TEXT,
               office2 TEXT,
               address TEXT,
               address2 TEXT,
               job_function TEXT,
               voice_dial TEXT,
               picture TEXT, -- name of a file
               external_id TEXT, -- on an exchange server
               contact_source TEXT
           ))"};
    return ladder;
}

/** `inFront` and, separated by commas, the text of each field. */
template <typename TextOf>
std::string forEachField(std::string inFront, TextOf textOf)
{
    for (const ContactField& field : CONTACT_FIELDS)
    {
        inFront += std::string(", ") + textOf(field);
    }
    return inFront;
}

std::string columns()
{
    return forEachField("place, contact_id", [](const ContactField& field) { return field.column; });
}

std::string insertion()
{
    const auto values = forEachField("?, ?", [](const ContactField&) { return "?"; });
    return "INSERT INTO contacts (" + columns() + ") VALUES (" + values + ")";
}

PhonebookContact contactOf(SQLite::Statement& row)
{
    PhonebookContact contact;
    int column = 0;
    contact.place = row.getColumn(column++).getInt64();
    contact.id = row.getColumn(column++).getString();
    for (std::optional<std::string>& value : contact.values)
    {
        const SQLite::Column text = row.getColumn(column++);
        if (!text.isNull())
        {
            value = text.getString();
        }
    }
    return contact;
}

std::vector<PhonebookContact> readAll(SQLite::Database& database)
{
    std::vector<PhonebookContact> contacts;
    SQLite::Statement row(database, "SELECT " + columns() + " FROM contacts ORDER BY place");
    while (row.executeStep())
    {
        contacts.push_back(contactOf(row));
    }
    return contacts;
}
} // namespace

PhonebookDatabase::PhonebookDatabase(const std::filesystem::path& file, std::uint64_t maxSize)
    : StoredDatabase(file, migrations(), maxSize), delete_(database(), "DELETE FROM contacts WHERE contact_id = ?"),
      insert_(database(), insertion())
{
}

std::vector<PhonebookContact> PhonebookDatabase::readUnwritable(const std::filesystem::path& file, bool& lacksLog)
{
    std::vector<PhonebookContact> contacts;
    StoredDatabase::readUnwritable(
        file, migrations(), [&contacts](SQLite::Database& database) { contacts = readAll(database); }, lacksLog);
    return contacts;
}

std::vector<PhonebookContact> PhonebookDatabase::read()
{
    return readAll(database());
}

/** The old places are left before new ones are taken. */
void PhonebookDatabase::write(const std::set<std::string>& ids, const PhonebookContacts& contacts)
{
    SQLite::Transaction transaction(database(), SQLite::TransactionBehavior::IMMEDIATE);
    for (const std::string& id : ids)
    {
        run(delete_, id);
    }
    for (const std::string& id : ids)
    {
        if (const PhonebookContact* contact = contacts.find(id))
        {
            insert(*contact);
        }
    }
    transaction.commit();
}

void PhonebookDatabase::insert(const PhonebookContact& contact)
{
    insert_.tryReset();
    int index = 1;
    insert_.bind(index++, contact.place);
    insert_.bind(index++, contact.id);
    for (const std::optional<std::string>& value : contact.values)
    {
        value ? insert_.bind(index++, *value) : insert_.bind(index++);
    }
    insert_.exec();
}
} // namespace Host
