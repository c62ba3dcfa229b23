/** A contact of the phonebook as traces tell it, and as the phonebook's messages do. */
#pragma once

#include <string>

namespace Deskphone
{
/** Numbers in any spelling, "" for none. */
struct Contact
{
    std::string contactId; ///< "" for one that the phonebook is to give an id
    std::string first;
    std::string last;
    std::string work;
    std::string work2;
    std::string mobile;
    std::string home;
};

/** The message that stores the contact: all that is known of it from then on. */
std::string writeRequest(const Contact& contact);

/** The message that asks for a contact. */
std::string readRequest(const std::string& contactId);

/** What a message tells of a contact. */
Contact contactOf(const std::string& message);
} // namespace Deskphone
