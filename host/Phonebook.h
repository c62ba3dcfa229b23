/**
 * The telephone's local phonebook: contacts, kept in a file, that are written and read as PhoneBook XML messages.
 * Searches are handed on to a directory.
 *
 * The content lives in memory; the SQLite file makes it last, with the faults and the guarantees of the call journal's:
 * every change is made in memory and then written as one transaction, what cannot be written waits, and is tried
 * again with the next change and every 30 seconds by a timer of the thread's event loop. A file that comes in reach
 * later joins what is known, and the observers are told that the phonebook was updated. A damaged file is set aside
 * under a new name. docs/phonebook.md tells what is guaranteed when, and what messages look like.
 *
 * Observers and the directory are not owned. Observers are told after the attempt to write, one change after the
 * other, and may change the phonebook or remove themselves meanwhile; what they change is told after what they are
 * being told. The event loop under which the phonebook is changed outlives it. UI thread only; one phonebook has one
 * file for itself.
 */
#pragma once

#include "host/DirectorySearch.h"
#include "platform/DirectoryServiceIfc.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace Host
{
class PhonebookContacts;
class PhonebookDatabase;
template <typename Change>
class ReportQueue;
template <typename Database>
class WriteBehind;

class Phonebook final : public DirectoryServiceIfc, private DirectorySearchObserver
{
  public:
    /** Keeps everything in memory alone. */
    Phonebook();

    /** Opens the file or begins one, with its folder; problem() tells what went wrong. `maxFileSize` in bytes, 0 for
     *  no limit. */
    explicit Phonebook(const std::filesystem::path& file, std::uint64_t maxFileSize = 0);

    /** Tries once more to write what waits, and leaves the directory. */
    ~Phonebook() override;

    Phonebook(const Phonebook&) = delete;
    Phonebook& operator=(const Phonebook&) = delete;

    /** Null, and one that is there already, are passed over. */
    void addObserver(DirectoryServiceObserverIfc* observer);
    void removeObserver(DirectoryServiceObserverIfc* observer);

    /** Where searches go; null, as at first, for nowhere: they then end at once. Searches that go on end now. */
    void setDirectory(DirectorySearch* directory);

    /**
     * Whether the file has been read, and has all changes, on the disk. False while changes wait; true for a phonebook
     * without a file.
     */
    bool isStored() const;

    /** Tries to write what waits; whether nothing waits any more. */
    bool store();

    /**
     * What waits is never written, nor what changes from now on. For a program that tells its user that something was
     * not stored, and ends: it must not be stored behind the user's back.
     */
    void abandon();

    /** What is wrong with the file, or that a damaged one was set aside, for the user; "" when nothing is to tell. */
    std::string problem() const;

    /**
     * Stores a contact under the id that the message has: a known one gets the values of the message and keeps those
     * of which it says nothing. Without an id it is a new one and gets an id of its own. A message that is no write
     * request is refused, and so is a contact of which nobody could tell who it is.
     */
    bool write(const std::string& xml, bool notify) override;

    std::string read(const std::string& xml) override;

    /** In the order in which the contacts came. */
    std::vector<std::string> contactIds() override;

    void deleteContact(const std::string& contactId) override;
    void search(const std::string& searchId, const std::string& text) override;
    void cancelSearch(const std::string& searchId) override;

  private:
    using Notice = std::function<void(DirectoryServiceObserverIfc&)>;
    using Notices = std::vector<Notice>;

    void searchResults(const std::string& searchId, const PhonebookSearchResults& results) override;
    void searchEnded(const std::string& searchId) override;

    std::string messageOf(const std::string& contactId) const;
    void settle(const std::string& contactId, Notices notices);
    Notices write();
    void report(Notices notices);

    std::unique_ptr<PhonebookContacts> contacts_;
    std::unique_ptr<WriteBehind<PhonebookDatabase>> file_; ///< null when there is none
    DirectorySearch* directory_ = nullptr;
    std::multiset<std::string> searches_; ///< those that the directory has not ended
    std::vector<DirectoryServiceObserverIfc*> observers_;
    std::unique_ptr<ReportQueue<Notice>> reports_; ///< what observers are still to be told
};
} // namespace Host
