#include "ConversationAPI/DataThatShouldBeClonedOnCopy.h"

#include "ConversationAPI/ConversationItem.h"

#include <algorithm>

namespace ConversationAPI
{
DataThatShouldBeClonedOnCopy::DataThatShouldBeClonedOnCopy() = default;

DataThatShouldBeClonedOnCopy::DataThatShouldBeClonedOnCopy(const DataThatShouldBeClonedOnCopy& other)
{
    items_.reserve(other.items_.size());
    for (const OwnedItem& item : other.items_)
    {
        items_.emplace_back(item->clone());
    }
    if (other.dummyItem_)
    {
        dummyItem_.reset(other.dummyItem_->clone());
    }
}

DataThatShouldBeClonedOnCopy::~DataThatShouldBeClonedOnCopy() = default;

std::vector<ConversationItem*> DataThatShouldBeClonedOnCopy::pointers() const
{
    std::vector<ConversationItem*> all;
    all.reserve(items_.size());
    for (const OwnedItem& item : items_)
    {
        all.push_back(item.get());
    }
    return all;
}

ConversationItem* DataThatShouldBeClonedOnCopy::initialItem() const
{
    return items_.empty() ? dummyItem_.get() : items_.front().get();
}

void DataThatShouldBeClonedOnCopy::setDummyItem(OwnedItem item)
{
    dummyItem_ = std::move(item);
}

ConversationItem* DataThatShouldBeClonedOnCopy::findEquivalent(const ConversationItem& item) const
{
    const auto found = std::find_if(items_.begin(), items_.end(),
                                    [&item](const OwnedItem& held) {
                                        return !held->lessThanOtherConsideringCreationTime(item) &&
                                               !item.lessThanOtherConsideringCreationTime(*held);
                                    });
    return found == items_.end() ? nullptr : found->get();
}

void DataThatShouldBeClonedOnCopy::insert(OwnedItem item)
{
    const auto place =
        std::find_if(items_.begin(), items_.end(),
                     [&item](const OwnedItem& held) { return item->lessThanOtherConsideringCreationTime(*held); });
    items_.insert(place, std::move(item));
}

void DataThatShouldBeClonedOnCopy::removeFront()
{
    if (!items_.empty())
    {
        items_.erase(items_.begin());
    }
}

void DataThatShouldBeClonedOnCopy::removeBack()
{
    if (!items_.empty())
    {
        items_.pop_back();
    }
}

void DataThatShouldBeClonedOnCopy::clearItems()
{
    items_.clear();
}
} // namespace ConversationAPI
