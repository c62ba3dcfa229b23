/**
 * What a conversation knows of its contact, in value types that conversations share until one changes them.
 *
 * All numbers are kept in their comparable form; an empty text is a fact that is not known.
 */
#pragma once

#include "ConversationAPI/ConversationParticipant.h"
#include "ConversationAPI/PartyNumbers.h"

#include <string>
#include <vector>

namespace ConversationAPI
{
/** First and last name joined by a blank, or whichever is there. */
std::string joinNames(const std::string& firstName, const std::string& lastName);

/** Names and numbers: what conversations are told apart by. */
struct ContactDetails
{
    std::string firstName;
    std::string lastName;
    PartyNumbers numbers;
    CallPartyIdentifier::PhoneNumberIconType numberType = CallPartyIdentifier::NO_ICON; ///< of the main number

    bool operator==(const ContactDetails& other) const;
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
