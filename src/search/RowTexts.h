/** The texts of rows, one behind the other in a single piece of memory, which is searched in one go. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace ConversationAPI
{
class RowTexts
{
  public:
    /** As the last row; must hold no line feed if it is to be searched. */
    void append(std::string_view text)
    {
        begins_.push_back(static_cast<std::uint32_t>(buffer_.size()));
        buffer_ += text;
        buffer_ += '\n';
    }

    /** The row is found no more; the others keep their places. */
    void blank(std::size_t row)
    {
        const std::size_t begin = begins_[row];
        buffer_.replace(begin, end(row) - begin, end(row) - begin, '\n');
    }

    void clear()
    {
        buffer_.clear();
        begins_.clear();
    }

    std::size_t size() const { return begins_.size(); }

    std::string_view operator[](std::size_t row) const
    {
        return std::string_view(buffer_).substr(begins_[row], end(row) - begins_[row]);
    }

    /** Calls `take` with place and text of each row that contains the needle, which is not empty. */
    template <typename Take>
    void forEachContaining(std::string_view needle, Take take) const
    {
        const char* const bufferEnd = buffer_.data() + buffer_.size();
        std::size_t row = 0;
        for (const char* from = buffer_.data(); from < bufferEnd; from = buffer_.data() + begins_[row])
        {
            const void* found =
                ::memmem(from, static_cast<std::size_t>(bufferEnd - from), needle.data(), needle.size());
            if (!found)
            {
                return;
            }
            const auto place = static_cast<std::size_t>(static_cast<const char*>(found) - buffer_.data());
            while (end(row) < place)
            {
                ++row;
            }
            take(row, (*this)[row]);
            if (++row == size())
            {
                return;
            }
        }
    }

  private:
    std::size_t end(std::size_t row) const
    {
        return (row + 1 < begins_.size() ? begins_[row + 1] : buffer_.size()) - 1;
    }

    std::string buffer_;
    std::vector<std::uint32_t> begins_;
};
} // namespace ConversationAPI
