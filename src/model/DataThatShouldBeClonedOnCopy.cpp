#include "ConversationAPI/DataThatShouldBeClonedOnCopy.h"

#include "model/ItemOrder.h"

#include <algorithm>

namespace ConversationAPI
{
DataThatShouldBeClonedOnCopy::DataThatShouldBeClonedOnCopy() = default;

DataThatShouldBeClonedOnCopy::DataThatShouldBeClonedOnCopy(const DataThatShouldBeClonedOnCopy& other) = default;

DataThatShouldBeClonedOnCopy::~DataThatShouldBeClonedOnCopy() = default;

std::vector<ConversationItem*> DataThatShouldBeClonedOnCopy::pointers()
{
    std::vector<ConversationItem*> all;
    all.reserve(items_.size());
    for (HeldItem& item : items_)
    {
        all.push_back(item.giveOut());
    }
    return all;
}

ConversationItem* DataThatShouldBeClonedOnCopy::initialItem()
{
    return items_.empty() ? dummyItem_.giveOut() : items_.front().giveOut();
}

void DataThatShouldBeClonedOnCopy::awaitDummyItem()
{
    dummyItem_ = {};
    hasDummyItem_ = true;
}

void DataThatShouldBeClonedOnCopy::setDummyItem(OwnedItem item)
{
    hasDummyItem_ = item != nullptr;
    dummyItem_ = SharedItem(std::move(item));
}

/** An ignored waiting call is ordered by its time, but has a call id by which it is looked up. */
bool DataThatShouldBeClonedOnCopy::isPlain(const ConversationItem& item)
{
    const ConversationItemState state = item.getState();
    return isOrderedByTimeAlone(state) && state != ConversationItemState::CALL_WAITING_IGNORED &&
           !item.hasConversationItemId();
}

const ConversationItem* DataThatShouldBeClonedOnCopy::findEquivalent(const ConversationItem& item) const
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

DataThatShouldBeClonedOnCopy::HeldItem& DataThatShouldBeClonedOnCopy::insert(HeldItem item)
{
    const auto place = findPlace(*item);
    specialItems_ += isPlain(*item) ? 0 : 1;
    return *items_.insert(place, std::move(item));
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
    const ConversationItem* shown = shownItem();
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

std::vector<DataThatShouldBeClonedOnCopy::HeldItem>
DataThatShouldBeClonedOnCopy::clearFor(const std::vector<ConversationItem*>& items)
{
    std::vector<HeldItem> owned;
    for (auto next = items.begin(); next != items.end(); ++next)
    {
        ConversationItem* item = *next;
        if (item == nullptr || std::find(items.begin(), next, item) != next)
        {
            continue; // whoever names an item twice still gives it once
        }
        const auto held =
            std::find_if(items_.begin(), items_.end(), [item](const HeldItem& one) { return one.get() == item; });
        owned.emplace_back(held == items_.end() ? OwnedItem(item) : held->take());
        owned.back().giveOut();
    }
    clearItems();
    return owned;
}
} // namespace ConversationAPI
