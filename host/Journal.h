/**
 * The telephone's call journal: entries of missed, received, dialled and forwarded calls, kept in a file.
 *
 * Calls of one kind with one remote number (exactly as given) are one entry, and so are those of one name that came
 * without a number, the anonymous ones among them. An entry has the name of its newest call that has one; its calls
 * stand newest first, by the moment, whatever the zone in which it is written; of one moment, the one added last is
 * newest. JournalLimits bounds both, the oldest leaving first. A call whose time cannot be read counts as oldest.
 *
 * The content lives in memory; the SQLite file makes it last. Every change is made in memory and then written as one
 * transaction. What cannot be written waits, and the journal goes on with what it has: the next change tries again,
 * and so does a timer of the thread's event loop, every 30 seconds while something waits. A file that cannot be opened
 * is tried in the same way; what it holds then joins what came meanwhile. A damaged file is set aside under a new name.
 * docs/journal.md tells what is guaranteed when.
 *
 * Observers are not owned. They are told after the attempt to write, one change after the other, and may change the
 * journal or remove themselves meanwhile; what they change is told after what they are being told. The event loop
 * under which the journal is changed outlives it. UI thread only; one journal has one file for itself.
 */
#pragma once

#include "host/JournalCall.h"
#include "platform/JournalServiceIfc.h"

#include <deque>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace Host
{
class JournalEntries;
class JournalDatabase;
struct JournalChange;
struct JournalEntry;
template <typename Change>
class ReportQueue;
template <typename Database>
class WriteBehind;

class Journal final : public JournalServiceIfc
{
  public:
    /** Keeps everything in memory alone. */
    explicit Journal(const JournalLimits& limits = {});

    /** Opens the file or begins one, with its folder; problem() tells what went wrong. */
    explicit Journal(const std::filesystem::path& file, const JournalLimits& limits = {});

    /** Tries once more to write what waits. */
    ~Journal() override;

    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    /** Null, and one that is there already, are passed over. */
    void addObserver(JournalServiceObserverIfc* observer);
    void removeObserver(JournalServiceObserverIfc* observer);

    /**
     * Adds a call and gives the id of its entry. The very same call is there once, however often it is added. A
     * missed call is new until it is seen, the older ones of its entry stay seen. A call older than all that the full
     * journal keeps is passed over. Texts of more than 1000 bytes are cut.
     */
    std::string addCall(const JournalCall& call);

    /** The id of the entry that a call is in, or would be. */
    static std::string entryId(const JournalCall& call);

    /**
     * Whether the file has been read, and has all changes, on the disk. False while changes wait; true for a journal
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

    /** All calls, oldest first. */
    std::vector<JournalCall> calls() const;

    void getCalls(std::deque<MissedCallItem>& entries) override;
    void getCalls(std::deque<ReceivedCallItem>& entries) override;
    void getCalls(std::deque<DialledCallItem>& entries) override;
    void getCalls(std::deque<ForwardedCallItem>& entries) override;
    bool getCall(const std::string& entryId, MissedCallItem& record) override;
    bool getCall(const std::string& entryId, ReceivedCallItem& record) override;
    bool getCall(const std::string& entryId, DialledCallItem& record) override;
    bool getCall(const std::string& entryId, ForwardedCallItem& record) override;
    void deleteAllEntries() override;
    void deleteEntries(const std::set<std::string>& entryIds) override;
    bool ageMissedCalls(const std::set<std::string>& entryIds) override;
    void ageMissedCall(const std::string& entryId) override;

  private:
    using Changes = std::vector<JournalChange>;

    template <typename Record>
    void appendRecords(std::deque<Record>& records) const;
    template <typename Record>
    bool findRecord(const std::string& entryId, Record& record) const;

    void settle(Changes changes);
    Changes write();
    std::set<std::string> adopt(std::vector<JournalEntry> stored, Changes& changes);
    void tell(const JournalChange& change);

    const JournalLimits limits_;
    std::unique_ptr<JournalEntries> entries_;
    std::unique_ptr<WriteBehind<JournalDatabase>> file_; ///< null when there is none
    std::vector<JournalServiceObserverIfc*> observers_;
    std::unique_ptr<ReportQueue<JournalChange>> reports_; ///< what observers are still to be told
};
} // namespace Host
