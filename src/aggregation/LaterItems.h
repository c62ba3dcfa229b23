/**
 * Items of a rebuild that wait until every conversation has been started, to be added one conversation at a time.
 *
 * Their conversations are found at once, but adding a conversation's items in a row touches it and them once
 * only. In what order the items of different conversations come does not matter; an item of another batch must
 * find in its conversation all that comes before it, see appendBefore().
 */
#pragma once

#include "ConversationAPI/DataThatShouldBeClonedOnCopy.h"
#include "aggregation/ItemBatches.h"

#include <unordered_map>

namespace ConversationAPI
{
class Conversation;

class LaterItems
{
  public:
    using Ranked = ItemBatches::Ranked;

    /** Items in order, which may be none; not copied. */
    void add(Conversation& conversation, const Ranked* first, const Ranked* end);

    /** Gives the conversation, which is about to get this item, those of its items that come before it. */
    void appendBefore(Conversation& conversation, const Ranked& bound);
    void appendAll();

  private:
    struct Waiting
    {
        Conversation* conversation;
        const Ranked* first;
        const Ranked* end;
    };

    void append(Conversation& conversation, const Ranked* first, const Ranked* end);

    std::vector<Waiting> waiting_;

    /** Of conversations, in waiting_; empty until the first gets items of two batches, which is rare. */
    std::unordered_multimap<const Conversation*, std::size_t> places_;
    std::vector<DataThatShouldBeClonedOnCopy::HeldItem> calls_; ///< memory for those of one conversation
};
} // namespace ConversationAPI
