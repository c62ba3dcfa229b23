/**
 * An item of a conversation, which the conversation's copies share until one of them needs it for itself.
 *
 * To whoever uses a conversation, its items are its own: a copy of it has copies of them. But most copies, the rows of
 * the combined list, are looked at and thrown away. So an item is only cloned when it is to be changed, or when a
 * pointer to it is given out through which it may be; one that has been given out is never shared again.
 */
#pragma once

#include "ConversationAPI/ConversationItem.h"

#include <boost/intrusive/pointer_plus_bits.hpp>

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
    SharedItem(SharedItem&& other) noexcept : marked_(std::exchange(other.marked_, nullptr)) {}
    SharedItem& operator=(SharedItem other) noexcept;
    ~SharedItem();

    explicit operator bool() const { return item() != nullptr; }
    const ConversationItem& operator*() const { return *item(); }
    const ConversationItem* operator->() const { return item(); }
    const ConversationItem* get() const { return item(); }

    /** Whether several hold the item. */
    static bool isShared(const ConversationItem& item) { return ReferenceCount::load(item.holding_.holders) > 1; }

    /** The item to change, at another place than before if it was shared. */
    ConversationItem& write();

    /** Has the item carry these ids, which needs no item of its own when it does so already. */
    void stampWithId(const SharedText& conversationId);
    void stampWithExchangeContactId(const SharedText& id);

    /** The item for whoever may change it at any time while it is held. */
    ConversationItem* giveOut();

    /** The item, held no longer. */
    std::unique_ptr<ConversationItem> take();

  private:
    using Marking = boost::intrusive::pointer_plus_bits<ConversationItem*, 1>;

    ConversationItem* item() const { return Marking::get_pointer(marked_); }
    void hold(ConversationItem* item, bool isCopy);
    void makeOwn();
    void release();

    ConversationItem* marked_ = nullptr; ///< marked when it is a copy of an item, be it shared with it
};
} // namespace ConversationAPI
