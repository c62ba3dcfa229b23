#include "model/ConversationIDCache.h"

#include "ConversationAPI/WellKnownNames.h"
#include "model/EraseEntry.h"

#include <boost/container/small_vector.hpp>

#include <algorithm>

namespace ConversationAPI
{
namespace
{
using PartyKeys = boost::container::small_vector<std::string_view, 6>;

/** One key for parties of whom nothing is known, one for their absence, else the party's numbers. */
PartyKeys partyKeys(const ConversationItem& item)
{
    PartyKeys keys;
    const auto add = [&keys](std::string_view key)
    {
        if (!key.empty() && std::find(keys.begin(), keys.end(), key) == keys.end())
        {
            keys.push_back(key);
        }
    };
    for (const ConversationParticipant& party : item.participants())
    {
        add(party.comparableNumberText());
        for (const ContactNumberSlot slot : ALL_CONTACT_NUMBER_SLOTS)
        {
            add(party.contactNumber(slot));
        }
        if (party.surnameText() == ANONYMOUS_NAME)
        {
            add(ANONYMOUS_NAME);
        }
    }
    if (item.participants().empty())
    {
        keys.push_back({});
    }
    return keys;
}

template <typename Index, typename Candidates>
void collect(const Index& index, std::string_view key, Candidates& candidates)
{
    const auto range = index.equal_range(key);
    for (auto found = range.first; found != range.second; ++found)
    {
        candidates.push_back(found->second);
    }
}
} // namespace

const ConversationIDCache::Entry* ConversationIDCache::find(const std::string& id) const
{
    const auto found = byId_.find(id);
    return found == byId_.end() ? nullptr : &*found->second;
}

const ConversationIDCache::Entry* ConversationIDCache::findFirst(const ConversationItem& candidate, Test test) const
{
    if (!isIndexUsed_)
    {
        return walkToFirst(candidate, test);
    }
    boost::container::small_vector<const Entry*, 8> candidates;
    for (const std::string_view key : partyKeys(candidate))
    {
        collect(byParty_, key, candidates);
    }
    if (candidate.hasExchangeContactId())
    {
        collect(byExchangeContactId_, candidate.exchangeContactIdText().view(), candidates);
    }
    if (candidate.hasConversationId())
    {
        collect(byConversationId_, candidate.conversationIdText().view(), candidates);
    }
    if (!callIds_.empty() && candidate.isActiveOrProgressingOrClearing())
    {
        collect(byCallId_, candidate.getCallId(), candidates);
        collect(byCallId_, GROUP_PICKUP_CALL_ID, candidates);
    }
    if (candidates.size() > 1)
    {
        std::sort(candidates.begin(), candidates.end(),
                  [](const Entry* a, const Entry* b) { return a->sequence < b->sequence; });
    }
    const auto found = std::find_if(candidates.begin(), candidates.end(),
                                    [&](const Entry* entry) { return test(entry->item.get(), &candidate); });
    return found == candidates.end() ? nullptr : *found;
}

const ConversationIDCache::Entry* ConversationIDCache::walkToFirst(const ConversationItem& candidate, Test test) const
{
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const Entry& entry) { return test(entry.item.get(), &candidate); });
    return found == entries_.end() ? nullptr : &*found;
}

void ConversationIDCache::put(const std::string& id, std::unique_ptr<ConversationItem> item)
{
    const auto old = byId_.find(id);
    if (old != byId_.end())
    {
        remove(old->second);
    }
    entries_.push_back(Entry{std::move(item), id, nextSequence_++});
    const Entry& entry = entries_.back();
    const ConversationItem& cached = *entry.item;
    byId_.emplace(entry.id, std::prev(entries_.end()));
    for (const std::string_view key : partyKeys(cached))
    {
        byParty_.emplace(key, &entry);
    }
    if (cached.hasExchangeContactId())
    {
        byExchangeContactId_.emplace(cached.exchangeContactIdText().view(), &entry);
    }
    if (cached.hasConversationId())
    {
        byConversationId_.emplace(cached.conversationIdText().view(), &entry);
    }
    if (cached.isActiveOrProgressingOrClearing())
    {
        byCallId_.emplace(callIds_.emplace(&entry, cached.getCallId()).first->second, &entry);
    }
}

void ConversationIDCache::remove(std::list<Entry>::iterator entry)
{
    const Entry* gone = &*entry;
    for (const std::string_view key : partyKeys(*gone->item))
    {
        eraseEntry(byParty_, key, gone);
    }
    eraseEntry(byExchangeContactId_, gone->item->exchangeContactIdText().view(), gone);
    eraseEntry(byConversationId_, gone->item->conversationIdText().view(), gone);
    const auto callId = callIds_.find(gone);
    if (callId != callIds_.end())
    {
        eraseEntry(byCallId_, callId->second, gone);
        callIds_.erase(callId);
    }
    byId_.erase(gone->id);
    entries_.erase(entry);
}
} // namespace ConversationAPI
