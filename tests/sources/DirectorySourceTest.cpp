#include "search/SearchFixture.h"
#include "sources/DirectoryFixture.h"

#include "ConversationAPI/StaticConversationIDGenerator.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <unistd.h>

namespace
{
using namespace Directory;
namespace fs = std::filesystem;

TEST_F(DirectorySourceTest, ReadsTheNumberToCall)
{
    const Fields all = {{"Office", "11"}, {"Office2", "12"}, {"Mobile", "13"}, {"Private", "14"}};
    const Fields home = {{"Private", "14"}};
    const struct
    {
        std::string code;
        Fields numbers;
        std::string number;
        int type;
    } cases[] = {{"2", all, "11", 2}, {"3", all, "12", 3},  {"4", all, "13", 4}, {"1", all, "14", 1},
                 {"0", all, "11", 2}, {"0", home, "14", 1}, {"0", {}, "", 0},    {"2", home, "", 2},
                 {"7", all, "", 0},   {"", all, "", 0}};
    for (const auto& one : cases)
    {
        Fields fields = one.numbers;
        fields.emplace_back("DefaultNumber", one.code);
        StaticConversationIDGenerator id("fixed");
        const std::unique_ptr<Conversation> made(source.createConversationFromXml(entryXml(fields), &id));
        EXPECT_EQ(made->getNumber(), one.number) << one.code;
        EXPECT_EQ(made->getNumberType(), one.type) << one.code;
        EXPECT_EQ(made->getConversationId(), "fixed");
    }
}

TEST_F(DirectorySourceTest, WritesAndReadsAnyValue)
{
    const auto saved = contact("</Surname><X>", "", "13");
    saved->setPersonalData("A&B \xff", "</Surname><X>", "a@b", std::string(1 << 20, '<'), "", "Rome", "\"boss\"");
    saved->setOrderedContactSource("LDAP");
    saved->setContactImagePath("/pics/a.png");
    source.saveContact(saved.get());
    const std::string company = ClientUtils::escapeXMLString(std::string(1 << 20, '<'));
    EXPECT_TRUE(directory.written.at(0) ==
                "<?xml version=\"1.0\" encoding=\"utf-8\"?><Schema name=\"PhoneBook\"><ReasonForMessage>write_request"
                "</ReasonForMessage><Entry><Surname>&lt;/Surname&gt;&lt;X&gt;</Surname><Firstname>A&amp;B \xff"
                "</Firstname><Office></Office><Mobile>13</Mobile><Private></Private><Email>a@b</Email><Group></Group>"
                "<DefaultNumber>4</DefaultNumber><Company>" +
                    company +
                    "</Company><Office2></Office2><Address></Address><Address2>Rome</Address2><JobFunction>&quot;boss"
                    "&quot;</JobFunction><VoiceDial></VoiceDial><Picture>a.png</Picture><ContactSource>LDAP"
                    "</ContactSource></Entry></Schema>");
    const Conversation& read = *source.getConversations()->atIndex(0);
    EXPECT_EQ(read.getLastName() + read.getFirstName() + read.getRole() + read.getAddress2() + read.getNumber(),
              "</Surname><X>A&B \xff\"boss\"Rome13");
    EXPECT_EQ(read.getCompany().size(), 1U << 20);
    for (const std::string bad : {"", "<Entry>", "<Surname>", "</Surname><Surname>", "<Schema><UniqueID>c1</UniqueID>"})
    {
        source.newContact(bad);
        source.newContact(bad, "bluetooth");
        source.contactUpdated(bad);
        source.contactDeleted(bad);
    }
    EXPECT_EQ(stored(), Texts{"A&B \xff </Surname><X> 13 13"});
    EXPECT_EQ(directory.written.size(), 1U);
}

TEST_F(DirectorySourceTest, FollowsThePhonebook)
{
    const std::string id = directory.put(entryXml(ann()));
    source.phonebookDatabaseUpdated(false); // tells and changes nothing
    source.phonebookDatabaseUpdated(true);
    EXPECT_EQ(stored(), Texts{"Ann Lee 11 22"});
    const std::string row = source.getInUseConversationIds().at(0);
    EXPECT_EQ(source.findContactIdForConversationID(row), id);
    directory.write(entryXml({{"Surname", "Bo"}, {"Private", "33"}, {"DefaultNumber", "0"}}), true);
    directory.write(xmlOf({{"Surname", "Lee"}, {"Mobile", "99"}, {"Office", "11"}, {"DefaultNumber", "4"}}, id), true);
    const Texts before = source.getInUseConversationIds();
    source.phonebookDatabaseUpdated(true);
    EXPECT_EQ(stored(), (Texts{"Lee 99 99", "Bo 33 "}));
    EXPECT_EQ(source.getInUseConversationIds(), before) << "the same contacts, read anew";
    directory.write(xmlOf({{"Surname", "Berg"}, {"DefaultNumber", "0"}}, id), true);
    EXPECT_EQ(stored(), (Texts{"Berg  ", "Bo 33 "})) << "a lost number is lost";
    EXPECT_EQ(source.getConversation(row)->getConversationId(), row);
    source.contactUpdated(xmlOf({{"Surname", "Nobody"}}, "unknown"));
    EXPECT_EQ(notes.take(), (Texts{"changed", "updated Bo", "updated Lee", "changed", "updated Berg"}));
    source.deleteConversations();
    source.deleteConversation(row);
    EXPECT_EQ(directory.contacts.size(), 1U);
    EXPECT_EQ(stored(), Texts{"Bo 33 "});
    EXPECT_EQ(notes.take(), Texts{"changed"});
    source.newContact(entryXml(ann()));
    source.newContact(entryXml({{"Surname", "Cy"}, {"Office", "11"}, {"DefaultNumber", "2"}}));
    EXPECT_EQ(stored(), (Texts{"Bo 33 ", "Ann Lee 11 22"})) << "who came first is shown, with an id or without";
}

TEST_F(DirectorySourceTest, WhatThePhonebookMakesOfASavedContactIsThatContact)
{
    directory.observer = nullptr;
    source.saveContact(source.getConversation(find("s1", {{"Surname", "Poe "}, {"Office", "44"}})));
    EXPECT_EQ(stored(), Texts{"Poe  44 "});
    source.newContact(xmlOf({{"Surname", "Poe"}, {"Office", "44"}, {"DefaultNumber", "2"}}, "c1"));
    EXPECT_EQ(stored(), Texts{"Poe 44 "}) << "without the blank";
}

TEST_F(DirectorySourceTest, AContactHiddenByItsNumberComesForth)
{
    const Fields bob = {{"Firstname", "Bob"}, {"Office", "11"}, {"DefaultNumber", "2"}};
    for (const bool isDeleted : {true, false})
    {
        const std::string first = directory.put(entryXml(ann()));
        const std::string second = directory.put(entryXml(bob));
        source.phonebookDatabaseUpdated(true);
        EXPECT_EQ(stored(), Texts{"Ann Lee 11 22"});
        source.contactUpdated(xmlOf(bob, second));
        EXPECT_EQ(stored(), Texts{"Ann Lee 11 22"}) << "who is not shown does not rename who is";
        if (isDeleted)
        {
            directory.deleteContact(first);
            EXPECT_EQ(stored(), Texts{"Bob 11 "});
        }
        else
        {
            source.contactUpdated(xmlOf({{"Surname", "Lee"}, {"Mobile", "22"}, {"DefaultNumber", "4"}}, first));
            EXPECT_EQ(stored(), (Texts{"Lee 22 22", "Bob 11 "}));
        }
        directory.contacts.clear();
    }
}

TEST_F(DirectorySourceTest, AFoundPersonIsSavedUnderItsId)
{
    const std::string id = find("s1", {{"Surname", "Poe"}, {"Office", "44"}, {"ContactSource", "LDAP"}});
    EXPECT_EQ(source.getTemporaryConversationIds(), Texts{id});
    EXPECT_TRUE(stored().empty());
    const std::unique_ptr<Conversation> edited(source.getConversation(id)->clone());
    edited->setPhoneNumbers("45", "", "", "", "45", CallPartyIdentifier::WORK_1);
    source.saveContact(edited.get());
    source.clearSearchResults();
    EXPECT_EQ(stored(), Texts{"Poe 45 "});
    EXPECT_EQ(source.findContactIdForConversationID(id), directory.contactIds().at(0));
    EXPECT_FALSE(source.getConversation(id)->isTemporary());
    EXPECT_EQ(find("s2", {{"Surname", "Poe"}, {"Office", "45"}}), id) << "who is stored is not found twice";
    find("s3", {{"Surname", "Ada"}});
    find("s4", {{"Surname", "Cy"}});
    EXPECT_EQ(source.getInUseConversationIds(), (Texts{id, notes.results.at(0)})) << "results of one search are kept";
    edited->saveMobileNumber("46");
    source.saveContact(edited.get());
    EXPECT_EQ(stored(), Texts{"Poe 45 46"});
    EXPECT_EQ(directory.contacts.size(), 1U);
}

TEST_F(DirectorySourceTest, BluetoothContactsAreWrittenIntoThePhonebook)
{
    source.newContact(entryXml(ann()), "network");
    EXPECT_TRUE(directory.written.empty());
    source.newContact(entryXml(ann()), "bluetooth");
    Fields known = ann();
    known.insert(known.end(), {{"Email", "ann@lee"}, {"Company", "Lee"}, {"ContactSource", "LDAP"}});
    directory.write(xmlOf(known, directory.contactIds().at(0)), true);
    source.newContact(entryXml(ann("99")), "bluetooth");
    EXPECT_EQ(stored(), Texts{"Ann Lee 11 99"});
    EXPECT_EQ(directory.contacts.size(), 1U) << "imported again, it is the same contact";
    const Conversation& merged = *source.getConversations()->atIndex(0);
    EXPECT_EQ(merged.getEmail() + merged.getCompany() + merged.getOrderedContactSourceAsString(), "ann@leeLeeLDAP");
}

TEST_F(DirectorySourceTest, AHitSavesOrUpdatesTheWebServicesContact)
{
    const std::string id = findInWebService("s1");
    EXPECT_EQ(id, "WSI_7");
    DirectoryContact hit;
    hit.searchId = "s1";
    hit.lastName = "Adams";
    hit.workNumber1 = "77";
    hit.mobileNumber = "78";
    source.directorySearchResponseEvent(hit);
    const Conversation* eve = source.getConversation(id);
    EXPECT_EQ(eve->toString() + eve->getMobileNumber() + eve->exchangeContactId(), "Eve Adams78EWS_7");
    EXPECT_EQ(eve->getContactSource(), Conversation::WSI_CONTACT);
    findInWebService("s2");
    const LogCapture log(5);
    hit = DirectoryContact();
    hit.searchId = "s2";
    hit.workNumber1 = "77";
    source.directorySearchResponseEvent(hit);
    EXPECT_EQ(stored(), Texts{"Eve 77 "}) << "the notice is not heard, the contact is read";
    EXPECT_EQ(log.count(" WSI Item save in progress, ignoring newContact notification..."), 1U);
    EXPECT_EQ(source.getConversations()->atIndex(0)->getContactSource(), Conversation::DIRECTORY_CONTACT);
    source.deleteConversation(id);
    EXPECT_TRUE(stored().empty());
    EXPECT_EQ(webService.deleted, Texts{"7"});
    EXPECT_EQ(source.getConversation(id), nullptr);
}

TEST_F(DirectorySourceTest, AnswersTheSearchThatIsGoingOn)
{
    const SearchEntry poe = {{"Surname", "Poe"}, {"Office", "44"}};
    source.getMatchingConversationIds("", "s0", &notes);
    source.getMatchingConversationIds("p", "s1", nullptr);
    source.getMatchingConversationIds("p", "s1", &notes);
    source.directorySearchResults("s0", {{poe}});
    source.directorySearchResults("s1", {{poe, poe, {{"NICKNAME_RESULTS", "x"}}, {}, {{"Surname", "Poe"}}}});
    EXPECT_EQ(source.getInUseConversationIds(), notes.results);
    source.directorySearchEnded("s1");
    source.wsiSearchResults("s1", {});
    source.wsiSearchEnded("s1");
    source.directorySearchEnded("s1");
    EXPECT_EQ(notes.take(), (Texts{"s0 ended", "s1 found 2 of type 2", "s1 ended", "s1 found 0 of type 3"}));
    directory.whenSearched = [&](const std::string& id)
    {
        source.directorySearchResults(id, {{poe}});
        source.directorySearchEnded(id);
    };
    notes.reaction = [&](Conversation*) { source.getMatchingConversationIds("po", "s3", &notes); };
    source.getMatchingConversationIds("po", "s2", &notes);
    EXPECT_EQ(notes.take(), (Texts{"s2 found 1 of type 2", "s3 found 1 of type 2", "s3 ended"}));
    source.cancelSearch("s3");
    EXPECT_EQ(directory.searches, (Texts{"s1=p", "s2=po", "cancel s2", "s3=po", "cancel s3"}));
}

TEST_F(DirectorySourceTest, ACancelledSearcherMayGo)
{
    for (const std::string last : {"start s2", "network, start s2 b"})
    {
        {
            Searching::Bench display("0");
            display.searcher.addSearchableConversationSource(&source);
            display.run("start s1 a, " + last + ", cancel");
        }
        source.directorySearchResults("s1", {{{{"Surname", "Poe"}}}});
        source.directorySearchEnded("s1");
        source.wsiSearchEnded("s1");
        EXPECT_EQ(std::exchange(directory.searches, {}), (Texts{"s1=a", "cancel s1"})) << last;
    }
    EXPECT_TRUE(source.getInUseConversationIds().empty());
}

TEST_F(DirectorySourceTest, LateAnswersAreNeverTold)
{
    std::mt19937 random(20260305);
    int last = 0;
    std::string id, current;
    const std::function<void()> events[] = {
        [&] { source.getMatchingConversationIds("x", current = std::to_string(++last), &notes); },
        [&] { current = id == current ? "" : current, source.cancelSearch(id); },
        [&] {
            source.directorySearchResults(id, {{{{"Surname", "A" + id}, {"Office", "7"}}}});
        },
        [&] { source.clearSearchResults(); }, [&] { source.directorySearchEnded(id); }};
    std::set<std::string> ends;
    for (int step = 0; step < 3000; ++step)
    {
        id = std::to_string(std::max(0, last - static_cast<int>(random() % 3)));
        events[random() % std::size(events)]();
        for (const std::string& told : notes.take())
        {
            EXPECT_EQ(told.substr(0, told.find(' ')), current);
            EXPECT_TRUE(told != current + " ended" || ends.insert(told).second) << told << " again";
        }
    }
    EXPECT_GT(ends.size(), 50U);
}

TEST_F(DirectorySourceTest, ObserversMayChangeWhatTheyAreToldOf)
{
    Notes other;
    source.addObserver(&other);
    notes.reaction = [&](Conversation* contact)
    {
        directory.deleteContact("c1");
        EXPECT_EQ(contact->toString(), "Ann Lee") << "lives until all have been told";
    };
    source.newContact(directory.contacts[directory.put(entryXml(ann()))]);
    EXPECT_EQ(notes.take(), (Texts{"updated Ann Lee", "changed"}));
    EXPECT_EQ(other.told, Texts{"changed"});
    EXPECT_TRUE(stored().empty());
}

class PictureTest : public DirectorySourceTest
{
  protected:
    PictureTest() { source.setPictureDirectory(kept); }
    ~PictureTest() override
    {
        fs::remove_all(kept);
        fs::remove("/tmp/" + name("DirSvc_"));
    }

    std::string name(const std::string& prefix) const { return prefix + unique + ".png"; }
    std::string pathRead(const std::string& picture)
    {
        return std::unique_ptr<Conversation>(source.createConversationFromXml(entryXml({{"Picture", picture}})))
            ->getContactImagePath();
    }

    const std::string unique = "picture_test_" + std::to_string(getpid());
    const std::string kept = testing::TempDir() + unique + "_kept";
};

TEST_F(PictureTest, TemporaryPicturesAreWrittenAndMoved)
{
    const std::string temporary = "/tmp/" + name("DirSvc_");
    const std::string lasting = kept + "/" + name("");
    std::ofstream(temporary) << "bytes";
    EXPECT_EQ(pathRead(temporary), lasting);
    EXPECT_FALSE(fs::exists(temporary));
    EXPECT_EQ(fs::file_size(lasting), 5U);
    EXPECT_EQ(pathRead(name("DirSvc_")), lasting) << "moved before";
    EXPECT_EQ(pathRead(name("")), lasting) << "as the phonebook calls it after a save";

    std::ofstream(temporary) << "newer bytes";
    const auto saved = contact("Poe", "44");
    saved->setContactImagePath(temporary);
    source.saveContact(saved.get());
    const std::string newer = saved->getContactImagePath();
    EXPECT_EQ(ClientUtils::extractValueFromXMLString(directory.written.at(0), "Picture"), fs::path(newer).filename());
    EXPECT_EQ(fs::file_size(newer), 11U);
    EXPECT_EQ(fs::file_size(lasting), 5U) << "somebody's picture stays what it is";

    WSIItem item;
    item.id = "../" + unique;
    item.picture = "bytes";
    source.wsiSearchResponseEvent(item);
    const std::string written = source.getConversation("WSI_" + item.id)->getContactImagePath();
    EXPECT_EQ(written, "/tmp/" + name("WSISvc_"));
    EXPECT_EQ(fs::file_size(written), 5U);
    fs::remove(written);
}

TEST_F(PictureTest, NothingElseIsTouched)
{
    const std::string temporary = "/tmp/" + name("DirSvc_");
    const std::string secret = kept + "/secret";
    fs::create_directories(kept);
    std::ofstream(secret) << "secret";
    fs::create_symlink(secret, temporary);
    EXPECT_EQ(pathRead(temporary), name("DirSvc_")) << "a link";
    fs::remove(temporary);
    fs::create_hard_link(secret, temporary);
    EXPECT_EQ(pathRead(temporary), name("DirSvc_")) << "another name of a file";
    fs::remove(temporary);
    std::ofstream(temporary) << std::string(5 << 20, 'x');
    EXPECT_EQ(pathRead(temporary), name("DirSvc_")) << "larger than pictures are";
    for (const std::string picture : {"DirSvc_../../etc/passwd", "EWS_", "WSISvc_..", "DirSvc_a/b", "../secret"})
    {
        EXPECT_EQ(pathRead(picture), picture);
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(kept), {}), 1);
}
} // namespace
