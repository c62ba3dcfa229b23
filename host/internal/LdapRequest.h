/** A search on its way to the directory's server. Only the cancelling happens after it was made, from any thread. */
#pragma once

#include <atomic>
#include <chrono>
#include <string>
#include <utility>

namespace Host
{
struct LdapRequest
{
    using Clock = std::chrono::steady_clock;

    LdapRequest(std::string id, std::string searchFilter, Clock::time_point end)
        : searchId(std::move(id)), filter(std::move(searchFilter)), deadline(end)
    {
    }

    bool isOver() const { return isCancelled || Clock::now() >= deadline; }

    const std::string searchId;
    const std::string filter;
    const Clock::time_point deadline;
    std::atomic<bool> isCancelled{false};
};
} // namespace Host
