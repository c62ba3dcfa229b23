/**
 * A text that never changes and is shared by its copies.
 *
 * Items and conversations are cloned far more often than their identifiers change, and most of their texts
 * are empty: an empty one costs a pointer, a copy costs a count. Copies may live on different threads.
 */
#pragma once

#include "ConversationAPI/ReferenceCount.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace ConversationAPI
{
/** The same for equal texts, and nearly always different for others; 0 for the empty text alone. */
inline std::uint32_t hashOfText(std::string_view text) noexcept
{
    const std::uint64_t hash = std::hash<std::string_view>()(text);
    return text.empty() ? 0 : std::max(static_cast<std::uint32_t>(hash ^ (hash >> 32U)), 1U);
}

class SharedText
{
  public:
    SharedText() = default;
    explicit SharedText(std::string text) : block_(text.empty() ? nullptr : new Block(std::move(text))) {}
    SharedText(const SharedText& other) noexcept : block_(other.block_)
    {
        if (block_)
        {
            ReferenceCount::increment(block_->owners);
        }
    }
    SharedText(SharedText&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
    SharedText& operator=(const SharedText& other) noexcept { return *this = SharedText(other); }
    SharedText& operator=(SharedText&& other) noexcept
    {
        std::swap(block_, other.block_);
        return *this;
    }
    ~SharedText()
    {
        if (block_ && ReferenceCount::decrement(block_->owners) == 0)
        {
            delete block_;
        }
    }

    bool empty() const noexcept { return block_ == nullptr; }

    /** Live as long as any copy of this text. */
    const std::string& str() const noexcept { return block_ ? block_->text : emptyText(); }
    std::string_view view() const noexcept { return str(); }

    /** hashOfText(), which is known without reading the text. */
    std::uint32_t hash() const noexcept { return block_ ? block_->hash : 0; }

    /** Becomes `text`; keeps the block it has when that already says so. */
    void assign(const std::string& text);

    friend bool operator==(const SharedText& a, const SharedText& b) noexcept
    {
        return a.block_ == b.block_ || (a.hash() == b.hash() && a.str() == b.str());
    }

  private:
    struct Block
    {
        explicit Block(std::string content) : hash(hashOfText(content)), text(std::move(content)) {}

        ReferenceCount::type owners = 1;
        const std::uint32_t hash;
        const std::string text;
    };

    static const std::string& emptyText() noexcept;

    Block* block_ = nullptr; ///< null for the empty text
};

inline bool operator!=(const SharedText& a, const SharedText& b) noexcept
{
    return !(a == b);
}
} // namespace ConversationAPI
