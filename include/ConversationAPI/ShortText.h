/**
 * A text that is nearly always short: up to 15 bytes stand in the object itself, which is half as large as a
 * std::string. A value; never changed but by assignment.
 */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace ConversationAPI
{
class ShortText
{
  public:
    ShortText() = default;
    explicit ShortText(std::string_view text);
    ShortText(const ShortText& other) : bytes_(other.bytes_), size_(other.size_)
    {
        if (size_ == ELSEWHERE)
        {
            keepElsewhere(other.view());
        }
    }
    ShortText(ShortText&& other) noexcept { swap(other); }
    ShortText& operator=(ShortText other) noexcept
    {
        swap(other);
        return *this;
    }
    ~ShortText()
    {
        if (size_ == ELSEWHERE)
        {
            delete elsewhere();
        }
    }

    bool empty() const noexcept { return size_ == 0; }

    /** Valid until this object is assigned to, moved or destroyed. */
    std::string_view view() const noexcept
    {
        return size_ == ELSEWHERE ? std::string_view(*elsewhere()) : std::string_view(bytes_.data(), size_);
    }
    std::string str() const { return std::string(view()); }

  private:
    static constexpr std::size_t MOST = 15;
    static constexpr std::uint8_t ELSEWHERE = 255;

    void keepElsewhere(std::string_view text);
    void swap(ShortText& other) noexcept;

    /** Only for a text that is kept elsewhere. */
    const std::string* elsewhere() const noexcept
    {
        const std::string* text = nullptr;
        std::memcpy(&text, bytes_.data(), sizeof(void*));
        return text;
    }

    std::array<char, MOST> bytes_{}; ///< the text, or a pointer to a std::string with one that is longer
    std::uint8_t size_ = 0;          ///< ELSEWHERE: that pointer
};
} // namespace ConversationAPI
