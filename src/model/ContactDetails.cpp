#include "ConversationAPI/ContactDetails.h"

#include <tuple>

namespace ConversationAPI
{
std::string joinNames(const std::string& firstName, const std::string& lastName)
{
    const char* gap = firstName.empty() || lastName.empty() ? "" : " ";
    return firstName + gap + lastName;
}

bool ContactDetails::operator==(const ContactDetails& other) const
{
    return std::tie(firstName, lastName, numbers, numberType) ==
           std::tie(other.firstName, other.lastName, other.numbers, other.numberType);
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
