/** A contact of the phonebook as traces tell it, and as the phonebook's messages do. */
#pragma once

#include "platform/CallPartyIdentifier.h"

#include <array>
#include <string>

namespace Deskphone
{
/** All that means something here. Numbers in any spelling, "" for none. */
struct Contact
{
    std::string contactId; ///< "" for one that the phonebook is to give an id
    std::string first;
    std::string last;
    std::string work;
    std::string work2;
    std::string mobile;
    std::string home;
    std::string email{};
    std::string company{};
    std::string address{};
    std::string address2{};
    std::string role{};
    std::string picture{};    ///< name of a file
    std::string exchangeId{}; ///< on an exchange server
    std::string source{};     ///< where the contact came from

    /** Which number to call; NO_ICON for the first that there is. */
    CallPartyIdentifier::PhoneNumberIconType mainNumber = CallPartyIdentifier::NO_ICON;
};

struct ContactField
{
    const char* name;    ///< in a trace
    const char* element; ///< in the phonebook's messages, and the key in what a directory finds
    const char* meaning; ///< for people
    std::string Contact::*value;
    bool isOfPerson; ///< whether a directory knows it, too
};

/** All texts of a contact but its id. */
inline constexpr std::array<ContactField, 14> CONTACT_FIELDS{{
    {"first", "Firstname", "First name", &Contact::first, true},
    {"last", "Surname", "Last name", &Contact::last, true},
    {"work", "Office", "Number at work", &Contact::work, true},
    {"work2", "Office2", "Second number at work", &Contact::work2, true},
    {"mobile", "Mobile", "Mobile number", &Contact::mobile, true},
    {"home", "Private", "Number at home", &Contact::home, true},
    {"email", "Email", "E-mail address", &Contact::email, true},
    {"company", "Company", "Company", &Contact::company, true},
    {"address", "Address", "Address", &Contact::address, true},
    {"address2", "Address2", "Second line of the address", &Contact::address2, true},
    {"role", "JobFunction", "Role", &Contact::role, true},
    {"picture", "Picture", "Name of the picture's file", &Contact::picture, false},
    {"exchangeId", "ExternalID", "Id on an exchange server", &Contact::exchangeId, false},
    {"source", "ContactSource", "Where the contact came from", &Contact::source, false},
}};

/** The message that stores the contact: all that is known of it from then on. */
std::string writeRequest(const Contact& contact);

/** The message that asks for a contact. */
std::string readRequest(const std::string& contactId);

/** What a message tells of a contact. */
Contact contactOf(const std::string& message);
} // namespace Deskphone
