#include "ConversationAPI/ConversationParticipant.h"

#include "ConversationAPI/ContactDetails.h"
#include "ConversationAPI/WellKnownNames.h"
#include "platform/DigitAnalysisServiceIfc.h"

#include <algorithm>

namespace ConversationAPI
{
ConversationParticipant::ConversationParticipant() = default;

ConversationParticipant::ConversationParticipant(const CallPartyIdentifier& party)
    : CallPartyIdentifier(party), comparableNumber_(party.getNumber())
{
    if (firstNameText().empty() && surnameText().empty() && numberText().empty())
    {
        saveLastName(std::string(ANONYMOUS_NAME));
    }
    noteNames();
}

void ConversationParticipant::noteNames()
{
    const std::string& surname = surnameText();
    hasAnonymousName_ = surname == ANONYMOUS_NAME;
    isAnonymous_ = hasAnonymousName_ || (firstNameText().empty() && surname.empty() && numberText().empty());
    isCTIAssisted_ = surname == CTI_ASSISTED_NAME;
}

void ConversationParticipant::setDetails(const std::string& firstName, const std::string& surname,
                                         const std::string& number, PhoneNumberIconType numberType,
                                         const std::string& picturePath, bool flag)
{
    CallPartyIdentifier::setDetails(firstName, surname, number, numberType, picturePath, flag);
    noteNames();
}

std::string ConversationParticipant::getFirstName() const
{
    return firstNameText();
}

std::string ConversationParticipant::getSurname() const
{
    return surnameText();
}

std::string ConversationParticipant::getNumber() const
{
    return numberText();
}

CallPartyIdentifier::PhoneNumberIconType ConversationParticipant::getPhoneNumberType() const
{
    return CallPartyIdentifier::getPhoneNumberType();
}

std::string ConversationParticipant::getContactImagePath() const
{
    return CallPartyIdentifier::getContactImagePath();
}

std::string ConversationParticipant::getComparableNumber() const
{
    return comparableNumber_;
}

std::string ConversationParticipant::getUserId() const
{
    return details_->userId;
}

std::string ConversationParticipant::getEmail() const
{
    return details_->email;
}

std::string ConversationParticipant::getCompany() const
{
    return details_->company;
}

std::string ConversationParticipant::getAddress1() const
{
    return details_->address1;
}

std::string ConversationParticipant::getAddress2() const
{
    return details_->address2;
}

std::string ConversationParticipant::getRole() const
{
    return details_->role;
}

std::string ConversationParticipant::getWorkNumber1() const
{
    return contactNumber(WORK_1_SLOT);
}

std::string ConversationParticipant::getWorkNumber2() const
{
    return contactNumber(WORK_2_SLOT);
}

std::string ConversationParticipant::getMobileNumber() const
{
    return contactNumber(MOBILE_SLOT);
}

std::string ConversationParticipant::getHomeNumber() const
{
    return contactNumber(HOME_SLOT);
}

std::string ConversationParticipant::getName() const
{
    return joinNames(firstNameText(), surnameText());
}

void ConversationParticipant::saveFirstName(const std::string& firstName)
{
    setDetails(firstName, getSurname(), getNumber(), getPhoneNumberType(), getContactImagePath(), false);
}

void ConversationParticipant::saveLastName(const std::string& lastName)
{
    setDetails(getFirstName(), lastName, getNumber(), getPhoneNumberType(), getContactImagePath(), false);
}

void ConversationParticipant::saveNumberType(PhoneNumberIconType type)
{
    setDetails(getFirstName(), getSurname(), getNumber(), type, getContactImagePath(), false);
}

void ConversationParticipant::setContactImagePath(const std::string& path)
{
    setDetails(getFirstName(), getSurname(), getNumber(), getPhoneNumberType(), path, false);
}

void ConversationParticipant::keepOwnTexts()
{
    setDetails(getFirstName(), getSurname(), getNumber(), getPhoneNumberType(), getContactImagePath(), false);
}

void ConversationParticipant::saveNumber(const std::string& number)
{
    const std::string saved = number;
    setDetails(getFirstName(), getSurname(), saved, getPhoneNumberType(), getContactImagePath(), false);
    setComparableNumber(saved);
    updateComparableNumber();
}

void ConversationParticipant::setDialStringConverter(DigitAnalysisServiceIfc* converter)
{
    dialStringConverter_ = converter;
    updateComparableNumber();
}

void ConversationParticipant::updateComparableNumber()
{
    if (dialStringConverter_)
    {
        std::string number = comparableNumber_;
        convert(number);
        setComparableNumber(number);
    }
}

void ConversationParticipant::setComparableNumber(const std::string& number)
{
    if (number != comparableNumber_)
    {
        keepNumbersThatAreTheComparableOne();
        comparableNumber_ = number;
    }
}

/** Before the comparable number changes, the contact numbers that are it get a memory of their own. */
void ConversationParticipant::keepNumbersThatAreTheComparableOne()
{
    if (slotsWithComparableNumber_ == 0)
    {
        return;
    }
    ContactNumbers& numbers = details_.write().contactNumbers;
    for (unsigned slot = 0; slot < CONTACT_NUMBER_SLOTS; ++slot)
    {
        if (slotsWithComparableNumber_ & (1U << slot))
        {
            numbers[slot] = comparableNumber_;
        }
    }
    slotsWithComparableNumber_ = 0;
}

bool ConversationParticipant::hasFurtherNumbers() const
{
    return details_.isSet() &&
           std::any_of(details_->contactNumbers.begin(), details_->contactNumbers.end(),
                       [this](const std::string& number) { return !number.empty() && number != comparableNumber_; });
}

bool ConversationParticipant::hasContactNumbers() const
{
    return std::any_of(ALL_CONTACT_NUMBER_SLOTS.begin(), ALL_CONTACT_NUMBER_SLOTS.end(),
                       [this](ContactNumberSlot slot) { return !contactNumber(slot).empty(); });
}

bool ConversationParticipant::hasSameContactNumbers(const ConversationParticipant& other) const
{
    return std::all_of(ALL_CONTACT_NUMBER_SLOTS.begin(), ALL_CONTACT_NUMBER_SLOTS.end(),
                       [&](ContactNumberSlot slot) { return contactNumber(slot) == other.contactNumber(slot); });
}

void ConversationParticipant::convert(std::string& number) const
{
    if (dialStringConverter_)
    {
        dialStringConverter_->convertDialString(number);
    }
}

void ConversationParticipant::setPhoneNumbers(const std::string& work1, const std::string& work2,
                                              const std::string& mobile, const std::string& home)
{
    ContactNumbers numbers = {work1, work2, mobile, home};
    std::uint8_t withComparableNumber = 0;
    for (const ContactNumberSlot slot : ALL_CONTACT_NUMBER_SLOTS)
    {
        std::string& number = numbers[slot];
        if (!number.empty())
        {
            convert(number);
        }
        const bool isComparable = !number.empty() && number == comparableNumber_;
        withComparableNumber |= static_cast<std::uint8_t>(isComparable ? 1U << slot : 0U);
        if (isComparable)
        {
            number.clear();
        }
        if (number != details_->contactNumbers[slot])
        {
            details_.write().contactNumbers[slot] = number;
        }
    }
    slotsWithComparableNumber_ = withComparableNumber;
}

void ConversationParticipant::setPersonalData(const std::string& email, const std::string& company,
                                              const std::string& address1, const std::string& address2,
                                              const std::string& role)
{
    Details& data = details_.write();
    data.email = email;
    data.company = company;
    data.address1 = address1;
    data.address2 = address2;
    data.role = role;
}

void ConversationParticipant::setUserId(const std::string& userId)
{
    details_.write().userId = userId;
}

std::string ConversationParticipant::toString() const
{
    return "last: " + surnameText() + " comp:" + comparableNumber_ + " w1:" + contactNumber(WORK_1_SLOT) +
           " w2:" + contactNumber(WORK_2_SLOT) + " m:" + contactNumber(MOBILE_SLOT) + " h:" + contactNumber(HOME_SLOT);
}

bool ConversationParticipant::operator==(const ConversationParticipant& other) const
{
    if (anyNameCTIAssisted(other))
    {
        return false;
    }
    return bothNamesAnonymous(other) || doNumbersMatch(other);
}

bool ConversationParticipant::operator!=(const ConversationParticipant& other) const
{
    return !(*this == other);
}

// Each field decides on its own even when an earlier one says the opposite: stored lists were ordered this
// way from the start, and a lexicographic order would pair participants differently.
bool ConversationParticipant::operator<(const ConversationParticipant& other) const
{
    return firstNameText() < other.firstNameText() || surnameText() < other.surnameText() ||
           numberText() < other.numberText();
}

bool ConversationParticipant::doNumbersMatch(const ConversationParticipant& other) const
{
    if (other.numberText().empty() && numberText().empty())
    {
        return false;
    }
    if (other.doesNumberMatchWithAnyNumber(comparableNumber_))
    {
        return true;
    }
    return !other.comparableNumber_.empty() &&
           std::any_of(ALL_CONTACT_NUMBER_SLOTS.begin(), ALL_CONTACT_NUMBER_SLOTS.end(),
                       [&](ContactNumberSlot slot) { return contactNumber(slot) == other.comparableNumber_; });
}

bool ConversationParticipant::doesNumberMatchWithAnyNumber(const std::string& number) const
{
    if (number.empty())
    {
        return false;
    }
    return number == comparableNumber_ ||
           std::any_of(ALL_CONTACT_NUMBER_SLOTS.begin(), ALL_CONTACT_NUMBER_SLOTS.end(),
                       [&](ContactNumberSlot slot) { return contactNumber(slot) == number; });
}

bool ConversationParticipant::bothNamesAnonymous(const ConversationParticipant& other) const
{
    return hasAnonymousName_ && other.hasAnonymousName_;
}

bool ConversationParticipant::anyNameCTIAssisted(const ConversationParticipant& other) const
{
    return isCTIAssisted_ || other.isCTIAssisted_;
}
} // namespace ConversationAPI
