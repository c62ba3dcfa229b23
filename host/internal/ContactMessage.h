/**
 * The PhoneBook XML messages as the phonebook takes and gives them. docs/phonebook.md describes them.
 *
 * What cannot be used is told in the log.
 */
#pragma once

#include <array>
#include <optional>
#include <string>

namespace Host
{
struct ContactField
{
    const char* element; ///< in a message
    const char* column;  ///< in the phonebook's file
    const char* untold;  ///< what a message says of a contact for which it was never told
    bool isPersonal;     ///< whether it tells who the contact is, or how to reach it
};

/** All that a contact has, except for its id. */
inline constexpr std::array<ContactField, 17> CONTACT_FIELDS{{
    {"Surname", "surname", "", true},
    {"Firstname", "first_name", "", true},
    {"Office", "office", "", true},
    {"Mobile", "mobile", "", true},
    {"Private", "private", "", true},
    {"Email", "email", "", true},
    {"Group", "contact_group", "", false},
    {"DefaultNumber", "default_number", "0", false}, // the first number that there is
    {"Company", "company", "", true},
    {"Office2", "office2", "", true},
    {"Address", "address", "", true},
    {"Address2", "address2", "", true},
    {"JobFunction", "job_function", "", true},
    {"VoiceDial", "voice_dial", "", false},
    {"Picture", "picture", "", true},
    {"ExternalID", "external_id", "", false},
    {"ContactSource", "contact_source", "", false},
}};

/** In the order of the fields; without value what was never told. */
using ContactValues = std::array<std::optional<std::string>, CONTACT_FIELDS.size()>;

struct ContactMessage
{
    std::string id; ///< "" when the message has none
    ContactValues values;
};

/** Gives `values` what only `older` has. */
void complete(ContactValues& values, const ContactValues& older);

/** Whether there is anything that tells who the contact is. */
bool namesSomebody(const ContactValues& values);

/** None for what is no such message, or one for another reason; a message may leave out its reason. */
std::optional<ContactMessage> parseContactMessage(const std::string& xml, const std::string& reason);

/** All elements, and no reason. */
std::string formatContactMessage(const ContactMessage& message);
} // namespace Host
