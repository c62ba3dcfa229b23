#include "aggregation/InitialItemIndex.h"

#include "ConversationAPI/Conversation.h"
#include "model/Prefetch.h"

#include <algorithm>

namespace ConversationAPI
{
enum class InitialItemIndex::Kind : std::uint32_t
{
    EXCHANGE_CONTACT,
    CONVERSATION,
    CALL,
    GROUP_PICKUP,
    NUMBER,
    ANONYMOUS,
    NOBODY
};

std::uint32_t InitialItemIndex::hashOf(Kind kind, std::uint32_t hash)
{
    return hash ^ (static_cast<std::uint32_t>(kind) * 0x9E3779B1U);
}

std::vector<std::uint32_t> InitialItemIndex::hashesOfNumbers(const std::vector<const ConversationItem*>& items)
{
    std::vector<std::uint32_t> hashes;
    hashes.reserve(items.size());
    for (const ConversationItem* item : items)
    {
        if (!item->participants().empty())
        {
            hashes.push_back(hashOf(Kind::NUMBER, item->participants().front().numbers().mainHash()));
        }
    }
    return hashes;
}

/** Of these kinds. What takes longest to tell, whether an item is live, it is only asked for these. */
template <typename Use>
void InitialItemIndex::forEachKey(const ConversationItem& item, std::uint32_t kinds, Use use)
{
    const auto useIf = [&use, kinds](bool applies, Kind kind, std::uint32_t hash)
    {
        if (applies && (kinds & bitOf(kind)) != 0)
        {
            use(kind, hashOf(kind, hash));
        }
    };
    useIf(item.hasExchangeContactId(), Kind::EXCHANGE_CONTACT, item.exchangeContactIdText().hash());
    useIf(item.hasConversationId(), Kind::CONVERSATION, item.conversationIdText().hash());
    if ((kinds & (bitOf(Kind::CALL) | bitOf(Kind::GROUP_PICKUP))) != 0)
    {
        useIf(item.isActiveOrProgressingOrClearing(), Kind::CALL, item.callIdText().hash());
        useIf(item.isIncomingGroupPickup() || item.isConnectedGroupPickup(), Kind::GROUP_PICKUP, 0);
    }
    useIf(item.participants().empty(), Kind::NOBODY, 0);
    for (const ConversationParticipant& party : item.participants())
    {
        useIf(party.hasAnonymousName(), Kind::ANONYMOUS, 0);
        party.numbers().forEachHash([&useIf](std::uint32_t hash) { useIf(true, Kind::NUMBER, hash); });
    }
}

InitialItemIndex::InitialItemIndex(const std::vector<Conversation*>& conversations)
{
    index_.reserve(2 * conversations.size());
    for (std::size_t place = 0; place < conversations.size(); ++place)
    {
        prefetchAhead<Needed::FIRST_ITEMS>(conversations, place);
        if (const ConversationItem* item = conversations[place]->shownItem())
        {
            forEachKey(*item, ALL_KINDS,
                       [&](Kind kind, std::uint32_t hash)
                       {
                           kinds_ |= bitOf(kind);
                           index_.addHash(hash, static_cast<std::uint32_t>(place));
                       });
        }
    }
}

const InitialItemIndex::Places& InitialItemIndex::placesLike(const ConversationItem& item, std::size_t first)
{
    places_.clear();
    forEachKey(item, kinds_, [this](Kind, std::uint32_t hash) { index_.collectHash(hash, places_); });
    places_.erase(
        std::remove_if(places_.begin(), places_.end(), [first](std::uint32_t place) { return place < first; }),
        places_.end());
    std::sort(places_.begin(), places_.end());
    places_.erase(std::unique(places_.begin(), places_.end()), places_.end());
    return places_;
}
} // namespace ConversationAPI
