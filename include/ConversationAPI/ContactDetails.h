/**
 * What a conversation knows of its contact, in value types that conversations share until one changes them.
 *
 * All numbers are kept in their comparable form; an empty text is a fact that is not known.
 */
#pragma once

#include "ConversationAPI/ContactNumbers.h"
#include "ConversationAPI/ConversationParticipant.h"
#include "ConversationAPI/CopyOnWrite.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace ConversationAPI
{
/** First and last name joined by a blank, or whichever is there. */
std::string joinNames(const std::string& firstName, const std::string& lastName);

/** Names and numbers: what conversations are told apart by. */
class ContactDetails
{
  public:
    std::string firstName;
    std::string lastName;
    CallPartyIdentifier::PhoneNumberIconType numberType = CallPartyIdentifier::NO_ICON; ///< of the main number

    const std::string& mainNumber() const { return mainNumber_; }

    /** The four stay what they are. */
    void setMainNumber(std::string number);

    /** The number at this place of the four. */
    const std::string& numberAt(unsigned slot) const
    {
        return slotsWithMainNumber_ & (1U << slot) ? mainNumber_ : otherNumbers_->at(slot);
    }
    void setNumberAt(unsigned slot, const std::string& number);
    ContactNumbers numbers() const;
    void setNumbers(const ContactNumbers& numbers);

    /** Calls `use` for every number that is known, once each, the main one first. */
    template <typename Use>
    void forEachNumber(Use use) const
    {
        if (!mainNumber_.empty())
        {
            use(mainNumber_);
        }
        if (!otherNumbers_.isSet())
        {
            return;
        }
        for (auto number = otherNumbers_->begin(); number != otherNumbers_->end(); ++number)
        {
            if (!number->empty() && std::find(otherNumbers_->begin(), number, *number) == number)
            {
                use(*number);
            }
        }
    }

    /** Whether `candidate`, which is not empty, is the main number or one of the four. */
    bool hasNumber(const std::string& candidate) const;

    bool holdsAmongTheFour(const std::string& candidate) const;
    bool hasNoneOfTheFour() const;

    /** Whether the slot is empty and none of the four holds the number yet. */
    bool hasFreeSlotFor(ContactNumberSlot slot, const std::string& candidate) const;
    bool operator==(const ContactDetails& other) const;

  private:
    std::string mainNumber_;
    CopyOnWrite<ContactNumbers> otherNumbers_;

    /** Bit n: number n of the four is the main number. Most contacts have no other, and need no memory for them. */
    std::uint8_t slotsWithMainNumber_ = 0;
};

/** The other party of a two-party conference. */
struct SecondParty
{
    std::string firstName;
    std::string lastName;
    std::string number;

    bool isNobody() const { return firstName.empty() && lastName.empty() && number.empty(); }
    bool operator==(const SecondParty& other) const;
};

/** What is known of contacts from a directory or cloud service, and of little else. */
struct ContactProfile
{
    std::string displayName;
    SecondParty secondParty;
    std::string email;
    std::string company;
    std::string address1;
    std::string address2;
    std::string role;
    std::string userId;
    std::string imagePath;
    std::string searchId;
    std::string orderedContactSource;

    bool operator==(const ContactProfile& other) const;
};

/** What only group conversations have. */
struct GroupDetails
{
    std::string name;
    std::vector<ConversationParticipant> participants;
    std::vector<std::string> bridgeNumbers;
    std::string pin;
    bool userIsAGroupParticipant = false;
    bool isModerated = false;
};
} // namespace ConversationAPI
