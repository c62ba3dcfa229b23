#include "ConversationAPI/SharedText.h"

#include "ConversationAPI/ReferenceCount.h"

#include <utility>

namespace ConversationAPI
{
struct SharedText::Block
{
    explicit Block(std::string content) : text(std::move(content)) {}

    ReferenceCount::type owners = 1;
    const std::string text;
};

SharedText::SharedText(std::string text) : block_(text.empty() ? nullptr : new Block(std::move(text))) {}

SharedText::SharedText(const SharedText& other) noexcept : block_(other.block_)
{
    if (block_)
    {
        ReferenceCount::increment(block_->owners);
    }
}

SharedText::SharedText(SharedText&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}

SharedText& SharedText::operator=(const SharedText& other) noexcept
{
    return *this = SharedText(other);
}

SharedText& SharedText::operator=(SharedText&& other) noexcept
{
    std::swap(block_, other.block_);
    return *this;
}

SharedText::~SharedText()
{
    if (block_ && ReferenceCount::decrement(block_->owners) == 0)
    {
        delete block_;
    }
}

const std::string& SharedText::str() const noexcept
{
    static const std::string empty;
    return block_ ? block_->text : empty;
}

void SharedText::assign(const std::string& text)
{
    if (str() != text)
    {
        *this = SharedText(text);
    }
}

bool operator==(const SharedText& a, const SharedText& b) noexcept
{
    return &a.str() == &b.str() || a.str() == b.str();
}
} // namespace ConversationAPI
