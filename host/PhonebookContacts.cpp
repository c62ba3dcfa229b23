#include "host/internal/PhonebookContacts.h"

#include <algorithm>
#include <utility>

namespace Host
{
const PhonebookContact* PhonebookContacts::find(const std::string& id) const
{
    const auto place = places_.find(id);
    return place != places_.end() ? &contacts_.at(place->second) : nullptr;
}

std::vector<std::string> PhonebookContacts::ids() const
{
    std::vector<std::string> ids;
    ids.reserve(contacts_.size());
    for (const auto& [place, contact] : contacts_)
    {
        ids.push_back(contact.id);
    }
    return ids;
}

void PhonebookContacts::put(const std::string& id, ContactValues values)
{
    const std::int64_t last = contacts_.empty() ? 0 : contacts_.rbegin()->first;
    const std::int64_t place = places_.try_emplace(id, last + 1).first->second;
    contacts_[place] = {id, place, std::move(values)};
}

bool PhonebookContacts::remove(const std::string& id)
{
    const auto place = places_.find(id);
    if (place == places_.end())
    {
        return false;
    }
    contacts_.erase(place->second);
    places_.erase(place);
    return true;
}

bool PhonebookContacts::isSameAs(const PhonebookContacts& other) const
{
    return std::equal(contacts_.begin(), contacts_.end(), other.contacts_.begin(), other.contacts_.end(),
                      [](const auto& one, const auto& another)
                      { return one.second.id == another.second.id && one.second.values == another.second.values; });
}

std::set<std::string> PhonebookContacts::adopt(std::vector<PhonebookContact> stored)
{
    PhonebookContacts merged;
    for (PhonebookContact& contact : stored)
    {
        if (merged.places_.try_emplace(contact.id, contact.place).second)
        {
            const std::int64_t place = contact.place;
            merged.contacts_[place] = std::move(contact);
        }
    }
    std::set<std::string> differing;
    for (auto& [place, contact] : contacts_)
    {
        const PhonebookContact* inFile = merged.find(contact.id);
        if (inFile)
        {
            complete(contact.values, inFile->values);
        }
        if (!inFile || inFile->values != contact.values)
        {
            differing.insert(contact.id);
            merged.put(contact.id, std::move(contact.values));
        }
    }
    *this = std::move(merged);
    return differing;
}
} // namespace Host
