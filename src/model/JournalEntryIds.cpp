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

JournalEntryIds::JournalEntryIds(const JournalEntryIds& other)
    : first_(other.first_), more_(other.more_ ? std::make_unique<More>(*other.more_) : nullptr)
{
}

void JournalEntryIds::add(const std::string& id)
{
    if (isAmongLatest(id))
    {
        return;
    }
    if (first_.empty() && !more_ && !id.empty())
    {
        first_ = ShortText(id);
        return;
    }
    if (!more_)
    {
        more_ = std::make_unique<More>();
    }
    more_->ids.push_back(id);
    if (more_->ids.size() > 2 * more_->distinct + FEW)
    {
        dropRepetitions(more_->ids);
        more_->distinct = more_->ids.size();
    }
}

void JournalEntryIds::add(const JournalEntryIds& others)
{
    for (const std::string& id : others.all())
    {
        add(id);
    }
}

bool JournalEntryIds::isAmongLatest(const std::string& id) const
{
    if (!first_.empty() && id == first_.view())
    {
        return true;
    }
    if (!more_)
    {
        return false;
    }
    const auto last = more_->ids.rbegin();
    const auto end = last + static_cast<std::ptrdiff_t>(std::min(more_->ids.size(), LATEST));
    return std::find(last, end, id) != end;
}

void JournalEntryIds::remove(const std::string& id)
{
    Ids left = all();
    left.erase(std::remove(left.begin(), left.end(), id), left.end());
    assign(std::move(left));
}

std::vector<std::string> JournalEntryIds::inOrder() const
{
    Ids distinct = all();
    dropRepetitions(distinct);
    return {distinct.begin(), distinct.end()};
}

JournalEntryIds::Ids JournalEntryIds::all() const
{
    Ids ids;
    if (!first_.empty())
    {
        ids.push_back(first_.str());
    }
    if (more_)
    {
        ids.insert(ids.end(), more_->ids.begin(), more_->ids.end());
    }
    return ids;
}

void JournalEntryIds::assign(Ids ids)
{
    first_ = ShortText();
    more_.reset();
    if (!ids.empty() && !ids.front().empty())
    {
        first_ = ShortText(ids.front());
        ids.erase(ids.begin());
    }
    if (!ids.empty())
    {
        more_ = std::make_unique<More>();
        more_->ids = std::move(ids);
    }
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
