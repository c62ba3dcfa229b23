#include "host/internal/TimerQueue.h"

namespace Host
{
TimerQueue::Key TimerQueue::add(std::int64_t due, Task task)
{
    const Key key(due, started_++);
    tasks_.emplace(key, std::move(task));
    return key;
}

void TimerQueue::remove(const Key& key)
{
    // The task dies after the map is whole again: what it owns may come back to this queue.
    const auto removed = tasks_.extract(key);
}

std::optional<std::int64_t> TimerQueue::nextDue() const
{
    if (tasks_.empty())
    {
        return std::nullopt;
    }
    return tasks_.begin()->first.first;
}

std::optional<TimerQueue::Timer> TimerQueue::takeDue(std::int64_t until)
{
    if (tasks_.empty() || tasks_.begin()->first.first > until)
    {
        return std::nullopt;
    }
    auto first = tasks_.extract(tasks_.begin());
    return Timer{first.key().first, std::move(first.mapped())};
}
} // namespace Host
