/**
 * A phonebook that is gone with the test, and a directory that answers a search when the test says so.
 *
 * It stores messages as they come, with an id where they have none, and tells its observer at once, as a service in the
 * same process may.
 */
#pragma once

#include "platform/ClientUtils.h"
#include "platform/DirectoryServiceIfc.h"

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace Testing
{
using Fields = std::vector<std::pair<std::string, std::string>>;

/** An entry with these elements, their values escaped. */
inline std::string entryXml(const Fields& fields)
{
    std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?><Schema name=\"PhoneBook\"><Entry>";
    for (const auto& [key, value] : fields)
    {
        xml += "<" + key + ">" + ClientUtils::escapeXMLString(value) + "</" + key + ">";
    }
    return xml + "</Entry></Schema>";
}

class InMemoryDirectory : public DirectoryServiceIfc
{
  public:
    bool write(const std::string& xml, bool notify) override
    {
        written.push_back(xml);
        if (refuses)
        {
            return false;
        }
        const std::string given = idOf(xml);
        const bool isNew = contacts.count(given) == 0;
        const std::string id = given.empty() ? put(xml) : given;
        contacts[id] = given.empty() ? contacts[id] : xml;
        if (notify && observer)
        {
            isNew ? observer->newContact(contacts[id]) : observer->contactUpdated(xml);
        }
        return true;
    }

    std::string read(const std::string& xml) override
    {
        const auto found = contacts.find(idOf(xml));
        return found == contacts.end() ? std::string() : found->second;
    }

    std::vector<std::string> contactIds() override
    {
        std::vector<std::string> ids;
        std::for_each(contacts.begin(), contacts.end(), [&ids](const auto& one) { ids.push_back(one.first); });
        return ids;
    }

    void deleteContact(const std::string& contactId) override
    {
        if (contacts.erase(contactId) != 0 && observer)
        {
            observer->contactDeleted(contactId);
        }
    }

    void search(const std::string& searchId, const std::string& text) override
    {
        searches.push_back(searchId + "=" + text);
        whenSearched(searchId);
    }
    void cancelSearch(const std::string& searchId) override { searches.push_back("cancel " + searchId); }

    /** Stores the contact without telling anybody; answers its id. */
    std::string put(std::string xml)
    {
        const std::string id = "c" + std::to_string(++lastId);
        xml.insert(xml.find("</Entry>"), "<UniqueID>" + id + "</UniqueID>");
        contacts[id] = xml;
        return id;
    }

    static std::string idOf(const std::string& xml)
    {
        return ClientUtils::unescapeXMLString(ClientUtils::extractValueFromXMLString(xml, "UniqueID"));
    }

    std::map<std::string, std::string> contacts;
    std::vector<std::string> written, searches;
    std::function<void(const std::string&)> whenSearched = [](const std::string&) {};
    DirectoryServiceObserverIfc* observer = nullptr;
    int lastId = 0;
    bool refuses = false; ///< whatever is written
};
} // namespace Testing
