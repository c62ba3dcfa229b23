/**
 * Which items of a sorted sequence go into one conversation.
 *
 * Nearly every item of the call history has one party with one number and nothing else that tells where it
 * belongs, and no other item brings that number together with another one. All such items of one number end up
 * in the conversation that the first of them finds or starts: the others need not look for it. Items of any other
 * kind, and those that share a number with them, find their conversation themselves.
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
    /** The items must outlive this object's constructor only. */
    explicit ItemBatches(const std::vector<ConversationItem*>& items);

    /** The next item of the same batch; the number of items when there is none. */
    std::size_t next(std::size_t place) const { return next_[place]; }

  private:
    using Numbers = std::unordered_set<std::string_view>;

    static bool isPlain(const ConversationItem& item);
    static void collectNumbers(const ConversationItem& item, Numbers& numbers);

    std::vector<std::size_t> next_;
};
} // namespace ConversationAPI
