/**
 * Which things have a text: a number, an identifier.
 *
 * Only hashes of the texts are kept, so looking up reads no text but the one that is sought. It names everything that
 * was added under the text and, rarely, something else: whoever asks tests what is named.
 */
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory_resource>
#include <string_view>
#include <unordered_map>

namespace ConversationAPI
{
template <typename Thing>
class KeyIndex
{
  public:
    explicit KeyIndex(std::pmr::memory_resource* memory) : things_(memory) { things_.max_load_factor(MOST_LOAD); }

    bool empty() const { return things_.empty(); }
    void clear() { things_.clear(); }
    void add(std::string_view key, Thing* thing) { things_.emplace(hash(key), thing); }

    /** Once, if it is there. */
    void remove(std::string_view key, const Thing* thing)
    {
        const auto range = things_.equal_range(hash(key));
        const auto found =
            std::find_if(range.first, range.second, [thing](const auto& entry) { return entry.second == thing; });
        if (found != range.second)
        {
            things_.erase(found);
        }
    }

    /** Appends to `things`. */
    template <typename Things>
    void collect(std::string_view key, Things& things) const
    {
        const auto range = things_.equal_range(hash(key));
        std::for_each(range.first, range.second, [&things](const auto& entry) { things.push_back(entry.second); });
    }

  private:
    /** Low, because most of what is sought is not there, which an empty bucket tells at once. */
    static constexpr float MOST_LOAD = 0.5F;

    static std::size_t hash(std::string_view key) { return std::hash<std::string_view>()(key); }

    std::pmr::unordered_multimap<std::size_t, Thing*> things_;
};
} // namespace ConversationAPI
