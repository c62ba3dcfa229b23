/**
 * Brings a file up to what is known in memory: remembers what the file does not have yet, writes it when it can, and
 * tries again every 30 seconds while something waits. Database as for StoredFile; its records have an `id`, and its
 * content a find(id) that gives null for none.
 *
 * A file that was out of reach is opened as soon as that can be done. What it holds is then given to the owner, less
 * the records that are known better in memory.
 */
#pragma once

#include "host/EventLoop.h"
#include "host/internal/StoredFile.h"

#include <algorithm>
#include <iterator>

namespace Host
{
template <typename Database>
class WriteBehind
{
  public:
    using Records = typename StoredFile<Database>::Records;
    using Content = typename Database::Content;

    WriteBehind(std::filesystem::path file, std::uint64_t maxSize) : file_(std::move(file), maxSize) {}

    /** The record is another one now, or new, or gone. */
    void changed(const std::string& id) { unsaved_.insert(id); }

    /** All records are gone; of a file that is out of reach also those that are not known here. */
    void allRemoved() { deletedWhileClosed_ = !file_.isOpen(); }

    /** Whether the file has been read, and has all changes, on the disk. */
    bool isUpToDate() const { return hasReadFile_ && unsaved_.empty() && !deletedWhileClosed_; }

    std::string problem() const { return file_.problem(); }

    /** The file stays as it is from now on, whatever waits or changes. */
    void abandon() { isAbandoned_ = true; }

    /**
     * Writes what waits. When that opens the file, `adopt` gets the records that it holds, to put what is known in
     * `content` on top of them; it returns the ids of those that are then other ones than the file has. Twice,
     * because a file that turns out to be damaged or gone is followed by a new one.
     */
    template <typename Adopt>
    void write(const Content& content, Adopt adopt)
    {
        for (int attempts = 2; attempts > 0 && isWaiting(); --attempts)
        {
            Records stored;
            if (!file_.isOpen() && file_.open(hasReadFile_, stored))
            {
                dropOutdated(stored, content);
                unsaved_.merge(adopt(std::move(stored)));
                deletedWhileClosed_ = deletedWhileClosed_ && !file_.isOpen();
                hasReadFile_ = true;
            }
            const bool wasOpen = file_.isOpen();
            if (wasOpen && !unsaved_.empty() && file_.write(unsaved_, content))
            {
                unsaved_.clear();
            }
            if (!wasOpen || file_.isOpen())
            {
                break; // at once, it would go no better
            }
        }
    }

    /** Has `retry` called when something waits by then. A thread without a loop has no better moment for a checkpoint
     *  than this one. */
    void startTimer(EventLoop::Task retry)
    {
        if (timerRuns_ || (!isWaiting() && !file_.needsCheckpoint()))
        {
            return;
        }
        if (EventLoop* loop = EventLoop::current())
        {
            timer_ = loop->startTimer(RETRY_MS,
                                      [this, retry = std::move(retry)]
                                      {
                                          timerRuns_ = false;
                                          file_.checkpoint();
                                          retry();
                                      });
            timerRuns_ = true;
        }
        else
        {
            file_.checkpoint();
        }
    }

  private:
    static constexpr std::int64_t RETRY_MS = 30'000;

    bool isWaiting() const { return !isAbandoned_ && (!file_.isOpen() || !unsaved_.empty()); }

    /** A record that was changed here since the file was read, or deleted at any time, counts as it is here. Before the
     *  file was first read, one that both have is not outdated: each may know something of it. */
    void dropOutdated(Records& stored, const Content& content)
    {
        const auto isCurrent = [&](const auto& record)
        {
            const bool isChanged = unsaved_.count(record.id) != 0;
            return !deletedWhileClosed_ && !(isChanged && (hasReadFile_ || content.find(record.id) == nullptr));
        };
        const auto outdated = std::stable_partition(stored.begin(), stored.end(), isCurrent);
        std::for_each(outdated, stored.end(), [this](const auto& record) { changed(record.id); });
        stored.erase(outdated, stored.end());
    }

    StoredFile<Database> file_;
    std::set<std::string> unsaved_; ///< ids of records whose state, existing or not, the file does not have
    bool hasReadFile_ = false;      ///< whether the content has what the file held at first
    bool isAbandoned_ = false;
    bool deletedWhileClosed_ = false; ///< whether all records were deleted since the file was last in reach
    TimerHandle timer_;
    bool timerRuns_ = false;
};
} // namespace Host
