#include "ConversationAPI/ModifiedConversationsList.h"

#include <algorithm>
#include <utility>

namespace ConversationAPI
{
void ModifiedConversationsList::insert(const std::string& id)
{
    if (ids_.size() < capacity_)
    {
        if (queued_.insert(id).second)
        {
            ids_.push_front(id);
        }
    }
    else if (queued_.count(id) == 0)
    {
        takePlaceOfOldest(id);
    }
}

/** In its memory, as thousands of conversations come one after the other when a list is made. */
void ModifiedConversationsList::takePlaceOfOldest(const std::string& id)
{
    auto queued = queued_.extract(ids_.back());
    queued.value() = id;
    queued_.insert(std::move(queued));
    std::string text = std::move(ids_.back());
    ids_.pop_back();
    text = id;
    ids_.push_front(std::move(text));
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
