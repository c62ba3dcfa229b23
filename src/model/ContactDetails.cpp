#include "ConversationAPI/ContactDetails.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace ConversationAPI
{
std::string joinNames(const std::string& firstName, const std::string& lastName)
{
    const char* gap = firstName.empty() || lastName.empty() ? "" : " ";
    return firstName + gap + lastName;
}

void ContactDetails::setMainNumber(std::string number)
{
    if (number == mainNumber_)
    {
        return;
    }
    const bool isAnyKnown = slotsWithMainNumber_ != 0 || otherNumbers_.isSet();
    const ContactNumbers four = isAnyKnown ? numbers() : ContactNumbers();
    mainNumber_ = std::move(number);
    if (isAnyKnown)
    {
        setNumbers(four);
    }
}

void ContactDetails::setNumberAt(unsigned slot, const std::string& number)
{
    const bool isMain = !number.empty() && number == mainNumber_;
    const auto bit = static_cast<std::uint8_t>(1U << slot);
    const std::string& other = isMain ? std::string() : number;
    if (otherNumbers_->at(slot) != other)
    {
        otherNumbers_.write().at(slot) = other;
    }
    slotsWithMainNumber_ = static_cast<std::uint8_t>(isMain ? slotsWithMainNumber_ | bit : slotsWithMainNumber_ & ~bit);
}

ContactNumbers ContactDetails::numbers() const
{
    return {numberAt(WORK_1_SLOT), numberAt(WORK_2_SLOT), numberAt(MOBILE_SLOT), numberAt(HOME_SLOT)};
}

void ContactDetails::setNumbers(const ContactNumbers& numbers)
{
    for (const ContactNumberSlot slot : ALL_CONTACT_NUMBER_SLOTS)
    {
        setNumberAt(slot, numbers[slot]);
    }
}

bool ContactDetails::hasNumber(const std::string& candidate) const
{
    return candidate == mainNumber_ || holdsAmongTheFour(candidate);
}

bool ContactDetails::holdsAmongTheFour(const std::string& candidate) const
{
    return std::any_of(ALL_CONTACT_NUMBER_SLOTS.begin(), ALL_CONTACT_NUMBER_SLOTS.end(),
                       [&](ContactNumberSlot slot) { return numberAt(slot) == candidate; });
}

bool ContactDetails::hasNoneOfTheFour() const
{
    return std::all_of(ALL_CONTACT_NUMBER_SLOTS.begin(), ALL_CONTACT_NUMBER_SLOTS.end(),
                       [this](ContactNumberSlot slot) { return numberAt(slot).empty(); });
}

bool ContactDetails::hasFreeSlotFor(ContactNumberSlot slot, const std::string& candidate) const
{
    return slot < CONTACT_NUMBER_SLOTS && !candidate.empty() && numberAt(slot).empty() && !holdsAmongTheFour(candidate);
}

bool ContactDetails::operator==(const ContactDetails& other) const
{
    return std::tie(firstName, lastName, mainNumber_, numberType) ==
               std::tie(other.firstName, other.lastName, other.mainNumber_, other.numberType) &&
           std::all_of(ALL_CONTACT_NUMBER_SLOTS.begin(), ALL_CONTACT_NUMBER_SLOTS.end(),
                       [&](ContactNumberSlot slot) { return numberAt(slot) == other.numberAt(slot); });
}

bool ContactProfile::operator==(const ContactProfile& other) const
{
    const auto values = [](const ContactProfile& one)
    {
        return std::tie(one.displayName, one.secondParty, one.email, one.company, one.address1, one.address2, one.role,
                        one.userId, one.imagePath, one.searchId, one.orderedContactSource);
    };
    return values(*this) == values(other);
}

bool SecondParty::operator==(const SecondParty& other) const
{
    return firstName == other.firstName && lastName == other.lastName && number == other.number;
}
} // namespace ConversationAPI
