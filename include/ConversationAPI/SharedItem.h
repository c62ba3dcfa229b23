/**
 * An item of a conversation, which the conversation's copies share until one of them needs it for itself.
 *
 * To whoever uses a conversation, its items are its own: a copy of it has copies of them. But most copies, the rows of
 * the combined list, are looked at and thrown away. So an item is only cloned when it is to be changed, or when a
 * pointer to it is given out through which it may be; one that has been given out is never shared again.
 */
#pragma once

#include "ConversationAPI/ConversationItem.h"

#include <memory>
#include <utility>

namespace ConversationAPI
{
class SharedItem
{
  public:
    SharedItem() = default;

    /** May be null. */
    explicit SharedItem(std::unique_ptr<ConversationItem> item);
    SharedItem(const SharedItem& other);
    SharedItem(SharedItem&& other) noexcept : item_(std::exchange(other.item_, nullptr)), isCopy_(other.isCopy_) {}
    SharedItem& operator=(SharedItem other) noexcept;
    ~SharedItem();

    explicit operator bool() const { return item_ != nullptr; }
    const ConversationItem& operator*() const { return *item_; }
    const ConversationItem* operator->() const { return item_; }
    const ConversationItem* get() const { return item_; }

    /** The item to change, at another place than before if it was shared. */
    ConversationItem& write();

    /** The item for whoever may change it at any time while it is held. */
    ConversationItem* giveOut();

    /** The item, held no longer. */
    std::unique_ptr<ConversationItem> take();

  private:
    void makeOwn();
    void release();

    ConversationItem* item_ = nullptr;
    bool isCopy_ = false; ///< of an item, be it shared with it
};
} // namespace ConversationAPI
