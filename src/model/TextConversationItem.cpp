#include "ConversationAPI/TextConversationItem.h"

#include "model/CloneItem.h"

namespace ConversationAPI
{
TextConversationItem::TextConversationItem(const std::string& creatorId, long time, const std::string& number,
                                           const std::string& firstName, const std::string& lastName,
                                           ConversationParticipantFactory* factory)
    : ConversationItem(number, firstName, lastName, CallPartyIdentifier::NO_ICON, factory), creatorId_(creatorId)
{
    setTimeStampUTC(time);
}

ConversationItem* TextConversationItem::clone()
{
    return cloneOf(*this);
}
} // namespace ConversationAPI
