#include "ConversationAPI/SharedItem.h"

namespace ConversationAPI
{
SharedItem::SharedItem(std::unique_ptr<ConversationItem> item)
{
    hold(item.release(), false);
}

SharedItem::SharedItem(const SharedItem& other)
{
    ConversationItem* item = other.item();
    hold(item && item->holding_.isGivenOut ? item->clone() : item, true);
}

SharedItem& SharedItem::operator=(SharedItem other) noexcept
{
    std::swap(marked_, other.marked_);
    return *this;
}

SharedItem::~SharedItem()
{
    release();
}

void SharedItem::hold(ConversationItem* item, bool isCopy)
{
    marked_ = item;
    if (item)
    {
        ReferenceCount::increment(item->holding_.holders);
        Marking::set_bits(marked_, isCopy ? 1 : 0);
    }
}

void SharedItem::release()
{
    ConversationItem* held = item();
    if (held && ReferenceCount::decrement(held->holding_.holders) == 0)
    {
        delete held;
    }
}

ConversationItem& SharedItem::write()
{
    makeOwn();
    return *item();
}

void SharedItem::stampWithId(const SharedText& conversationId)
{
    if (item()->conversationIdText() != conversationId)
    {
        write().shareConversationId(conversationId);
    }
}

void SharedItem::stampWithExchangeContactId(const SharedText& id)
{
    if (item()->exchangeContactIdText() != id)
    {
        write().shareExchangeContactId(id);
    }
}

ConversationItem* SharedItem::giveOut()
{
    if (item())
    {
        makeOwn();
        item()->holding_.isGivenOut = true;
    }
    return item();
}

std::unique_ptr<ConversationItem> SharedItem::take()
{
    if (item())
    {
        makeOwn();
        item()->holding_ = {};
    }
    std::unique_ptr<ConversationItem> taken(item());
    marked_ = nullptr;
    return taken;
}

void SharedItem::makeOwn()
{
    if (isShared(*item()))
    {
        const bool isCopy = Marking::get_bits(marked_) != 0;
        ConversationItem* own = item()->clone();
        own->clone_ = isCopy || item()->clone_; // the one that was there first is no copy, whoever keeps which
        release();
        hold(own, isCopy);
    }
    else if (Marking::get_bits(marked_) != 0)
    {
        item()->setClone(); // the one that it was a copy of is gone
    }
}
} // namespace ConversationAPI
