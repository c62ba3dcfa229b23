#include "lists/NumberIndex.h"

#include <algorithm>

namespace ConversationAPI
{
void NumberIndex::associate(const std::string& number, Conversation* conversation)
{
    if (number.empty())
    {
        return;
    }
    const auto [place, isNew] = numbers_.emplace(number, conversation);
    if (!isNew)
    {
        if (place->second == conversation)
        {
            return;
        }
        forgetClaim(*place);
        place->second = conversation;
    }
    claims_[conversation].push_back(&*place);
}

void NumberIndex::remove(const std::string& number)
{
    const auto found = numbers_.find(number);
    if (found != numbers_.end())
    {
        forgetClaim(*found);
        numbers_.erase(found);
    }
}

void NumberIndex::remove(Conversation* conversation)
{
    const auto claims = claims_.find(conversation);
    if (claims == claims_.end())
    {
        return;
    }
    for (const Numbers::pointer number : claims->second)
    {
        numbers_.erase(numbers_.find(number->first));
    }
    claims_.erase(claims);
}

void NumberIndex::clear()
{
    numbers_.clear();
    claims_.clear();
}

Conversation* NumberIndex::find(const std::string& number) const
{
    const auto found = numbers_.find(number);
    return found == numbers_.end() ? nullptr : found->second;
}

void NumberIndex::forgetClaim(Numbers::value_type& number)
{
    Claims& claims = claims_[number.second];
    claims.erase(std::remove(claims.begin(), claims.end(), &number), claims.end());
}
} // namespace ConversationAPI
