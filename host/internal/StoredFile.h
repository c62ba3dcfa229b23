/**
 * A file that the host keeps records in, open or not. Nothing throws; see FileFaults.
 *
 * Database is derived from StoredDatabase and knows the records: types Record and Content, the latter with the present
 * state of all records; WORDING; a constructor with file and maximum size; readUnwritable(file, lacksLog); read();
 * write(ids, content), which gives the records of these ids the state that they have, or do not have, in the content,
 * all of them or none, on the disk when it returns.
 */
#pragma once

#include "host/internal/FileFaults.h"

#include <cstdint>
#include <exception>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Host
{
template <typename Database>
class StoredFile
{
  public:
    using Records = std::vector<typename Database::Record>;
    using Content = typename Database::Content;

    StoredFile(std::filesystem::path file, std::uint64_t maxSize)
        : file_(std::move(file)), maxSize_(maxSize), faults_(file_, Database::WORDING)
    {
    }

    /**
     * Opens the file for writing, or begins one, and reads it. One that cannot be written is read all the same unless
     * its content is known already. Whether `records` are what the file holds.
     */
    bool open(bool isKnown, Records& records)
    {
        if (openForWriting(records) || (faults_.isDamaged() && faults_.setAside() && openForWriting(records)))
        {
            return true;
        }
        return !isKnown && faults_.mayBeReadable() && readUnwritable(records);
    }

    /** Whether it is open for writing. */
    bool isOpen() const { return database_ != nullptr; }

    /** Whether it did. A file that is damaged, or no longer in its place, is closed. Only while open. */
    bool write(const std::set<std::string>& ids, const Content& content)
    {
        if (!database_->isInPlace())
        {
            faults_.logGone();
            database_.reset();
            return false;
        }
        const bool isWritten = faults_.attempt([&] { database_->write(ids, content); }, false);
        needsCheckpoint_ = needsCheckpoint_ || isWritten;
        if (faults_.needsReopening())
        {
            database_.reset();
        }
        if (faults_.isDamaged())
        {
            faults_.setAside();
        }
        return isWritten;
    }

    /** Whether something was written that only the write-ahead log has. */
    bool needsCheckpoint() const { return database_ != nullptr && needsCheckpoint_; }

    /** One that fails costs nothing: the write-ahead log is as good a place, and if the file is at fault, the next
     *  write tells. */
    void checkpoint()
    {
        if (!needsCheckpoint())
        {
            return;
        }
        try
        {
            database_->checkpoint();
            needsCheckpoint_ = false;
        }
        catch (const std::exception& problem)
        {
            faults_.logNoCheckpoint(problem.what());
        }
    }

    std::string problem() const { return faults_.problem(); }

  private:
    bool openForWriting(Records& records)
    {
        const bool isOpened = faults_.attempt(
            [this, &records]
            {
                auto database = std::make_unique<Database>(file_, maxSize_);
                records = database->read();
                database_ = std::move(database);
            },
            true);
        needsCheckpoint_ = isOpened;
        checkpoint();
        return isOpened;
    }

    /** Leaves the fault that it is not writable as it is. */
    bool readUnwritable(Records& records)
    {
        return faults_.attemptToRead(
            [this, &records]
            {
                bool lacksLog = false;
                records = Database::readUnwritable(file_, lacksLog);
                faults_.setLacksLog(lacksLog);
            });
    }

    const std::filesystem::path file_;
    const std::uint64_t maxSize_;
    FileFaults faults_;
    std::unique_ptr<Database> database_; ///< null while the file is not open
    bool needsCheckpoint_ = false;
};
} // namespace Host
