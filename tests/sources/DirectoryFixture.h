/** A source of contacts on a phonebook and a web service of its own, and an observer that writes down what it is told.
 */
#pragma once

#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationSearchObserverIfc.h"
#include "ConversationAPI/ConversationSourceObserverIfc.h"
#include "ConversationAPI/DirectoryServiceConversationSource.h"
#include "support/InMemoryDirectory.h"
#include "support/Phone.h"

namespace Directory
{
using namespace ConversationAPI;
using namespace Testing;
using Texts = std::vector<std::string>;
using SearchEntry = PhonebookSearchResults::Entry;

/** What observers of the source and of its searches are told, in order. */
class Notes : public ConversationSourceObserverIfc, public ConversationSearchObserverIfc
{
  public:
    void conversationUpdated(Conversation* contact) override { note("updated " + contact->toString(), contact); }
    void conversationsChanged() override { note("changed"); }
    void removeActiveItemForCall(const std::string&, ConversationSourceIfc*) override {}
    bool hasConversationWithConversationId(const std::string&) override { return false; }
    void conversationSourcesReady() override {}
    void searchResults(const std::string& searchId, const Texts& ids, SearchResultsType type) override
    {
        results = ids;
        note(searchId + " found " + std::to_string(ids.size()) + " of type " + std::to_string(type));
    }
    void searchEnded(const std::string& searchId) override { note(searchId + " ended"); }

    Texts take() { return std::exchange(told, {}); }

    Texts told, results;
    std::function<void(Conversation*)> reaction; ///< runs once

  private:
    void note(const std::string& text, Conversation* contact = nullptr)
    {
        told.push_back(text);
        if (const auto reacts = std::exchange(reaction, nullptr))
        {
            reacts(contact);
        }
    }
};

struct WebService : WSIServiceIfc
{
    void search(const std::string&, int, int, std::vector<WSIItem>&) override {}
    bool searchPhonebook(const std::string&, std::vector<WSIItem>&) override { return false; }
    void deleteItem(const std::string& id) override { deleted.push_back(id); }
    Texts deleted;
};

class DirectorySourceTest : public testing::Test, protected Phone
{
  protected:
    DirectorySourceTest()
    {
        directory.observer = &source;
        ids.setConversationSources({&source});
        source.addObserver(&notes);
    }

    /** "Ann Lee 11 22": name, number to call and mobile number of all stored contacts. */
    Texts stored() const
    {
        Texts all;
        for (const Conversation* one : *source.getConversations())
        {
            all.push_back(one->toString() + " " + one->getNumber() + " " + one->getMobileNumber());
        }
        return all;
    }

    static Fields ann(const std::string& mobile = "22")
    {
        return {{"Firstname", "Ann"}, {"Surname", "Lee"}, {"Office", "11"}, {"Mobile", mobile}, {"DefaultNumber", "2"}};
    }

    static std::string xmlOf(Fields fields, const std::string& id)
    {
        fields.emplace_back("UniqueID", id);
        return entryXml(fields);
    }

    /** The id of the only person whom a search of this id finds. */
    std::string find(const std::string& searchId, const SearchEntry& entry)
    {
        source.getMatchingConversationIds("x", searchId, &notes);
        source.directorySearchResults(searchId, {{entry}});
        return notes.results.size() == 1 ? notes.results.front() : "none";
    }

    /** A contact of the web service, found by a search. */
    std::string findInWebService(const std::string& searchId)
    {
        WSIItem item;
        item.id = "7";
        item.firstName = "Eve";
        item.workNumber1 = "77";
        item.exchangeContactId = "EWS_7";
        source.getMatchingConversationIds("x", searchId, &notes);
        source.wsiSearchResults(searchId, {item});
        return notes.results.size() == 1 ? notes.results.front() : "none";
    }

    InMemoryDirectory directory;
    WebService webService;
    Notes notes;
    DirectoryServiceConversationSource source{&conversations, &directory, &webService};
};
} // namespace Directory
