#include "aggregation/InitialItemIndex.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/WellKnownNames.h"
#include "model/Prefetch.h"

#include <algorithm>
#include <string_view>

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
            const std::string& number = item->participants().front().comparableNumberText();
            hashes.push_back(hashOf(Kind::NUMBER, hashOfText(number)));
        }
    }
    return hashes;
}

template <typename Use>
void InitialItemIndex::forEachKey(const ConversationItem& item, Use use)
{
    const auto useHash = [&use](Kind kind, std::uint32_t hash) { use(hashOf(kind, hash)); };
    const auto useIf = [&useHash](bool applies, Kind kind, std::string_view text)
    {
        if (applies)
        {
            useHash(kind, hashOfText(text));
        }
    };
    const auto useSharedIf = [&useHash](bool applies, Kind kind, const SharedText& text)
    {
        if (applies)
        {
            useHash(kind, text.hash());
        }
    };
    useSharedIf(item.hasExchangeContactId(), Kind::EXCHANGE_CONTACT, item.exchangeContactIdText());
    useSharedIf(item.hasConversationId(), Kind::CONVERSATION, item.conversationIdText());
    useSharedIf(item.isActiveOrProgressingOrClearing(), Kind::CALL, item.callIdText());
    useIf(item.isIncomingGroupPickup() || item.isConnectedGroupPickup(), Kind::GROUP_PICKUP, {});
    useIf(item.participants().empty(), Kind::NOBODY, {});
    for (const ConversationParticipant& party : item.participants())
    {
        const std::string& number = party.comparableNumberText();
        useIf(party.hasAnonymousName(), Kind::ANONYMOUS, {});
        useIf(!number.empty(), Kind::NUMBER, number);
        for (const ContactNumberSlot slot : ALL_CONTACT_NUMBER_SLOTS)
        {
            const std::string& other = party.contactNumber(slot);
            useIf(!other.empty() && other != number, Kind::NUMBER, other);
        }
    }
}

InitialItemIndex::InitialItemIndex(const std::vector<Conversation*>& conversations)
{
    index_.reserve(2 * conversations.size());
    for (std::size_t place = 0; place < conversations.size(); ++place)
    {
        prefetchAhead(conversations, place, Needed::FIRST_ITEMS);
        if (const ConversationItem* item = conversations[place]->shownItem())
        {
            forEachKey(*item, [&](std::uint32_t hash) { index_.addHash(hash, static_cast<std::uint32_t>(place)); });
        }
    }
}

const InitialItemIndex::Places& InitialItemIndex::placesLike(const ConversationItem& item, std::size_t first)
{
    places_.clear();
    forEachKey(item, [this](std::uint32_t hash) { index_.collectHash(hash, places_); });
    places_.erase(
        std::remove_if(places_.begin(), places_.end(), [first](std::uint32_t place) { return place < first; }),
        places_.end());
    std::sort(places_.begin(), places_.end());
    places_.erase(std::unique(places_.begin(), places_.end()), places_.end());
    return places_;
}
} // namespace ConversationAPI
