#include "model/ConversationIDCache.h"

#include "ConversationAPI/WellKnownNames.h"
#include "model/Prefetch.h"

#include <algorithm>

namespace ConversationAPI
{
namespace
{
using Hashes = boost::container::small_vector<std::uint32_t, 6>;

/** One key for parties of whom nothing is known, one for their absence, else the party's numbers: hashes, each once. */
Hashes partyKeys(const ConversationItem& item)
{
    Hashes keys;
    const auto add = [&keys](std::uint32_t key)
    {
        if (std::find(keys.begin(), keys.end(), key) == keys.end())
        {
            keys.push_back(key);
        }
    };
    for (const ConversationParticipant& party : item.participants())
    {
        party.numbers().forEachHash(add);
        if (party.hasAnonymousName())
        {
            add(hashOfText(ANONYMOUS_NAME));
        }
    }
    if (item.participants().empty())
    {
        keys.push_back(hashOfText({}));
    }
    return keys;
}
} // namespace

const ConversationIDCache::Entry* ConversationIDCache::find(const std::string& id, std::uint32_t hash) const
{
    const Entries::iterator* found = placeOf(id, hash);
    return found ? &**found : nullptr;
}

const ConversationIDCache::Entries::iterator* ConversationIDCache::placeOf(const std::string& id,
                                                                           std::uint32_t hash) const
{
    const auto isSame = [&id](const std::string& known) { return &known == &id || known == id; }; // mostly shared
    return byId_.findHash(hash, [&isSame](Entries::iterator entry) { return isSame(entry->id.str()); });
}

const ConversationIDCache::Entry* ConversationIDCache::findFirst(const ConversationItem& candidate, Test test) const
{
    if (!isIndexUsed_)
    {
        return walkToFirst(candidate, test);
    }
    boost::container::small_vector<const Entry*, 8> candidates;
    for (const std::uint32_t key : partyKeys(candidate))
    {
        byParty_.collectHash(key, candidates);
    }
    if (candidate.hasExchangeContactId())
    {
        byExchangeContactId_.collect(candidate.exchangeContactIdText(), candidates);
    }
    if (candidate.hasConversationId())
    {
        byConversationId_.collect(candidate.conversationIdText(), candidates);
    }
    if (!byCallId_.empty() && candidate.isActiveOrProgressingOrClearing())
    {
        byCallId_.collect(candidate.getCallId(), candidates);
        byCallId_.collect(GROUP_PICKUP_CALL_ID, candidates);
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

void ConversationIDCache::expect(const std::vector<const ConversationItem*>& candidates,
                                 std::vector<std::uint32_t>& likelyIds) const
{
    Hashes hashes;
    for (const ConversationItem* candidate : candidates)
    {
        if (!candidate->participants().empty())
        {
            hashes.push_back(candidate->participants().front().numbers().mainHash());
        }
    }
    for (const Entry* entry : expectItems(byParty_, hashes))
    {
        likelyIds.push_back(entry->idHash);
    }
}

void ConversationIDCache::expectIds(const std::vector<std::uint32_t>& idHashes) const
{
    for (const Entry* entry : expectItems(byId_, idHashes))
    {
        prefetchTexts(*entry->item);
    }
}

template <typename AnyIndex, typename AnyHashes>
ConversationIDCache::Found ConversationIDCache::expectItems(const AnyIndex& index, const AnyHashes& hashes)
{
    Found entries;
    index.expect(hashes,
                 [&entries](const auto& found)
                 {
                     prefetchLine(&*found);
                     entries.push_back(&*found);
                 });
    for (const Entry* entry : entries)
    {
        prefetchHead(*entry->item);
        prefetchBeginning(entry->id.str());
    }
    return entries;
}

const ConversationIDCache::Entry* ConversationIDCache::walkToFirst(const ConversationItem& candidate, Test test) const
{
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const Entry& entry) { return test(entry.item.get(), &candidate); });
    return found == entries_.end() ? nullptr : &*found;
}

void ConversationIDCache::put(const SharedText& id, std::unique_ptr<ConversationItem> item)
{
    if (const Entries::iterator* old = placeOf(id.str(), id.hash()))
    {
        remove(*old);
    }
    // It outlives what it was cloned from, whose memory can be given back whole only if nothing of it is shared.
    item->keepOwnTexts();
    entries_.push_back(Entry{std::move(item), id, nextSequence_++});
    const Entry& entry = entries_.back();
    const ConversationItem& cached = *entry.item;
    byId_.add(entry.id, std::prev(entries_.end()));
    for (const std::uint32_t key : partyKeys(cached))
    {
        byParty_.addHash(key, &entry);
    }
    if (cached.hasExchangeContactId())
    {
        byExchangeContactId_.add(cached.exchangeContactIdText(), &entry);
    }
    if (cached.hasConversationId())
    {
        byConversationId_.add(cached.conversationIdText(), &entry);
    }
    if (cached.isActiveOrProgressingOrClearing())
    {
        byCallId_.add(cached.getCallId(), &entry);
    }
}

void ConversationIDCache::remove(const std::string& id)
{
    if (const Entries::iterator* found = placeOf(id, hashOfText(id)))
    {
        remove(*found);
    }
}

void ConversationIDCache::remove(Entries::iterator entry)
{
    const Entry* gone = &*entry;
    const ConversationItem& item = *gone->item;
    for (const std::uint32_t key : partyKeys(item))
    {
        byParty_.removeHash(key, gone);
    }
    byExchangeContactId_.remove(item.exchangeContactIdText(), gone);
    byConversationId_.remove(item.conversationIdText(), gone);
    if (!byCallId_.empty())
    {
        byCallId_.remove(item.getCallId(), gone);
    }
    byId_.remove(gone->id, entry);
    entries_.erase(entry);
}
} // namespace ConversationAPI
