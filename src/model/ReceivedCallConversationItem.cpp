#include "ConversationAPI/ReceivedCallConversationItem.h"

#include "model/CloneItem.h"

namespace ConversationAPI
{
ReceivedCallConversationItem::ReceivedCallConversationItem(const std::string& timeAndDate, const std::string& number,
                                                           const std::string& firstName, const std::string& lastName,
                                                           ConversationParticipantFactory* factory)
    : ConversationItem(number, firstName, lastName, CallPartyIdentifier::NO_ICON, factory)
{
    extractTimeAndDateFromJournalServiceISO8601String(timeAndDate);
}

ReceivedCallConversationItem::ReceivedCallConversationItem(long time, const std::string& number,
                                                           const std::string& firstName, const std::string& lastName,
                                                           ConversationParticipantFactory* factory)
    : ConversationItem(number, firstName, lastName, CallPartyIdentifier::NO_ICON, factory)
{
    setTimeStampUTC(time);
}

ConversationItem* ReceivedCallConversationItem::clone()
{
    return cloneOf(*this);
}
} // namespace ConversationAPI
