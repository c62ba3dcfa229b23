/**
 * What must be cloned when a conversation is copied: its items and its placeholder.
 *
 * Owns both. The items stand in their own order (ConversationItem::lessThanOtherConsideringCreationTime), the
 * most prominent first. That order is no strict weak ordering, so nothing here searches by halves: an item
 * stands before the first one that it precedes, and equivalence is asked of every item.
 */
#pragma once

#include <boost/container/small_vector.hpp>

#include <memory>
#include <vector>

namespace ConversationAPI
{
class ConversationItem;

class DataThatShouldBeClonedOnCopy
{
  public:
    using OwnedItem = std::unique_ptr<ConversationItem>;
    using Items = boost::container::small_vector<OwnedItem, 2>;

    DataThatShouldBeClonedOnCopy();
    DataThatShouldBeClonedOnCopy(const DataThatShouldBeClonedOnCopy& other);
    DataThatShouldBeClonedOnCopy& operator=(const DataThatShouldBeClonedOnCopy&) = delete;
    ~DataThatShouldBeClonedOnCopy();

    const Items& items() const { return items_; }
    bool empty() const { return items_.empty(); }
    std::vector<ConversationItem*> pointers() const;

    /** The first item of the set, else the placeholder, which may be null. */
    ConversationItem* initialItem() const;

    ConversationItem* dummyItem() const { return dummyItem_.get(); }
    void setDummyItem(OwnedItem item);

    /** An item of which neither sorts before the other; null when there is none. */
    ConversationItem* findEquivalent(const ConversationItem& item) const;
    void insert(OwnedItem item);

    /** Deletes every item for which the predicate holds. */
    template <typename Predicate>
    void removeIf(Predicate predicate)
    {
        extractIf(predicate);
    }

    /** Takes out, in order, every item for which the predicate holds. */
    template <typename Predicate>
    std::vector<OwnedItem> extractIf(Predicate predicate)
    {
        std::vector<OwnedItem> extracted;
        for (auto item = items_.begin(); item != items_.end();)
        {
            if (predicate(**item))
            {
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

    /** These do nothing when there is no item. */
    void removeFront();
    void removeBack();
    void clearItems();

  private:
    Items items_;
    OwnedItem dummyItem_;
};
} // namespace ConversationAPI
