/** A part of a text, in bytes. */
#pragma once

#include <cstddef>

namespace ConversationAPI
{
struct TextRange
{
    std::size_t begin = 0;
    std::size_t end = 0; ///< behind the last byte

    bool operator==(const TextRange& other) const { return begin == other.begin && end == other.end; }
};
} // namespace ConversationAPI
