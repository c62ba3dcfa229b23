/**
 * A text that never changes and is shared by its copies.
 *
 * Items and conversations are cloned far more often than their identifiers change, and most of their texts
 * are empty: an empty one costs a pointer, a copy costs a count. Copies may live on different threads.
 */
#pragma once

#include <string>
#include <string_view>

namespace ConversationAPI
{
class SharedText
{
  public:
    SharedText() = default;
    explicit SharedText(std::string text);
    SharedText(const SharedText& other) noexcept;
    SharedText(SharedText&& other) noexcept;
    SharedText& operator=(const SharedText& other) noexcept;
    SharedText& operator=(SharedText&& other) noexcept;
    ~SharedText();

    bool empty() const noexcept { return block_ == nullptr; }

    /** Live as long as any copy of this text. */
    const std::string& str() const noexcept;
    std::string_view view() const noexcept { return str(); }

    /** Becomes `text`; keeps the block it has when that already says so. */
    void assign(const std::string& text);

  private:
    struct Block;

    Block* block_ = nullptr; ///< null for the empty text
};

bool operator==(const SharedText& a, const SharedText& b) noexcept;
inline bool operator!=(const SharedText& a, const SharedText& b) noexcept
{
    return !(a == b);
}
} // namespace ConversationAPI
