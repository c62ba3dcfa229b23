/** The phonebook's SQLite file: its schema, and reading and writing contacts. Throws as StoredDatabase does. */
#pragma once

#include "host/internal/FileFaults.h"
#include "host/internal/PhonebookContacts.h"
#include "host/internal/StoredDatabase.h"

#include <set>
#include <string>

namespace Host
{
class PhonebookDatabase final : public StoredDatabase
{
  public:
    using Record = PhonebookContact;
    using Content = PhonebookContacts;

    static constexpr FileWording WORDING{"phonebook", "phonebook"};

    PhonebookDatabase(const std::filesystem::path& file, std::uint64_t maxSize);

    /** The contacts of a file that cannot be written, with the present schema. */
    static std::vector<PhonebookContact> readUnwritable(const std::filesystem::path& file, bool& lacksLog);

    /** In order. */
    std::vector<PhonebookContact> read();

    /** Gives these contacts the state that they have, or do not have, in `contacts`; all of them or none. When it
     *  returns, they are on the disk. */
    void write(const std::set<std::string>& ids, const PhonebookContacts& contacts);

  private:
    void insert(const PhonebookContact& contact);

    SQLite::Statement delete_;
    SQLite::Statement insert_;
};
} // namespace Host
