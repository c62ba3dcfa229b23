#include "lists/NumberIndex.h"

#include <algorithm>
#include <utility>

namespace ConversationAPI
{
namespace
{
/** Some megabytes. */
constexpr std::size_t MOST_CHANGES = 65'536;
} // namespace

void NumberIndex::associate(const std::string& number, Conversation* conversation)
{
    if (!number.empty())
    {
        note({number, conversation, false});
    }
}

void NumberIndex::remove(const std::string& number)
{
    note({number, nullptr, true});
}

void NumberIndex::remove(Conversation* conversation)
{
    note({{}, conversation, true});
}

void NumberIndex::clear()
{
    changes_.clear();
    numbers_.clear();
    claims_.clear();
}

Conversation* NumberIndex::find(const std::string& number) const
{
    applyChanges();
    const auto found = numbers_.find(number);
    return found == numbers_.end() ? nullptr : found->second;
}

void NumberIndex::note(Change change)
{
    changes_.push_back(std::move(change));
    if (changes_.size() >= MOST_CHANGES)
    {
        applyChanges();
    }
}

void NumberIndex::applyChanges() const
{
    for (const Change& change : changes_)
    {
        apply(change);
    }
    changes_.clear();
}

void NumberIndex::apply(const Change& change) const
{
    if (change.isRemoval && change.conversation)
    {
        removeNow(change.conversation);
        return;
    }
    const auto known = numbers_.find(change.number);
    if (change.isRemoval)
    {
        if (known != numbers_.end())
        {
            forgetClaim(*known);
            numbers_.erase(known);
        }
    }
    else if (known == numbers_.end())
    {
        const auto added = numbers_.emplace(change.number, change.conversation).first;
        claims_[change.conversation].push_back(&*added);
    }
    else if (known->second != change.conversation)
    {
        forgetClaim(*known);
        known->second = change.conversation;
        claims_[change.conversation].push_back(&*known);
    }
}

void NumberIndex::removeNow(Conversation* conversation) const
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

void NumberIndex::forgetClaim(Numbers::value_type& number) const
{
    Claims& claims = claims_[number.second];
    claims.erase(std::remove(claims.begin(), claims.end(), &number), claims.end());
}
} // namespace ConversationAPI
