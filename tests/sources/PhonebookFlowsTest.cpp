/** The source of contacts on the reference phonebook and its file. */
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/DirectoryServiceConversationSource.h"
#include "host/Phonebook.h"
#include "host/SimulatedEventLoop.h"
#include "support/InMemoryDirectory.h"
#include "support/Phone.h"

#include <SQLiteCpp/Database.h>
#include <filesystem>
#include <unistd.h>

namespace
{
using namespace ConversationAPI;
using namespace Testing;
using Texts = std::vector<std::string>;
namespace fs = std::filesystem;

/** What a restart makes anew. */
struct Telephone
{
    Telephone(Phone& phone, const fs::path& file) : phonebook(file), source(&phone.conversations, &phonebook, nullptr)
    {
        phone.ids.setConversationSources({&source});
        phonebook.addObserver(&source);
        source.phonebookDatabaseUpdated(true);
    }

    Texts stored() const
    {
        Texts all;
        for (const Conversation* one : *source.getConversations())
        {
            all.push_back(one->toString() + " " + one->getNumber() + " " + one->getMobileNumber());
        }
        return all;
    }

    Host::Phonebook phonebook;
    DirectoryServiceConversationSource source;
};

class PhonebookFlowsTest : public testing::Test, protected Phone
{
  protected:
    void SetUp() override { fs::remove_all(file_.parent_path()); }
    void TearDown() override { fs::remove_all(file_.parent_path()); }

    const fs::path file_ = fs::path(testing::TempDir()) / ("contacts_" + std::to_string(getpid())) / "phonebook.sqlite";
};

TEST_F(PhonebookFlowsTest, ContactsOutliveARestart)
{
    const std::string name = "</Surname><X>&\xff\r\n";
    const std::string company(1 << 20, '&');
    {
        Telephone telephone(*this, file_);
        DirectoryServiceConversationSource& source = telephone.source;
        const auto saved = contact("", "11", "22");
        saved->setPersonalData("Ann", name, "", company, "", "", "");
        source.saveContact(saved.get());
        for (const char* mobile : {"33", "34"}) // imported again, it is the same contact
        {
            source.newContact(
                entryXml({{"Surname", "Bo"}, {"Office", "12"}, {"Mobile", mobile}, {"DefaultNumber", "2"}}),
                "bluetooth");
        }
        EXPECT_EQ(telephone.stored(), (Texts{"Ann " + name + " 11 22", "Bo 12 34"}));
        EXPECT_TRUE(telephone.phonebook.isStored());
    }
    Telephone telephone(*this, file_);
    EXPECT_EQ(telephone.stored(), (Texts{"Ann " + name + " 11 22", "Bo 12 34"}));
    Conversation& ann = *telephone.source.getConversations()->atIndex(0);
    EXPECT_TRUE(ann.getCompany() == company);
    const std::string row = ann.getConversationId();
    ann.setPersonalData("Ann", "Lee", "", "", "", "", "");
    ann.setPhoneNumbers("", "", "22", "", "22", CallPartyIdentifier::MOBILE);
    telephone.source.saveContact(&ann);
    EXPECT_EQ(telephone.stored(), (Texts{"Ann Lee 22 22", "Bo 12 34"})) << "a lost number is lost";
    EXPECT_EQ(telephone.phonebook.contactIds().size(), 2U);
    telephone.source.deleteConversation(row);
    EXPECT_EQ(telephone.stored(), Texts{"Bo 12 34"});
    EXPECT_EQ(telephone.phonebook.contactIds().size(), 1U);
}

TEST_F(PhonebookFlowsTest, ContactsOfALockedFileAppearWhenItIsFree)
{
    Telephone(*this, file_).source.newContact(entryXml({{"Surname", "Ann"}, {"Mobile", "1"}}), "bluetooth");
    Host::SimulatedEventLoop loop(0);
    const Host::EventLoop::Scope scope(loop);
    auto lock = std::make_unique<SQLite::Database>(file_.string(), SQLite::OPEN_READWRITE);
    lock->exec("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE");
    Telephone telephone(*this, file_);
    telephone.source.newContact(entryXml({{"Surname", "Bo"}, {"Mobile", "2"}}), "bluetooth");
    EXPECT_EQ(telephone.stored(), Texts{"Bo 2 2"});
    const std::string row = telephone.source.getInUseConversationIds().at(0);
    lock.reset();
    loop.advanceBy(31'000);
    EXPECT_EQ(telephone.stored(), (Texts{"Ann 1 1", "Bo 2 2"}));
    EXPECT_NE(telephone.source.getConversation(row), nullptr) << "a contact keeps its row";
}
} // namespace
