#include "ConversationAPI/ShortText.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace ConversationAPI
{
ShortText::ShortText(std::string_view text)
{
    if (text.size() > MOST)
    {
        keepElsewhere(text);
        return;
    }
    std::copy(text.begin(), text.end(), bytes_.begin());
    size_ = static_cast<std::uint8_t>(text.size());
}

void ShortText::keepElsewhere(std::string_view text)
{
    const std::string* kept = std::make_unique<const std::string>(text).release();
    std::memcpy(bytes_.data(), &kept, sizeof(void*));
    size_ = ELSEWHERE;
}

void ShortText::swap(ShortText& other) noexcept
{
    std::swap(bytes_, other.bytes_);
    std::swap(size_, other.size_);
}
} // namespace ConversationAPI
