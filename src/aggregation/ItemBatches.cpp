#include "aggregation/ItemBatches.h"

#include "ConversationAPI/ConversationItem.h"
#include "ConversationAPI/WellKnownNames.h"
#include "model/ItemOrder.h"

#include <memory_resource>
#include <unordered_map>

namespace ConversationAPI
{
ItemBatches::ItemBatches(const std::vector<ConversationItem*>& items) : next_(items.size(), items.size())
{
    std::vector<bool> isBatched(items.size());
    Numbers sharedNumbers;
    for (std::size_t place = 0; place < items.size(); ++place)
    {
        isBatched[place] = isPlain(*items[place]);
        if (!isBatched[place])
        {
            collectNumbers(*items[place], sharedNumbers);
        }
    }
    std::pmr::monotonic_buffer_resource memory; // freed in one go
    std::pmr::unordered_map<std::string_view, std::size_t> lastPlaces(&memory);
    lastPlaces.reserve(items.size());
    for (std::size_t place = 0; place < items.size(); ++place)
    {
        if (!isBatched[place])
        {
            continue;
        }
        const std::string_view number = items[place]->participants().front().comparableNumberText();
        if (!sharedNumbers.empty() && sharedNumbers.count(number) != 0)
        {
            continue;
        }
        const auto [last, isFirst] = lastPlaces.emplace(number, place);
        if (!isFirst)
        {
            next_[last->second] = place;
            last->second = place;
        }
    }
}

bool ItemBatches::isPlain(const ConversationItem& item)
{
    if (!isOrderedByTimeAlone(item.getState()) || item.participants().size() != 1 || item.hasConversationId() ||
        item.hasExchangeContactId() || item.hasConversationItemId() || item.isGroupCall() ||
        item.isConferenceConversation())
    {
        return false;
    }
    const ConversationParticipant& party = item.participants().front();
    return !party.isAnonymous() && party.surnameText() != CTI_ASSISTED_NAME && !party.comparableNumberText().empty() &&
           !party.hasFurtherNumbers();
}

void ItemBatches::collectNumbers(const ConversationItem& item, Numbers& numbers)
{
    for (const ConversationParticipant& party : item.participants())
    {
        numbers.insert(party.comparableNumberText());
        for (const ContactNumberSlot slot : ALL_CONTACT_NUMBER_SLOTS)
        {
            numbers.insert(party.contactNumber(slot));
        }
    }
}
} // namespace ConversationAPI
