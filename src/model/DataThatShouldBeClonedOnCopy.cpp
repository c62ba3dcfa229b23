#include "ConversationAPI/DataThatShouldBeClonedOnCopy.h"

#include "model/ItemOrder.h"

#include <algorithm>

namespace ConversationAPI
{
DataThatShouldBeClonedOnCopy::HeldItem::HeldItem(OwnedItem item) : item_(std::move(item)), time_(item_->timeStampUTC())
{
}

DataThatShouldBeClonedOnCopy::DataThatShouldBeClonedOnCopy() = default;

DataThatShouldBeClonedOnCopy::DataThatShouldBeClonedOnCopy(const DataThatShouldBeClonedOnCopy& other)
{
    items_.reserve(other.items_.size());
    specialItems_ = other.specialItems_;
    for (const HeldItem& item : other.items_)
    {
        items_.emplace_back(OwnedItem(item->clone()));
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
    for (const HeldItem& item : items_)
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

/** An ignored waiting call is ordered by its time, but has a call id by which it is looked up. */
bool DataThatShouldBeClonedOnCopy::isPlain(const ConversationItem& item)
{
    const ConversationItemState state = item.getState();
    return isOrderedByTimeAlone(state) && state != ConversationItemState::CALL_WAITING_IGNORED &&
           !item.hasConversationItemId();
}

ConversationItem* DataThatShouldBeClonedOnCopy::findEquivalent(const ConversationItem& item) const
{
    const bool byTimeAlone = holdsOnlyPlainItems() && isPlain(item);
    const long time = item.timeStampUTC();
    const auto found = std::find_if(items_.begin(), items_.end(),
                                    [&](const HeldItem& held)
                                    {
                                        return byTimeAlone ? held.time() == time
                                                           : !held->lessThanOtherConsideringCreationTime(item) &&
                                                                 !item.lessThanOtherConsideringCreationTime(*held);
                                    });
    return found == items_.end() ? nullptr : found->get();
}

void DataThatShouldBeClonedOnCopy::removeEquivalent(const ConversationItem& item)
{
    if (const ConversationItem* equivalent = findEquivalent(item))
    {
        removeIf([equivalent](const ConversationItem& held) { return &held == equivalent; });
    }
}

/** The first item that this one precedes. */
DataThatShouldBeClonedOnCopy::Items::const_iterator
DataThatShouldBeClonedOnCopy::findPlace(const ConversationItem& item) const
{
    const bool byTimeAlone = holdsOnlyPlainItems() && isPlain(item);
    const long time = item.timeStampUTC();
    return std::find_if(items_.begin(), items_.end(),
                        [&](const HeldItem& held) {
                            return byTimeAlone ? time > held.time() : item.lessThanOtherConsideringCreationTime(*held);
                        });
}

void DataThatShouldBeClonedOnCopy::insert(OwnedItem item)
{
    const auto place = findPlace(*item);
    specialItems_ += isPlain(*item) ? 0 : 1;
    items_.insert(place, HeldItem(std::move(item)));
}

void DataThatShouldBeClonedOnCopy::removeFront()
{
    if (!items_.empty())
    {
        specialItems_ -= isPlain(*items_.front()) ? 0 : 1;
        items_.erase(items_.begin());
    }
}

void DataThatShouldBeClonedOnCopy::removeRemoteCallsEarlierThan(const ConversationItem& item)
{
    removeIf([&item](const ConversationItem& held) { return held.isStartedRemoteCall() && item.isLaterThan(held); });
}

bool DataThatShouldBeClonedOnCopy::holdsEndLaterThan(const ConversationItem& item) const
{
    return std::any_of(items_.begin(), items_.end(),
                       [&item](const HeldItem& held) { return held->isEndingRemoteCall() && held->isLaterThan(item); });
}

/** All are asked: a held call that stood among them may have left them in another order than that of their times. */
bool DataThatShouldBeClonedOnCopy::isOlderThanAll(const ConversationItem& item, std::size_t count) const
{
    return isOlderThanAll(item.timeStampUTC(), count) && isPlain(item);
}

bool DataThatShouldBeClonedOnCopy::isOlderThanAll(long time, std::size_t count) const
{
    return holdsOnlyPlainItems() && items_.size() >= count &&
           std::all_of(items_.begin(), items_.end(), [time](const HeldItem& held) { return time < held.time(); });
}

void DataThatShouldBeClonedOnCopy::trimHistory()
{
    const ConversationItem* shown = initialItem();
    const bool mayBeLive = shown && !holdsOnlyPlainItems();
    if (mayBeLive && (shown->isActiveOrProgressingOrClearing() || shown->isRepresentedHeldCall()))
    {
        return;
    }
    while (items_.size() > MOST_HISTORY_ITEMS)
    {
        specialItems_ -= isPlain(*items_.back()) ? 0 : 1;
        items_.pop_back();
    }
}

void DataThatShouldBeClonedOnCopy::clearItems()
{
    items_.clear();
    specialItems_ = 0;
}

std::vector<DataThatShouldBeClonedOnCopy::OwnedItem>
DataThatShouldBeClonedOnCopy::clearFor(const std::vector<ConversationItem*>& items)
{
    std::vector<OwnedItem> owned;
    for (auto next = items.begin(); next != items.end(); ++next)
    {
        ConversationItem* item = *next;
        if (item == nullptr || std::find(items.begin(), next, item) != next)
        {
            continue; // whoever names an item twice still gives it once
        }
        const auto held =
            std::find_if(items_.begin(), items_.end(), [item](const HeldItem& one) { return one.get() == item; });
        owned.push_back(held == items_.end() ? OwnedItem(item) : held->take());
    }
    clearItems();
    return owned;
}
} // namespace ConversationAPI
