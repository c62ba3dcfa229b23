#include "aggregation/LaterItems.h"

#include "ConversationAPI/Conversation.h"

#include <algorithm>
#include <limits>

namespace ConversationAPI
{
void LaterItems::add(Conversation& conversation, const Ranked* first, const Ranked* end)
{
    if (first == end)
    {
        return;
    }
    if (!places_.empty())
    {
        places_.emplace(&conversation, waiting_.size());
    }
    waiting_.push_back({&conversation, first, end});
}

void LaterItems::appendBefore(Conversation& conversation, const Ranked& bound)
{
    for (std::size_t place = places_.size(); place < waiting_.size(); ++place)
    {
        places_.emplace(waiting_[place].conversation, place);
    }
    std::vector<Ranked> items;
    const auto range = places_.equal_range(&conversation);
    for (auto place = range.first; place != range.second; ++place)
    {
        Waiting& waiting = waiting_[place->second];
        const Ranked* end = std::lower_bound(waiting.first, waiting.end, bound);
        items.insert(items.end(), waiting.first, end);
        waiting.first = end;
    }
    std::sort(items.begin(), items.end());
    append(conversation, items.data(), items.data() + items.size());
}

void LaterItems::append(Conversation& conversation, const Ranked* first, const Ranked* end)
{
    calls_.clear();
    for (; first != end; ++first)
    {
        calls_.emplace_back(std::unique_ptr<ConversationItem>(first->item), first->time);
    }
    conversation.appendCalls(calls_);
}

void LaterItems::appendAll()
{
    const Ranked last{std::numeric_limits<long>::min(), std::numeric_limits<std::size_t>::max(), nullptr};
    for (const Waiting& waiting : waiting_)
    {
        if (places_.empty())
        {
            append(*waiting.conversation, waiting.first, waiting.end);
        }
        else
        {
            appendBefore(*waiting.conversation, last);
        }
    }
}
} // namespace ConversationAPI
