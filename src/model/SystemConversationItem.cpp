#include "ConversationAPI/SystemConversationItem.h"

#include "model/CloneItem.h"

namespace ConversationAPI
{
SystemConversationItem::SystemConversationItem(const std::string& creatorId, long time, const std::string& number,
                                               const std::string& firstName, const std::string& lastName,
                                               ConversationParticipantFactory* factory)
    : ConversationItem(number, firstName, lastName, CallPartyIdentifier::NO_ICON, factory), creatorId_(creatorId)
{
    setTimeStampUTC(time);
}

ConversationItem* SystemConversationItem::clone()
{
    return cloneOf(*this);
}
} // namespace ConversationAPI
