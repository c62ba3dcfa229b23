/** The four telephone numbers that a contact can have, and which of them a number type means. */
#pragma once

#include "platform/CallPartyIdentifier.h"

#include <array>
#include <string>

namespace ConversationAPI
{
/** Places of a contact's four numbers. */
enum ContactNumberSlot : unsigned
{
    WORK_1_SLOT,
    WORK_2_SLOT,
    MOBILE_SLOT,
    HOME_SLOT,
    CONTACT_NUMBER_SLOTS
};

inline constexpr std::array<ContactNumberSlot, CONTACT_NUMBER_SLOTS> ALL_CONTACT_NUMBER_SLOTS = {
    WORK_1_SLOT, WORK_2_SLOT, MOBILE_SLOT, HOME_SLOT};

using ContactNumbers = std::array<std::string, CONTACT_NUMBER_SLOTS>;

/** Where a number of this type is kept; CONTACT_NUMBER_SLOTS for a type that has no place. */
ContactNumberSlot slotForNumberType(CallPartyIdentifier::PhoneNumberIconType type);

/** The type of the numbers kept at this place; NO_ICON outside the four. */
CallPartyIdentifier::PhoneNumberIconType numberTypeForSlot(unsigned slot);
} // namespace ConversationAPI
