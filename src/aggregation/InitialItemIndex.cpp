#include "aggregation/InitialItemIndex.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/WellKnownNames.h"

#include <algorithm>
#include <functional>
#include <string_view>

namespace ConversationAPI
{
namespace
{
std::size_t hashOf(std::uint64_t kind, std::string_view text)
{
    return std::hash<std::string_view>()(text) ^ static_cast<std::size_t>(kind * 0x9E3779B97F4A7C15U);
}
} // namespace

enum class InitialItemIndex::Kind : std::uint64_t
{
    EXCHANGE_CONTACT,
    CONVERSATION,
    CALL,
    GROUP_PICKUP,
    NUMBER,
    ANONYMOUS,
    NOBODY
};

template <typename Use>
void InitialItemIndex::forEachKey(const ConversationItem& item, Use use)
{
    const auto useIf = [&use](bool applies, Kind kind, std::string_view text)
    {
        if (applies)
        {
            use(hashOf(static_cast<std::uint64_t>(kind), text));
        }
    };
    useIf(item.hasExchangeContactId(), Kind::EXCHANGE_CONTACT, item.exchangeContactIdText().view());
    useIf(item.hasConversationId(), Kind::CONVERSATION, item.conversationIdText().view());
    useIf(item.isActiveOrProgressingOrClearing(), Kind::CALL, item.callIdText().view());
    useIf(item.isIncomingGroupPickup() || item.isConnectedGroupPickup(), Kind::GROUP_PICKUP, {});
    useIf(item.participants().empty(), Kind::NOBODY, {});
    for (const ConversationParticipant& party : item.participants())
    {
        const std::string& number = party.comparableNumberText();
        useIf(party.surnameText() == ANONYMOUS_NAME, Kind::ANONYMOUS, {});
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
    entries_.reserve(3 * conversations.size());
    for (std::size_t place = 0; place < conversations.size(); ++place)
    {
        if (const ConversationItem* item = conversations[place]->initialItem())
        {
            forEachKey(*item,
                       [&](std::size_t hash) {
                           entries_.push_back({hash, static_cast<std::uint32_t>(place), 0});
                       });
        }
    }
    makeBuckets();
}

void InitialItemIndex::makeBuckets()
{
    std::size_t size = 16;
    while (size < entries_.size())
    {
        size *= 2;
    }
    buckets_.assign(size, 0);
    std::uint32_t number = 0;
    for (Entry& entry : entries_)
    {
        std::uint32_t& first = buckets_[entry.hash & (size - 1)];
        entry.next = first;
        first = ++number;
    }
}

const InitialItemIndex::Places& InitialItemIndex::placesLike(const ConversationItem& item, std::size_t first)
{
    places_.clear();
    forEachKey(item,
               [&](std::size_t hash)
               {
                   std::uint32_t next = buckets_[hash & (buckets_.size() - 1)];
                   while (next != 0)
                   {
                       const Entry& entry = entries_[next - 1];
                       if (entry.hash == hash && entry.place >= first)
                       {
                           places_.push_back(entry.place);
                       }
                       next = entry.next;
                   }
               });
    std::sort(places_.begin(), places_.end());
    places_.erase(std::unique(places_.begin(), places_.end()), places_.end());
    return places_;
}
} // namespace ConversationAPI
