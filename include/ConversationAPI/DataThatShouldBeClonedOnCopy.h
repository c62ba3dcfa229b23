/**
 * What must be cloned when a conversation is copied: its items and its placeholder.
 *
 * Owns both, save what it shares with its copies. The items stand in their own order
 * (ConversationItem::lessThanOtherConsideringCreationTime), the most prominent first. That order is no strict weak
 * ordering, so nothing here searches by halves: an item stands before the first one that it precedes, and equivalence
 * is asked of every item. Nearly all sets hold nothing but items that are ordered by their time alone; those are placed
 * without looking at the items.
 */
#pragma once

#include "ConversationAPI/ConversationItem.h"
#include "ConversationAPI/SharedItem.h"

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace ConversationAPI
{
class DataThatShouldBeClonedOnCopy
{
  public:
    using OwnedItem = std::unique_ptr<ConversationItem>;

    /** So many items stay, save while a live call stands first. */
    static constexpr std::size_t MOST_HISTORY_ITEMS = 10;

    /** An item of the set, with its time at hand. */
    class HeldItem : public SharedItem
    {
      public:
        explicit HeldItem(OwnedItem item) : SharedItem(std::move(item)), time_(get()->timeStampUTC()) {}

        /** With its time, which is not looked up. */
        HeldItem(OwnedItem item, long time) : SharedItem(std::move(item)), time_(time) {}

        /** Of an item that had to be cloned, as others may change it, the time is looked up again. */
        HeldItem(const HeldItem& other)
            : SharedItem(other), time_(get() == other.get() ? other.time_ : get()->timeStampUTC())
        {
        }
        HeldItem(HeldItem&&) noexcept = default;
        HeldItem& operator=(HeldItem other) noexcept
        {
            time_ = other.time_;
            SharedItem::operator=(std::move(other));
            return *this;
        }
        ~HeldItem() = default;

        long time() const { return time_; }

      private:
        long time_;
    };

    using Items = boost::container::small_vector<HeldItem, 1>;

    DataThatShouldBeClonedOnCopy();

    /** The copies of the items are made when they are needed. */
    DataThatShouldBeClonedOnCopy(const DataThatShouldBeClonedOnCopy& other);
    DataThatShouldBeClonedOnCopy& operator=(const DataThatShouldBeClonedOnCopy&) = delete;
    ~DataThatShouldBeClonedOnCopy();

    const Items& items() const { return items_; }
    bool empty() const { return items_.empty(); }

    /** Whether every item is one of the history, without an id of its own: ordered by its time alone. */
    bool holdsOnlyPlainItems() const { return specialItems_ == 0; }

    /** All items, given out. */
    std::vector<ConversationItem*> pointers();

    /** The first item of the set, else the placeholder, which may be null; given out. */
    ConversationItem* initialItem();

    /** The same, to look at. */
    const ConversationItem* shownItem() const { return items_.empty() ? dummyItem_.get() : items_.front().get(); }

    /** Whether there is a placeholder or one is waited for. */
    bool hasDummyItem() const { return hasDummyItem_; }

    /** Whether one is waited for, and asked for now. */
    bool needsDummyItem() const { return items_.empty() && hasDummyItem_ && !dummyItem_; }

    /** From now on a placeholder of no time is waited for. */
    void awaitDummyItem();

    /** The time of the placeholder; 0 without one. */
    long dummyTime() const { return dummyItem_ ? dummyItem_->timeStampUTC() : 0; }

    /** Null: there is none. */
    void setDummyItem(OwnedItem item);

    /** The items, to change one. */
    Items& writableItems() { return items_; }

    /** An item of which neither sorts before the other; null when there is none. */
    const ConversationItem* findEquivalent(const ConversationItem& item) const;

    /** Deletes an item of which neither sorts before the other. */
    void removeEquivalent(const ConversationItem& item);

    /** Valid until the set changes. */
    HeldItem& insert(HeldItem item);

    /** One that isOlderThanAll(). */
    void pushBack(HeldItem item) { items_.push_back(std::move(item)); }

    /** Deletes every item for which the predicate holds. */
    template <typename Predicate>
    void removeIf(Predicate predicate)
    {
        extractIf(predicate);
    }

    /** Takes out, in order, every item for which the predicate holds. */
    template <typename Predicate>
    std::vector<HeldItem> extractIf(Predicate predicate)
    {
        std::vector<HeldItem> extracted;
        for (auto item = items_.begin(); item != items_.end();)
        {
            if (predicate(**item))
            {
                specialItems_ -= isPlain(**item) ? 0 : 1;
                extracted.push_back(std::move(*item));
                item = items_.erase(item);
            }
            else
            {
                ++item;
            }
        }
        return extracted;
    }

    /** Does nothing when there is no item. */
    void removeFront();
    void clearItems();

    /** Empties the set. Answers these items, be they from it or not, each once and in order; the others are deleted. */
    std::vector<HeldItem> clearFor(const std::vector<ConversationItem*>& items);

    /** Deletes calls started elsewhere that had ended by the time of this one. */
    void removeRemoteCallsEarlierThan(const ConversationItem& item);

    /** Whether a call of the history ended after this item. */
    bool holdsEndLaterThan(const ConversationItem& item) const;

    /** Whether there are so many items, all of the history, and the item would stand behind all of them. */
    bool isOlderThanAll(const ConversationItem& item, std::size_t count) const;

    /** The same for a plain item of this time. */
    bool isOlderThanAll(long time, std::size_t count) const;
    void reserve(std::size_t count) { items_.reserve(count); }

    /** Deletes the last items beyond MOST_HISTORY_ITEMS, save while a live call stands first. */
    void trimHistory();

  private:
    static bool isPlain(const ConversationItem& item);
    Items::const_iterator findPlace(const ConversationItem& item) const;

    Items items_;
    unsigned specialItems_ = 0; ///< items that are not plain
    bool hasDummyItem_ = false;
    SharedItem dummyItem_; ///< null while it is waited for
};
} // namespace ConversationAPI
