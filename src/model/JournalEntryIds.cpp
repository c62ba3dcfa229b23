#include "ConversationAPI/JournalEntryIds.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace ConversationAPI
{
namespace
{
/** So many ids are kept as they come. */
constexpr std::size_t FEW = 64;

/** Of these nothing is repeated: a party has few journal entries, mostly one for each kind of call. */
constexpr std::size_t LATEST = 4;
} // namespace

void JournalEntryIds::add(const std::string& id)
{
    const auto last = ids_.rbegin();
    const auto end = last + static_cast<std::ptrdiff_t>(std::min(ids_.size(), LATEST));
    if (id.empty() || std::find(last, end, id) != end)
    {
        return;
    }
    ids_.push_back(id);
    if (ids_.size() > 2 * distinct_ + FEW)
    {
        dropRepetitions(ids_);
        distinct_ = ids_.size();
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
}

std::vector<std::string> JournalEntryIds::inOrder() const
{
    Ids distinct = ids_;
    dropRepetitions(distinct);
    return {distinct.begin(), distinct.end()};
}

/** The first of each stays where it is in the order. */
void JournalEntryIds::dropRepetitions(Ids& ids)
{
    Ids distinct;
    distinct.reserve(ids.size());
    std::unordered_set<std::string_view> seen;
    for (std::string& id : ids)
    {
        if (seen.count(id) == 0)
        {
            distinct.push_back(std::move(id));
            seen.insert(distinct.back());
        }
    }
    ids = std::move(distinct);
}
} // namespace ConversationAPI
