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

/** As many as are waited for together. The list is asked each time: who is told of a merge may take rows out of it. */
template <typename Use>
void MergesAhead::forEachRow(std::size_t from, Use use) const
{
    const auto rows = static_cast<std::size_t>(rows_.end() - rows_.begin());
    for (std::size_t place = from; place < std::min(from + ROWS_AT_ONCE, rows); ++place)
    {
        use(*rows_.begin()[static_cast<std::ptrdiff_t>(place)]);
    }
}

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

void MergesAhead::findLikely()
{
    items_.clear();
    likely_.clear();
    idHashes_.clear();
    forEachRow(place_ + ROWS_AT_ONCE, [](const Conversation& row) { prefetch(row); });
    forEachRow(place_,
               [this](const Conversation& row)
               {
                   prefetch(*row.contactDetails());
                   prefetchBeginning(row.storedIdText().str());
                   if (const ConversationItem* item = row.itemAtHand())
                   {
                       items_.push_back(item);
                   }
               });
    index_.expect(items_,
                  [this](std::uint32_t place)
                  {
                      prefetch(*conversations_[place]);
                      likely_.push_back(conversations_[place]);
                  });
    for (const Conversation* conversation : likely_)
    {
        idHashes_.push_back(conversation->storedIdText().hash());
        prefetch(*conversation->contactDetails());
    }
}

void MergesAhead::expectParts() const
{
    forEachRow(place_, [](const Conversation& row) { prefetchLine(row.storedIdText().str().data()); });
    for (const Conversation* conversation : likely_)
    {
        prefetchOthers(conversation->contactDetails()->numbers);
        if (conversation->itemAtHand())
        {
            prefetchHead(*conversation->itemAtHand());
        }
    }
}
} // namespace ConversationAPI
