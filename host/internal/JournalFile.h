/**
 * The call journal's file and what can be wrong with it.
 *
 * Nothing throws. What fails is told in the log, once until it is another thing that fails, and by problem(). A damaged
 * file is set aside with its write-ahead log, as FILE.damaged-TIME.
 */
#pragma once

#include "host/internal/JournalEntries.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace Host
{
class JournalDatabase;

class JournalFile
{
  public:
    JournalFile(std::filesystem::path file, std::uint64_t maxSize);
    ~JournalFile();

    JournalFile(const JournalFile&) = delete;
    JournalFile& operator=(const JournalFile&) = delete;

    /**
     * Opens the file for writing, or begins one, and reads it. One that cannot be written is read all the same unless
     * its content is known already. Whether `entries` are what the file holds.
     */
    bool open(bool isKnown, std::vector<JournalEntry>& entries);

    /** Whether it is open for writing. */
    bool isOpen() const;

    /** Writes the state of these entries, see JournalDatabase; whether it did. A file that is damaged, or no longer in
     *  its place, is closed. Only while open. */
    bool write(const std::set<std::string>& entryIds, const JournalEntries& entries);

    /** Whether something was written that only the write-ahead log has. */
    bool needsCheckpoint() const;
    void checkpoint();

    std::string problem() const;

  private:
    enum class Fault
    {
        NONE,
        LOCKED,
        FULL,
        READ_ONLY,
        OUT_OF_REACH,
        NEWER,
        DAMAGED,
        OTHER
    };

    template <typename Action>
    bool attempt(Action action);
    bool openForWriting(std::vector<JournalEntry>& entries);
    bool readUnwritable(std::vector<JournalEntry>& entries);
    bool setAside();
    void note(Fault fault, const std::string& reason = "");

    Fault faultOf(int sqliteResult) const;
    static const char* describe(Fault fault);

    const std::filesystem::path file_;
    const std::uint64_t maxSize_;
    std::unique_ptr<JournalDatabase> database_; ///< null while the file is not open
    Fault fault_ = Fault::NONE;                 ///< what went wrong the last time that something was tried
    std::filesystem::path setAside_;            ///< the last damaged file under its new name
    int timesSetAside_ = 0;
    bool lacksLog_ = false; ///< what was read is without the calls that only the write-ahead log has
    bool needsCheckpoint_ = false;
};
} // namespace Host
