#include "aggregation/BatchesAhead.h"

#include "ConversationAPI/ConversationIDGenerator.h"
#include "ConversationAPI/ConversationItem.h"
#include "ConversationAPI/ConversationList.h"
#include "model/Prefetch.h"

#include <algorithm>

namespace ConversationAPI
{
namespace
{
/** That are waited for together. */
constexpr std::size_t EXPECTED_AT_ONCE = 8;
} // namespace

void BatchesAhead::comeTo(std::size_t place)
{
    prefetch(firstItem(place + 5 * PREFETCH_DISTANCE)); // long before its party's number is read for the id
    prefetchTexts(firstItem(place + PREFETCH_DISTANCE));
    if (ids_ && place % EXPECTED_AT_ONCE == 0)
    {
        expected_.clear();
        const std::size_t first = place + PREFETCH_DISTANCE;
        for (std::size_t next = first; next < std::min(first + EXPECTED_AT_ONCE, batches_.size()); ++next)
        {
            expected_.push_back(&firstItem(next));
        }
        likelyIds_.clear();
        ids_->expect(expected_, likelyIds_);
        conversations_.expectIds(likelyIds_);
    }
}

const ConversationItem& BatchesAhead::firstItem(std::size_t place) const
{
    return *batches_[std::min(place, batches_.size() - 1)].first.item;
}
} // namespace ConversationAPI
