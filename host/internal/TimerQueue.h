/**
 * The timers of one event loop in the order in which they fall due; those due together in the order in which
 * they were started. Used on the loop's thread only. Times are the loop's own monotonic milliseconds.
 */
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace Host
{
class TimerQueue
{
  public:
    using Task = std::function<void()>;
    using Key = std::pair<std::int64_t, std::uint64_t>; ///< when it is due, and the how-manieth timer it is

    struct Timer
    {
        std::int64_t due;
        Task task;
    };

    Key add(std::int64_t due, Task task);

    /** Does nothing for a timer that has fired or was removed. */
    void remove(const Key& key);

    /** When the first timer is due; nothing when there is none. */
    std::optional<std::int64_t> nextDue() const;

    /** Takes out the first timer that is due at `until` or before. */
    std::optional<Timer> takeDue(std::int64_t until);

  private:
    std::map<Key, Task> tasks_;
    std::uint64_t started_ = 0;
};
} // namespace Host
