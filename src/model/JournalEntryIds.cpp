#include "ConversationAPI/JournalEntryIds.h"

#include <algorithm>

namespace ConversationAPI
{
namespace
{
/** Up to here looking through the sequence is quicker than hashing. */
constexpr std::size_t FEW = 16;
} // namespace

bool JournalEntryIds::contains(const std::string& id) const
{
    return ids_.size() <= FEW ? std::find(ids_.begin(), ids_.end(), id) != ids_.end() : known_.count(id) != 0;
}

void JournalEntryIds::add(const std::string& id)
{
    if (id.empty() || contains(id))
    {
        return;
    }
    ids_.push_back(id);
    if (ids_.size() == FEW + 1)
    {
        known_.insert(ids_.begin(), ids_.end());
    }
    else if (ids_.size() > FEW)
    {
        known_.insert(id);
    }
}

void JournalEntryIds::add(const JournalEntryIds& others)
{
    for (const std::string& id : others.ids_)
    {
        add(id);
    }
}

void JournalEntryIds::remove(const std::string& id)
{
    ids_.erase(std::remove(ids_.begin(), ids_.end(), id), ids_.end());
    known_.erase(id);
    if (ids_.size() <= FEW)
    {
        known_.clear();
    }
}
} // namespace ConversationAPI
