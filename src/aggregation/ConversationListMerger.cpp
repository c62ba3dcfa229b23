#include "ConversationAPI/ConversationListMerger.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationMerger.h"
#include "aggregation/InitialItemIndex.h"
#include "aggregation/MergesAhead.h"
#include "aggregation/RowMatching.h"

#include <algorithm>

namespace ConversationAPI
{
ConversationListMerger::ConversationListMerger(const ConversationList& source)
    : source_(source), conversations_(source.begin(), source.end()), isMerged_(conversations_.size())
{
}

ConversationListMerger::~ConversationListMerger() = default;

void ConversationListMerger::operator()(Conversation* conversation)
{
    if (!conversation)
    {
        return;
    }
    if (!index_)
    {
        makeIndex();
    }
    if (ahead_)
    {
        ahead_->comeToNext();
    }
    ConversationMerger merger(conversation);
    const SharedText id = conversation->storedIdText(); // before anything is merged
    std::size_t next = 0;
    while (next < conversations_.size())
    {
        next = mergeFirst(merger, *conversation, id, next);
    }
}

void ConversationListMerger::makeIndex()
{
    index_ = std::make_unique<InitialItemIndex>(conversations_);
    if (rows_)
    {
        ahead_ = std::make_unique<MergesAhead>(*rows_, source_, conversations_, *index_);
    }
}

/** Whether the candidate is a contact, and the id that of another one. */
bool ConversationListMerger::isOtherContact(const Conversation& candidate, const SharedText& id) const
{
    const auto isContact = [](const Conversation& one) { return one.getContactSource() != Conversation::NO_CONTACT; };
    const Conversation* known = isContact(candidate) ? findRowById(source_, id) : nullptr;
    return known && known != &candidate && isContact(*known);
}

/**
 * Answers where to go on, as what was merged may have given the conversation another initial item. `id` is the one that
 * it had before anything was merged.
 */
std::size_t ConversationListMerger::mergeFirst(ConversationMerger& merger, const Conversation& target,
                                               const SharedText& id, std::size_t first)
{
    const ConversationItem* item = target.shownItem();
    if (!item)
    {
        return conversations_.size();
    }
    const std::size_t mergedBefore = merger.merged().size();
    for (const std::uint32_t place : index_->placesLike(*item, first))
    {
        Conversation* candidate = conversations_[place];
        if (isOtherContact(*candidate, id))
        {
            continue;
        }
        merger(candidate);
        if (merger.merged().size() != mergedBefore)
        {
            isMerged_[place] = true;
            return place + 1U;
        }
    }
    return conversations_.size();
}

std::vector<Conversation*> ConversationListMerger::notMerged() const
{
    std::vector<Conversation*> left;
    for (std::size_t place = 0; place < conversations_.size(); ++place)
    {
        if (!isMerged_[place])
        {
            left.push_back(conversations_[place]);
        }
    }
    return left;
}
} // namespace ConversationAPI
