#include "ConversationAPI/ConversationParticipant.h"

#include "ConversationAPI/ContactDetails.h"
#include "ConversationAPI/WellKnownNames.h"
#include "platform/DigitAnalysisServiceIfc.h"

namespace ConversationAPI
{
ConversationParticipant::ConversationParticipant() = default;

ConversationParticipant::ConversationParticipant(const CallPartyIdentifier& party)
    : CallPartyIdentifier(party), numbers_(party.getNumber())
{
    if (firstNameText().empty() && surnameText().empty() && numberText().empty())
    {
        saveLastName(std::string(ANONYMOUS_NAME));
    }
    noteTexts();
}

void ConversationParticipant::noteTexts()
{
    const std::string& surname = surnameText();
    hasNumber_ = !numberText().empty();
    hasAnonymousName_ = surname == ANONYMOUS_NAME;
    isAnonymous_ = hasAnonymousName_ || (firstNameText().empty() && surname.empty() && !hasNumber_);
    isCTIAssisted_ = surname == CTI_ASSISTED_NAME;
}

void ConversationParticipant::setDetails(const std::string& firstName, const std::string& surname,
                                         const std::string& number, PhoneNumberIconType numberType,
                                         const std::string& picturePath, bool flag)
{
    CallPartyIdentifier::setDetails(firstName, surname, number, numberType, picturePath, flag);
    noteTexts();
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
    return comparableNumberText();
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
    numbers_.setMain(saved);
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
        std::string number = comparableNumberText();
        convert(number);
        numbers_.setMain(number);
    }
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
    for (std::string& number : numbers)
    {
        if (!number.empty())
        {
            convert(number);
        }
    }
    numbers_.setFour(numbers);
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
    return "last: " + surnameText() + " comp:" + comparableNumberText() + " w1:" + contactNumber(WORK_1_SLOT) +
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
    if (!other.hasNumber_ && !hasNumber_)
    {
        return false;
    }
    const std::string& theirs = other.comparableNumberText();
    return other.doesNumberMatchWithAnyNumber(comparableNumberText()) ||
           (!theirs.empty() && numbers_.hasAmongTheFour(theirs));
}

bool ConversationParticipant::doesNumberMatchWithAnyNumber(const std::string& number) const
{
    return !number.empty() && numbers_.has(number);
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
