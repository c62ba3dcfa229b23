/**
 * One party of a conversation item: the platform's party record extended with a user id, personal data, the
 * contact's four numbers and the comparable form of the number.
 *
 * A value: copies share their texts until one of them is changed. Whether two participants are the same
 * person is decided by number alone (operator==). The dial string converter is not owned and must outlive
 * the participant and its copies.
 */
#pragma once

#include "ConversationAPI/CopyOnWrite.h"
#include "ConversationAPI/PartyNumbers.h"
#include "platform/CallPartyIdentifier.h"

#include <string>

class DigitAnalysisServiceIfc;

namespace ConversationAPI
{
class ConversationParticipant : public CallPartyIdentifier
{
  public:
    /** Nobody: no names, no numbers, no converter. */
    ConversationParticipant();

    /** The party as it is; one without names and number becomes the anonymous caller. */
    explicit ConversationParticipant(const CallPartyIdentifier& party);

    std::string getFirstName() const;
    std::string getSurname() const;
    std::string getNumber() const;
    PhoneNumberIconType getPhoneNumberType() const;
    std::string getContactImagePath() const;

    /** The number in the form in which spellings of one number are equal; raw without a converter. */
    std::string getComparableNumber() const;
    std::string getUserId() const;
    std::string getEmail() const;
    std::string getCompany() const;
    std::string getAddress1() const;
    std::string getAddress2() const;
    std::string getRole() const;
    std::string getWorkNumber1() const;
    std::string getWorkNumber2() const;
    std::string getMobileNumber() const;
    std::string getHomeNumber() const;

    /** First name and surname joined by a blank, or whichever is there. */
    std::string getName() const;

    void setDetails(const std::string& firstName, const std::string& surname, const std::string& number,
                    PhoneNumberIconType numberType, const std::string& picturePath, bool flag);
    void saveFirstName(const std::string& firstName);
    void saveLastName(const std::string& lastName);
    void saveNumberType(PhoneNumberIconType type);
    void setContactImagePath(const std::string& path);

    /** Also renews the comparable number. */
    void saveNumber(const std::string& number);

    /** Null leaves numbers as they are from now on; otherwise the comparable number is converted at once. */
    void setDialStringConverter(DigitAnalysisServiceIfc* converter);
    void updateComparableNumber();

    /** Kept in their comparable form; empty texts clear a number. */
    void setPhoneNumbers(const std::string& work1, const std::string& work2, const std::string& mobile,
                         const std::string& home);
    void setPersonalData(const std::string& email, const std::string& company, const std::string& address1,
                         const std::string& address2, const std::string& role);
    void setUserId(const std::string& userId);

    /** Shares its names and number with no copy any more, so as not to keep them in memory that the copies give up. */
    void keepOwnTexts();

    /** For log lines. */
    std::string toString() const;

    bool operator==(const ConversationParticipant& other) const;
    bool operator!=(const ConversationParticipant& other) const;

    /** Brings participants into some order before lists are compared pairwise; no strict weak ordering. */
    bool operator<(const ConversationParticipant& other) const;

    bool doNumbersMatch(const ConversationParticipant& other) const;
    bool doesNumberMatchWithAnyNumber(const std::string& number) const;
    bool bothNamesAnonymous(const ConversationParticipant& other) const;
    bool anyNameCTIAssisted(const ConversationParticipant& other) const;

    /** Neither name nor number, or the surname that stands for such a caller. */
    bool isAnonymous() const { return isAnonymous_; }
    bool hasAnonymousName() const { return hasAnonymousName_; }
    bool isCTIAssisted() const { return isCTIAssisted_; }

    /** What the getters copy, without the copy; lives until the participant is changed or destroyed. */
    const std::string& firstNameText() const { return CallPartyIdentifier::getFirstName(); }
    const std::string& surnameText() const { return CallPartyIdentifier::getSurname(); }
    const std::string& numberText() const { return CallPartyIdentifier::getNumber(); }
    const std::string& comparableNumberText() const { return numbers_.main(); }

    /** The contact number at this place; empty when it is not known. */
    const std::string& contactNumber(ContactNumberSlot slot) const { return numbers_.at(slot); }

    /** The comparable number and the four. */
    const PartyNumbers& numbers() const { return numbers_; }

    /** Whether one of the four is another number than the comparable one. */
    bool hasFurtherNumbers() const { return numbers_.hasFurther(); }

    /** Whether any of the four is known. */
    bool hasContactNumbers() const { return !numbers_.hasNoneOfTheFour(); }

    /** Whether both know the same four numbers. */
    bool hasSameContactNumbers(const ConversationParticipant& other) const
    {
        return numbers_.hasSameFourAs(other.numbers_);
    }

  private:
    struct Details
    {
        std::string userId;
        std::string email;
        std::string company;
        std::string address1;
        std::string address2;
        std::string role;
    };

    void noteTexts();
    void convert(std::string& number) const;

    /** What the texts say; kept here because it is asked whenever parties are compared, and the texts lie elsewhere. */
    bool hasNumber_ = false;
    bool isAnonymous_ = true;
    bool hasAnonymousName_ = false;
    bool isCTIAssisted_ = false;
    PartyNumbers numbers_; ///< the main one is the comparable number
    CopyOnWrite<Details> details_;
    DigitAnalysisServiceIfc* dialStringConverter_ = nullptr;
};
} // namespace ConversationAPI
