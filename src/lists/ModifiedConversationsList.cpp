#include "ConversationAPI/ModifiedConversationsList.h"

#include <algorithm>

namespace ConversationAPI
{
void ModifiedConversationsList::insert(const std::string& id)
{
    if (!queued_.insert(id).second)
    {
        return;
    }
    ids_.push_front(id);
    if (ids_.size() > capacity_)
    {
        queued_.erase(ids_.back());
        ids_.pop_back();
    }
}

void ModifiedConversationsList::remove(const std::string& id)
{
    if (queued_.erase(id) != 0)
    {
        ids_.erase(std::find(ids_.begin(), ids_.end(), id));
    }
}

std::string ModifiedConversationsList::first() const
{
    return ids_.empty() ? std::string() : ids_.front();
}

void ModifiedConversationsList::clear()
{
    ids_.clear();
    queued_.clear();
}
} // namespace ConversationAPI
