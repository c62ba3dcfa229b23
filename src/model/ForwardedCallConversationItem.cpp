#include "ConversationAPI/ForwardedCallConversationItem.h"

#include "model/CloneItem.h"

namespace ConversationAPI
{
ForwardedCallConversationItem::ForwardedCallConversationItem(const std::string& timeAndDate, const std::string& number,
                                                             const std::string& firstName, const std::string& lastName,
                                                             ConversationParticipantFactory* factory)
    : ConversationItem(number, firstName, lastName, CallPartyIdentifier::NO_ICON, factory)
{
    extractTimeAndDateFromJournalServiceISO8601String(timeAndDate);
}

ConversationItem* ForwardedCallConversationItem::clone()
{
    return cloneOf(*this);
}
} // namespace ConversationAPI
