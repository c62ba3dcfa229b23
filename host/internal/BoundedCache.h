/**
 * Remembers texts under texts, at most about twice `capacity` of them, and forgets what was not asked for lately.
 *
 * Two generations: what is found in the old one moves to the young one; when the young one is full, the old one is
 * dropped and the young one takes its place.
 */
#pragma once

#include <string>
#include <unordered_map>
#include <utility>

namespace Host
{
class BoundedCache
{
  public:
    explicit BoundedCache(std::size_t capacity) : capacity_(capacity) {}

    /** Null when it is not known; valid until the next operation. */
    const std::string* find(const std::string& key)
    {
        if (const auto found = young_.find(key); found != young_.end())
        {
            return &found->second;
        }
        const auto found = old_.find(key);
        return found == old_.end() ? nullptr : &insert(key, std::string(found->second));
    }

    /** Gives what is remembered from now on, valid until the next operation. */
    const std::string& insert(const std::string& key, std::string value)
    {
        if (young_.size() >= capacity_)
        {
            old_ = std::exchange(young_, {});
        }
        return young_.insert_or_assign(key, std::move(value)).first->second;
    }

  private:
    const std::size_t capacity_;
    std::unordered_map<std::string, std::string> young_;
    std::unordered_map<std::string, std::string> old_;
};
} // namespace Host
