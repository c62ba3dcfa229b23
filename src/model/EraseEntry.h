/** Erasing one of several entries of a key. */
#pragma once

#include <algorithm>
#include <string_view>

namespace ConversationAPI
{
/** Erases the entry of the key with this value from a multimap, if there is one. */
template <typename Index, typename Value>
void eraseEntry(Index& index, std::string_view key, const Value& value)
{
    const auto range = index.equal_range(key);
    const auto found =
        std::find_if(range.first, range.second, [&value](const auto& entry) { return entry.second == value; });
    if (found != range.second)
    {
        index.erase(found);
    }
}
} // namespace ConversationAPI
