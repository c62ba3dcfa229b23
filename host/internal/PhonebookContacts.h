/** The content of the phonebook in memory: contacts by their ids, in the order in which they came. */
#pragma once

#include "host/internal/ContactMessage.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace Host
{
struct PhonebookContact
{
    std::string id;
    std::int64_t place = 0; ///< later ones have a higher one
    ContactValues values;
};

class PhonebookContacts
{
  public:
    /** Null when there is none; valid until the next change. */
    const PhonebookContact* find(const std::string& id) const;

    /** In order. */
    std::vector<std::string> ids() const;

    /** Whether both have the same contacts in one order. */
    bool isSameAs(const PhonebookContacts& other) const;

    /** A new contact comes last, a known one stays where it is. */
    void put(const std::string& id, ContactValues values);

    /** Whether it was there. */
    bool remove(const std::string& id);

    /**
     * Makes contacts of a file the first ones. One that is known counts as it is known, with what only the file says
     * of it. Gives the ids of those that are not as the file has them.
     */
    std::set<std::string> adopt(std::vector<PhonebookContact> stored);

  private:
    std::map<std::int64_t, PhonebookContact> contacts_; ///< by their places
    std::unordered_map<std::string, std::int64_t> places_;
};
} // namespace Host
