#include "ConversationAPI/DummyConversationItem.h"

#include "model/CloneItem.h"

namespace ConversationAPI
{
DummyConversationItem::DummyConversationItem(long time, const std::string& number, const std::string& firstName,
                                             const std::string& lastName, ConversationParticipantFactory* factory,
                                             CallPartyIdentifier::PhoneNumberIconType numberType)
    : ConversationItem(number, firstName, lastName, numberType, factory)
{
    setTimeStampUTC(time);
}

ConversationItem* DummyConversationItem::clone()
{
    return cloneOf(*this);
}
} // namespace ConversationAPI
