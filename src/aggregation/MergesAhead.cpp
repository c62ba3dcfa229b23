#include "aggregation/MergesAhead.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationIDGenerator.h"
#include "ConversationAPI/ConversationList.h"
#include "aggregation/InitialItemIndex.h"
#include "model/Prefetch.h"

#include <algorithm>

namespace ConversationAPI
{
namespace
{
/** That are waited for together. */
constexpr std::size_t ROWS_AT_ONCE = 8;
} // namespace

void MergesAhead::comeToNext()
{
    if (place_++ % ROWS_AT_ONCE != 0)
    {
        return;
    }
    findLikely();
    if (!likely_.empty())
    {
        source_.expectIds(idHashes_);
        likely_.front()->idGenerator().expectIds(idHashes_);
        expectParts();
    }
}

/** The list is asked each time, as whoever is told of a merge may take rows out of it. */
void MergesAhead::findLikely()
{
    items_.clear();
    likely_.clear();
    idHashes_.clear();
    const auto rows = static_cast<std::size_t>(rows_.end() - rows_.begin());
    for (std::size_t next = place_; next < std::min(place_ + ROWS_AT_ONCE, rows); ++next)
    {
        if (const ConversationItem* item = rows_.begin()[static_cast<std::ptrdiff_t>(next)]->itemAtHand())
        {
            items_.push_back(item);
        }
    }
    index_.expect(items_,
                  [this](std::uint32_t place)
                  {
                      prefetch(*conversations_[place]);
                      likely_.push_back(conversations_[place]);
                  });
    for (const Conversation* conversation : likely_)
    {
        idHashes_.push_back(conversation->storedIdText().hash());
    }
}

void MergesAhead::expectParts() const
{
    for (const Conversation* conversation : likely_)
    {
        prefetch(*conversation->contactDetails());
        if (conversation->itemAtHand())
        {
            prefetch(*conversation->itemAtHand());
        }
    }
}
} // namespace ConversationAPI
