#include "ConversationAPI/DialledCallConversationItem.h"

#include "model/CloneItem.h"

namespace ConversationAPI
{
DialledCallConversationItem::DialledCallConversationItem(const std::string& timeAndDate, const std::string& number,
                                                         const std::string& firstName, const std::string& lastName,
                                                         ConversationParticipantFactory* factory)
    : ConversationItem(number, firstName, lastName, CallPartyIdentifier::NO_ICON, factory)
{
    extractTimeAndDateFromJournalServiceISO8601String(timeAndDate);
}

DialledCallConversationItem::DialledCallConversationItem(long time, const std::string& number,
                                                         const std::string& firstName, const std::string& lastName,
                                                         ConversationParticipantFactory* factory)
    : ConversationItem(number, firstName, lastName, CallPartyIdentifier::NO_ICON, factory)
{
    setTimeStampUTC(time);
}

ConversationItem* DialledCallConversationItem::clone()
{
    return cloneOf(*this);
}

void DialledCallConversationItem::setForwardedCallParty(const CallPartyIdentifier& party)
{
    forwardedCallParty_.write() = party;
    decrementSoForwardedItemIsOlderThanDialledItem();
}

// The dialled entry and the forwarded entry that it produced carry one time in the journal; a second apart,
// they always stand in one order.
void DialledCallConversationItem::decrementSoForwardedItemIsOlderThanDialledItem()
{
    if (timeStampUTC() > 0)
    {
        setTimeStampUTC(timeStampUTC() - 1);
    }
}
} // namespace ConversationAPI
