#include "sources/ContactIdPairs.h"

#include <algorithm>
#include <utility>

namespace ConversationAPI
{
void ContactIdPairs::add(const std::string& contactId, const std::string& conversationId)
{
    if (contactId.empty() || conversationId.empty() || conversationOf(contactId) == conversationId)
    {
        return;
    }
    removeContact(contactId);
    conversations_[contactId] = conversationId;
    contacts_[conversationId].push_back(contactId);
}

void ContactIdPairs::removeContact(const std::string& contactId)
{
    const auto pair = conversations_.find(contactId);
    if (pair == conversations_.end())
    {
        return;
    }
    const auto contacts = contacts_.find(pair->second);
    contacts->second.erase(std::find(contacts->second.begin(), contacts->second.end(), contactId));
    if (contacts->second.empty())
    {
        contacts_.erase(contacts);
    }
    conversations_.erase(pair);
}

void ContactIdPairs::keepShown(const std::vector<std::string>& contactIds)
{
    ContactIdPairs kept;
    for (const std::string& contactId : contactIds)
    {
        if (!isHiddenByOther(contactId))
        {
            kept.add(contactId, conversationOf(contactId));
        }
    }
    *this = std::move(kept);
}

std::string ContactIdPairs::conversationOf(const std::string& contactId) const
{
    const auto pair = conversations_.find(contactId);
    return pair == conversations_.end() ? std::string() : pair->second;
}

std::string ContactIdPairs::shownContactOf(const std::string& conversationId) const
{
    const auto contacts = contacts_.find(conversationId);
    return contacts == contacts_.end() ? std::string() : contacts->second.front();
}

std::vector<std::string> ContactIdPairs::contactsOf(const std::string& conversationId) const
{
    const auto contacts = contacts_.find(conversationId);
    return contacts == contacts_.end() ? std::vector<std::string>() : contacts->second;
}

bool ContactIdPairs::isHiddenByOther(const std::string& contactId) const
{
    const auto pair = conversations_.find(contactId);
    return pair != conversations_.end() && shownContactOf(pair->second) != contactId;
}
} // namespace ConversationAPI
