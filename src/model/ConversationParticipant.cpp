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
        saveLastName(ANONYMOUS_NAME);
    }
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
    return personalData_->userId;
}

std::string ConversationParticipant::getEmail() const
{
    return personalData_->email;
}

std::string ConversationParticipant::getCompany() const
{
    return personalData_->company;
}

std::string ConversationParticipant::getAddress1() const
{
    return personalData_->address1;
}

std::string ConversationParticipant::getAddress2() const
{
    return personalData_->address2;
}

std::string ConversationParticipant::getRole() const
{
    return personalData_->role;
}

std::string ConversationParticipant::getWorkNumber1() const
{
    return contactNumbers()[WORK_1_SLOT];
}

std::string ConversationParticipant::getWorkNumber2() const
{
    return contactNumbers()[WORK_2_SLOT];
}

std::string ConversationParticipant::getMobileNumber() const
{
    return contactNumbers()[MOBILE_SLOT];
}

std::string ConversationParticipant::getHomeNumber() const
{
    return contactNumbers()[HOME_SLOT];
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

void ConversationParticipant::saveNumber(const std::string& number)
{
    comparableNumber_ = number;
    setDetails(getFirstName(), getSurname(), comparableNumber_, getPhoneNumberType(), getContactImagePath(), false);
    updateComparableNumber();
}

void ConversationParticipant::setDialStringConverter(DigitAnalysisServiceIfc* converter)
{
    dialStringConverter_ = converter;
    updateComparableNumber();
}

void ConversationParticipant::updateComparableNumber()
{
    convert(comparableNumber_);
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
    if (work1.empty() && work2.empty() && mobile.empty() && home.empty())
    {
        contactNumbers_.reset();
        return;
    }
    auto& numbers = contactNumbers_.write();
    numbers = {work1, work2, mobile, home};
    for (std::string& number : numbers)
    {
        if (!number.empty())
        {
            convert(number);
        }
    }
}

void ConversationParticipant::setPersonalData(const std::string& email, const std::string& company,
                                              const std::string& address1, const std::string& address2,
                                              const std::string& role)
{
    PersonalData& data = personalData_.write();
    data.email = email;
    data.company = company;
    data.address1 = address1;
    data.address2 = address2;
    data.role = role;
}

void ConversationParticipant::setUserId(const std::string& userId)
{
    personalData_.write().userId = userId;
}

std::string ConversationParticipant::toString() const
{
    const auto& numbers = contactNumbers();
    return "last: " + surnameText() + " comp:" + comparableNumber_ + " w1:" + numbers[WORK_1_SLOT] +
           " w2:" + numbers[WORK_2_SLOT] + " m:" + numbers[MOBILE_SLOT] + " h:" + numbers[HOME_SLOT];
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
    if (numberText().empty() && other.numberText().empty())
    {
        return false;
    }
    if (other.doesNumberMatchWithAnyNumber(comparableNumber_))
    {
        return true;
    }
    const auto& numbers = contactNumbers();
    return std::any_of(numbers.begin(), numbers.end(),
                       [&other](const std::string& number)
                       { return !number.empty() && number == other.comparableNumber_; });
}

bool ConversationParticipant::doesNumberMatchWithAnyNumber(const std::string& number) const
{
    if (number.empty())
    {
        return false;
    }
    const auto& numbers = contactNumbers();
    return number == comparableNumber_ || std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

bool ConversationParticipant::bothNamesAnonymous(const ConversationParticipant& other) const
{
    return surnameText() == ANONYMOUS_NAME && other.surnameText() == ANONYMOUS_NAME;
}

bool ConversationParticipant::anyNameCTIAssisted(const ConversationParticipant& other) const
{
    return surnameText() == CTI_ASSISTED_NAME || other.surnameText() == CTI_ASSISTED_NAME;
}

bool ConversationParticipant::isAnonymous() const
{
    return surnameText() == ANONYMOUS_NAME ||
           (firstNameText().empty() && surnameText().empty() && numberText().empty());
}
} // namespace ConversationAPI
