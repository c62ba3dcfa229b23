/** Has what a walk over the batches of a rebuild needs next brought near, and what is remembered of their parties. */
#pragma once

#include "aggregation/ItemBatches.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ConversationAPI
{
class ConversationIDGenerator;
class ConversationList;

class BatchesAhead
{
  public:
    /**
     * The generator, who is asked for the ids, may be null; the list is asked for conversations of these ids. All
     * outlive this object.
     */
    BatchesAhead(const std::vector<ItemBatches::Batch>& batches, const ConversationIDGenerator* ids,
                 const ConversationList& conversations)
        : batches_(batches), ids_(ids), conversations_(conversations)
    {
    }

    /** The walk has come to this place. */
    void comeTo(std::size_t place);

  private:
    /** Of a batch, or of the last one for a place beyond. */
    const ConversationItem& firstItem(std::size_t place) const;

    const std::vector<ItemBatches::Batch>& batches_;
    const ConversationIDGenerator* ids_;
    const ConversationList& conversations_;
    std::vector<const ConversationItem*> expected_;
    std::vector<std::uint32_t> likelyIds_;
};
} // namespace ConversationAPI
