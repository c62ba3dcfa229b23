#include "ConversationAPI/SharedText.h"

#include <atomic>
#include <cstring>
#include <new>
#include <utility>

namespace ConversationAPI
{
/** The characters stand right behind the block. */
struct SharedText::Block
{
    std::atomic<unsigned> owners{1};
    std::size_t length = 0;

    char* characters() { return reinterpret_cast<char*>(this + 1); }
};

SharedText::SharedText(std::string_view text)
{
    if (text.empty())
    {
        return;
    }
    block_ = new (::operator new(sizeof(Block) + text.size())) Block;
    block_->length = text.size();
    std::memcpy(block_->characters(), text.data(), text.size());
}

SharedText::SharedText(const SharedText& other) noexcept : block_(other.block_)
{
    if (block_)
    {
        block_->owners.fetch_add(1, std::memory_order_relaxed);
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
    if (block_ && block_->owners.fetch_sub(1, std::memory_order_acq_rel) == 1)
    {
        block_->~Block();
        ::operator delete(block_);
    }
}

std::string_view SharedText::view() const noexcept
{
    return block_ ? std::string_view(block_->characters(), block_->length) : std::string_view();
}

void SharedText::assign(std::string_view text)
{
    if (view() != text)
    {
        *this = SharedText(text);
    }
}

bool operator==(const SharedText& a, const SharedText& b) noexcept
{
    return a.view() == b.view();
}
} // namespace ConversationAPI
