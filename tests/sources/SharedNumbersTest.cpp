// Contacts that have numbers, names or nothing in common: each stays who it is, in the list and in the phonebook.
#include "sources/DirectoryFixture.h"

#include "ConversationAPI/StaticConversationIDGenerator.h"

#include <sstream>

namespace
{
using namespace Directory;

/** The elements of a contact told as "Bob ebob@example.org o11 m22 h33". */
Fields fieldsOf(const std::string& text)
{
    static const std::map<char, std::string> keys = {
        {'e', "Email"}, {'o', "Office"}, {'m', "Mobile"}, {'h', "Private"}};
    std::istringstream words(text);
    Fields fields = {{"Surname", ""}, {"DefaultNumber", "0"}};
    words >> fields[0].second;
    for (std::string word; words >> word;)
    {
        fields.emplace_back(keys.at(word[0]), word.substr(1));
    }
    return fields;
}

std::string tell(const Conversation& one)
{
    const std::pair<const char*, std::string> values[] = {{" e", one.getEmail()},
                                                          {" o", one.getWorkNumber1()},
                                                          {" m", one.getMobileNumber()},
                                                          {" h", one.getHomeNumber()}};
    std::string text = one.getLastName();
    for (const auto& value : values)
    {
        text += value.second.empty() ? "" : value.first + value.second;
    }
    return text;
}

class SharedNumbersTest : public DirectorySourceTest
{
  protected:
    /** Steps, a semicolon behind each. */
    void run(const std::string& steps)
    {
        std::istringstream all(steps);
        for (std::string step; std::getline(all >> std::ws, step, ';');)
        {
            SCOPED_TRACE(step);
            take(step.substr(0, step.find(' ')), step.substr(step.find(' ') + 1));
            ids.garbageCollect();
            check();
        }
    }

    Texts listed() const
    {
        Texts all;
        std::for_each(source.getConversations()->begin(), source.getConversations()->end(),
                      [&all](const Conversation* one) { all.push_back(tell(*one)); });
        return all;
    }

  private:
    void take(const std::string& what, const std::string& rest)
    {
        const std::string id = rest.substr(0, rest.find(' '));
        const std::map<std::string, std::function<void()>> steps = {
            {"put", [&] { directory.write(xmlOf(fieldsOf(rest.substr(id.size())), id), true); }},
            {"gone", [&] { directory.deleteContact(rest); }},
            {"import", [&] { source.newContact(entryXml(fieldsOf(rest)), "bluetooth"); }},
            {"find", [&] { search(rest); }},
            {"save", [&] { source.saveContact(std::unique_ptr<Conversation>(named(rest).clone()).get()); }},
            {"delete", [&] { source.deleteConversation(named(rest).getConversationId()); }},
            {"refuse", [&] { directory.refuses = true; }},
            {"reread", [&] { source.phonebookDatabaseUpdated(true); }}};
        steps.at(what)();
    }

    /** People, a comma between them. */
    void search(const std::string& people)
    {
        PhonebookSearchResults results;
        std::istringstream all(people);
        for (std::string one; std::getline(all, one, ',');)
        {
            const Fields fields = fieldsOf(one);
            results.entries.emplace_back(fields.begin(), fields.end());
        }
        source.getMatchingConversationIds("x", std::to_string(++searches), &notes);
        source.directorySearchResults(std::to_string(searches), results);
    }

    Conversation& named(const std::string& name)
    {
        const Texts all = source.getInUseConversationIds();
        return *source.getConversation(*std::find_if(all.begin(), all.end(),
                                                     [&](const std::string& id)
                                                     { return source.getConversation(id)->getLastName() == name; }));
    }

    /** What is listed is the phonebook's, and known to be so; who stays keeps the id. */
    void check()
    {
        std::map<std::string, std::string> now;
        for (const Conversation* one : *source.getConversations())
        {
            const std::string id = one->getConversationId(), contactId = source.findContactIdForConversationID(id);
            StaticConversationIDGenerator anyId("any");
            const std::unique_ptr<Conversation> stored(
                source.createConversationFromXml(directory.contacts[contactId], &anyId));
            EXPECT_EQ(tell(*one), tell(*stored)) << contactId;
            EXPECT_EQ(source.getConversation(id), one) << "two contacts have one id";
            EXPECT_TRUE(rows.count(contactId) == 0 || rows[contactId] == id) << contactId << " has another id";
            now[contactId] = id;
        }
        rows = now;
    }

    std::map<std::string, std::string> rows; ///< the ids of conversations by those of contacts
    int searches = 0;
};

TEST_F(SharedNumbersTest, EachContactStaysWhoItIs)
{
    const struct
    {
        std::string steps;
        Texts listed;
        std::size_t contacts; ///< of the phonebook
        std::size_t found;    ///< people, by the last search
    } cases[] = {
        {"put b Bob h14; import Eve h14; import Eve ea@b h14; reread;", {"Bob h14"}, 2, 0},
        {"put b Bob h14; import Eve h14; gone b; import Bob h14; reread;", {"Eve h14"}, 2, 0},
        {"import Bob ea@b; import Bob ea@b; import Bob eb@b; reread;", {"Bob ea@b", "Bob eb@b"}, 2, 0},
        {"put b Bob h14; put e Eve h14; put e Eva h14; gone e; reread;", {"Bob h14"}, 1, 0},
        {"put b Bob h14; put e Eve h14; put b Rob h14 m15; save Rob; reread;", {"Rob m15 h14"}, 2, 0},
        {"put b Bob h14; put e Eve h14; gone b; reread;", {"Eve h14"}, 1, 0},
        {"put a Ann o11 m22; put b Ann o11 m33; put a Ann o11 m44; save Ann; reread;", {"Ann o11 m44"}, 2, 0},
        {"put a Ann o11 m22; put b Ann o11 m33; put b Ann o12 m33; gone b; reread;", {"Ann o11 m22"}, 1, 0},
        {"put a Ann o11 m22; put b Ann o11 m33; delete Ann; reread;", {"Ann o11 m33"}, 1, 0},
        {"find Bob o14, Bobby o14, Bob o14, Bob, Bob, Bob ea@b; save Bobby; reread;", {"Bobby o14"}, 1, 4},
        {"put b Bob o14; find Eve o14, Bob o14 m15, Eve m15;", {"Bob o14"}, 1, 3},
        {"find Bob ea@b; save Bob; reread; find Bob ea@b; save Bob; reread;", {"Bob ea@b"}, 1, 1},
        {"find Bob o14 m21, Bobby o14 m22; save Bob; save Bobby; save Bobby; delete Bobby;", {"Bob o14 m21"}, 1, 2},
        {"find Bob o14; refuse; save Bob; reread;", {}, 0, 1},
        {"put a Ann; put b Bob; put c Ann; reread; gone b; reread;", {"Ann", "Ann"}, 2, 0},
    };
    for (const auto& one : cases)
    {
        SCOPED_TRACE(one.steps);
        directory.contacts.clear();
        directory.refuses = false;
        notes.results.clear();
        run("reread; " + one.steps);
        EXPECT_EQ(listed(), one.listed);
        EXPECT_EQ(directory.contacts.size(), one.contacts);
        EXPECT_EQ(notes.results.size(), one.found);
    }
}

TEST_F(SharedNumbersTest, WhoWasFoundTakesNoStoredContactsPlace)
{
    const auto calls = conversation({missed(1, "14")});
    const std::string id = find("s1", {{"Surname", "Bob"}, {"Office", "14"}});
    const std::unique_ptr<Conversation> bob(source.getConversation(id)->clone());
    run("put e Eve o14;");
    source.saveContact(bob.get());
    EXPECT_EQ(source.getConversation(calls->getConversationId())->getLastName(), "Eve") << "whose calls they are now";
    EXPECT_EQ(directory.contacts.size(), 2U);
}

TEST_F(SharedNumbersTest, PresenceAndExchangeIdOutliveTheNextNotice)
{
    const std::string id = findInWebService("s1");
    source.saveContact(source.getConversation(id));
    source.getConversation(id)->setPresenceState(Conversation::BUSY);
    run("put " + source.findContactIdForConversationID(id) + " Eva o77;");
    EXPECT_EQ(source.getConversation(id)->getLastName() + source.getConversation(id)->exchangeContactId(), "EvaEWS_7");
    EXPECT_EQ(source.getConversation(id)->getPresenceState(), Conversation::BUSY);
}

/** A contact of the web service that only has the number of a stored one in common may be a colleague's. */
TEST_F(SharedNumbersTest, TheWebServiceFillsInWhatAStoredContactLacks)
{
    directory.write(entryXml({{"Surname", "Bob"}, {"Mobile", "15"}, {"Private", "14"}, {"DefaultNumber", "1"}}), true);
    const struct
    {
        std::string name, bob;
        bool isShown; ///< beside the stored contact
    } cases[] = {
        {"Eve", "Bob m15 h14", true}, {"", "Bob eb@b o15 m15 h14", false}, {"Bob", "Bob eb@b o15 m15 h14", false}};
    for (const auto& one : cases)
    {
        WSIItem item;
        item.id = one.name + "1";
        item.lastName = one.name;
        item.workNumber1 = "15";
        item.mobileNumber = "99";
        item.email = "b@b";
        item.presence = WSIPresence::BUSY;
        source.wsiSearchResponseEvent(item);
        const Conversation& bob = *source.getConversations()->atIndex(0);
        EXPECT_EQ(tell(bob) + bob.getNumber(), one.bob + "14");
        EXPECT_EQ(bob.getPresenceState() == Conversation::BUSY, !one.isShown) << one.name;
        EXPECT_EQ(source.getConversation("WSI_" + item.id) != nullptr, one.isShown) << one.name;
    }
}
} // namespace
