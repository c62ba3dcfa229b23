/** The PhoneBook XML messages: the requests to the directory service, and the contacts that it reports. */
#pragma once

#include "sources/ContactFields.h"

#include <string>

namespace ConversationAPI
{
/** A contact as a message of the phonebook tells of it. */
struct PhonebookEntry
{
    DirectoryContact contact;  ///< the picture as the message names it
    std::string defaultNumber; ///< the code of the number to call
    std::string externalId;    ///< of the contact on an exchange server
    std::string uniqueId;      ///< of the contact in the phonebook
};

/** Elements that the message lacks are read as empty. */
PhonebookEntry readPhonebookEntry(const std::string& xml);

/** The number that the entry's code means; none for a code that is not known. */
MainNumber defaultNumberOf(const PhonebookEntry& entry);

/** Asks to store the contact: anew when `contactId` is "". Of the picture's path the file name is written. */
std::string writeRequest(const DirectoryContact& contact, const std::string& contactId);

/** Asks for one contact. */
std::string readRequest(const std::string& contactId);
} // namespace ConversationAPI
