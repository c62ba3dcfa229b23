#include "ConversationAPI/ContactDetails.h"

#include <algorithm>
#include <tuple>

namespace ConversationAPI
{
std::string joinNames(const std::string& firstName, const std::string& lastName)
{
    const char* gap = firstName.empty() || lastName.empty() ? "" : " ";
    return firstName + gap + lastName;
}

bool ContactDetails::hasNumber(const std::string& candidate) const
{
    return candidate == number || holdsAmongTheFour(candidate);
}

bool ContactDetails::holdsAmongTheFour(const std::string& candidate) const
{
    return std::find(numbers.begin(), numbers.end(), candidate) != numbers.end();
}

bool ContactDetails::hasNoneOfTheFour() const
{
    return std::all_of(numbers.begin(), numbers.end(), [](const std::string& one) { return one.empty(); });
}

bool ContactDetails::hasFreeSlotFor(ContactNumberSlot slot, const std::string& candidate) const
{
    return slot < CONTACT_NUMBER_SLOTS && !candidate.empty() && numbers[slot].empty() && !holdsAmongTheFour(candidate);
}

bool ContactDetails::operator==(const ContactDetails& other) const
{
    return std::tie(firstName, lastName, number, numberType, numbers) ==
           std::tie(other.firstName, other.lastName, other.number, other.numberType, other.numbers);
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
