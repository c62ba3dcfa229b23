#include "ConversationAPI/SharedItem.h"

namespace ConversationAPI
{
SharedItem::SharedItem(std::unique_ptr<ConversationItem> item) : item_(item.release())
{
    if (item_)
    {
        ReferenceCount::increment(item_->holding_.holders);
    }
}

SharedItem::SharedItem(const SharedItem& other) : item_(other.item_), isCopy_(true)
{
    if (!item_)
    {
        return;
    }
    if (item_->holding_.isGivenOut)
    {
        item_ = item_->clone();
    }
    ReferenceCount::increment(item_->holding_.holders);
}

SharedItem& SharedItem::operator=(SharedItem other) noexcept
{
    std::swap(item_, other.item_);
    std::swap(isCopy_, other.isCopy_);
    return *this;
}

SharedItem::~SharedItem()
{
    release();
}

void SharedItem::release()
{
    if (item_ && ReferenceCount::decrement(item_->holding_.holders) == 0)
    {
        delete item_;
    }
}

ConversationItem& SharedItem::write()
{
    makeOwn();
    return *item_;
}

ConversationItem* SharedItem::giveOut()
{
    if (item_)
    {
        makeOwn();
        item_->holding_.isGivenOut = true;
    }
    return item_;
}

std::unique_ptr<ConversationItem> SharedItem::take()
{
    if (item_)
    {
        makeOwn();
        item_->holding_ = {};
    }
    return std::unique_ptr<ConversationItem>(std::exchange(item_, nullptr));
}

void SharedItem::makeOwn()
{
    if (ReferenceCount::load(item_->holding_.holders) > 1)
    {
        ConversationItem* own = item_->clone();
        ReferenceCount::increment(own->holding_.holders);
        release();
        item_ = own;
    }
    else if (isCopy_)
    {
        item_->setClone(); // the one that it was a copy of is gone
    }
}
} // namespace ConversationAPI
