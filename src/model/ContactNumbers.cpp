#include "ConversationAPI/ContactNumbers.h"

namespace ConversationAPI
{
ContactNumberSlot slotForNumberType(CallPartyIdentifier::PhoneNumberIconType type)
{
    switch (type)
    {
    case CallPartyIdentifier::WORK_1:
        return WORK_1_SLOT;
    case CallPartyIdentifier::WORK_2:
        return WORK_2_SLOT;
    case CallPartyIdentifier::MOBILE:
        return MOBILE_SLOT;
    case CallPartyIdentifier::HOME:
        return HOME_SLOT;
    default:
        return CONTACT_NUMBER_SLOTS;
    }
}

CallPartyIdentifier::PhoneNumberIconType numberTypeForSlot(unsigned slot)
{
    switch (slot)
    {
    case WORK_1_SLOT:
        return CallPartyIdentifier::WORK_1;
    case WORK_2_SLOT:
        return CallPartyIdentifier::WORK_2;
    case MOBILE_SLOT:
        return CallPartyIdentifier::MOBILE;
    case HOME_SLOT:
        return CallPartyIdentifier::HOME;
    default:
        return CallPartyIdentifier::NO_ICON;
    }
}
} // namespace ConversationAPI
