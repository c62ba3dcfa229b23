/**
 * The items of a rebuild in the order in which they are placed, those that belong together in one go.
 *
 * Nearly every item of the call history has one party with one number and nothing else that tells where it
 * belongs, and no other item brings that number together with another one. All such items of one number end up
 * in the conversation that the newest of them finds or starts: the others need not look for it. Items of any other
 * kind, and those that share a number with them, are batches of their own.
 *
 * Items are looked at in the order in which they were made, which is how they lie in memory; only the batches,
 * far fewer than the items, are sorted. The order is that of sortByItemOrder().
 */
#pragma once

#include <cstddef>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace ConversationAPI
{
class ConversationItem;

class ItemBatches
{
  public:
    /** An item and its rank: newer ones come first, and of one time those that were given first. */
    struct Ranked
    {
        long time;
        std::size_t place;
        ConversationItem* item;

        bool operator<(const Ranked& other) const
        {
            return time != other.time ? time > other.time : place < other.place;
        }
    };

    struct Batch
    {
        Ranked first;
        const Ranked* rest; ///< the items that go with it, in order
        const Ranked* end;
        bool hasNumberOfItsOwn; ///< that no item of another batch has
    };

    /** The items, none of them null, in the order in which the sources gave them. */
    explicit ItemBatches(const std::vector<ConversationItem*>& items);

    ItemBatches(const ItemBatches&) = delete;
    ItemBatches& operator=(const ItemBatches&) = delete;

    /** In the order of their first items. Valid as long as this object. */
    const std::vector<Batch>& inOrder() const { return batches_; }

  private:
    using Numbers = std::unordered_set<std::string_view>;
    class Grouping;

    static bool isPlain(const ConversationItem& item);
    static void collectNumbers(const ConversationItem& item, Numbers& numbers);
    void addOthers(std::vector<Ranked> others);
    Ranked firstBehind(const Ranked& other, const Ranked& from) const;
    void addTimed(const Grouping& grouping);
    void add(const Ranked* first, const Ranked* end, bool hasNumberOfItsOwn)
    {
        batches_.push_back({*first, first + 1, end, hasNumberOfItsOwn});
    }

    std::vector<Ranked> timed_; ///< the items that are ordered by their time alone, batch by batch
    std::vector<Batch> batches_;
};
} // namespace ConversationAPI
