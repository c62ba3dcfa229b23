#include "ConversationAPI/ModifiedConversationsList.h"

#include "ConversationAPI/SharedText.h"

#include <algorithm>
#include <utility>

namespace ConversationAPI
{
/** The memory of one that has to go is used again: thousands come one after the other when a list is made. */
void ModifiedConversationsList::insert(const std::string& id)
{
    if (!ids_.empty() && ids_.front() == id)
    {
        return;
    }
    const std::uint32_t hash = hashOfText(id);
    if (std::find(hashes_.begin(), hashes_.end(), hash) != hashes_.end() &&
        std::find(ids_.begin(), ids_.end(), id) != ids_.end())
    {
        return;
    }
    std::string text;
    if (ids_.size() >= capacity_)
    {
        text = std::move(ids_.back());
        ids_.pop_back();
    }
    text = id;
    ids_.push_front(std::move(text));
    noteHash(hash);
}

/** In the place of that of the oldest id once there are as many as can be. */
void ModifiedConversationsList::noteHash(std::uint32_t hash)
{
    if (hashes_.size() < capacity_)
    {
        hashes_.push_back(hash);
        oldestHash_ = 0;
        return;
    }
    hashes_[oldestHash_] = hash;
    oldestHash_ = (oldestHash_ + 1) % capacity_;
}

void ModifiedConversationsList::remove(const std::string& id)
{
    const auto found = std::find(ids_.begin(), ids_.end(), id);
    if (found != ids_.end())
    {
        ids_.erase(found);
        hashes_.clear();
        std::for_each(ids_.rbegin(), ids_.rend(), [this](const std::string& left) { noteHash(hashOfText(left)); });
    }
}

std::string ModifiedConversationsList::first() const
{
    return ids_.empty() ? std::string() : ids_.front();
}

void ModifiedConversationsList::clear()
{
    ids_.clear();
    hashes_.clear();
}
} // namespace ConversationAPI
