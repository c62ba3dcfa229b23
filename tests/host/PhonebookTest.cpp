#include "host/Phonebook.h"
#include "host/LogSink.h"
#include "host/SimulatedEventLoop.h"
#include "platform/ClientUtils.h"

#include <SQLiteCpp/Database.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;
using Host::Phonebook;

const std::string HEAD = "<?xml version=\"1.0\" encoding=\"utf-8\"?><Schema name=\"PhoneBook\">";

std::string request(const std::string& reason, const std::string& elements)
{
    return HEAD + "<ReasonForMessage>" + reason + "</ReasonForMessage><Entry>" + elements + "</Entry></Schema>";
}

std::string contact(const std::string& elements, const std::string& id = "")
{
    return request("write_request", elements + (id.empty() ? "" : "<UniqueID>" + id + "</UniqueID>"));
}

std::string read(Phonebook& phonebook, const std::string& id)
{
    return phonebook.read(request("read_request", "<UniqueID>" + id + "</UniqueID>"));
}

std::string valueOf(const std::string& xml, const std::string& key)
{
    return ClientUtils::unescapeXMLString(ClientUtils::extractValueFromXMLString(xml, key));
}

std::string times(int count, const std::string& text)
{
    std::string all;
    for (int i = 0; i < count; ++i)
    {
        all += text;
    }
    return all;
}

std::string dump(Phonebook& phonebook)
{
    std::string all;
    for (const std::string& id : phonebook.contactIds())
    {
        all += read(phonebook, id) + "\n";
    }
    return all;
}

class PhonebookRecorder : public DirectoryServiceObserverIfc
{
  public:
    void phonebookDatabaseUpdated(bool updated) override { note(updated ? "all" : "nothing"); }
    void newContact(const std::string& xml) override { note("new " + valueOf(xml, "Surname")); }
    void contactUpdated(const std::string& xml) override { note("changed " + valueOf(xml, "Surname")); }
    void contactDeleted(const std::string& id) override { note("deleted " + id); }
    void directorySearchResults(const std::string& id, const PhonebookSearchResults& results) override
    {
        note(id + " found " + std::to_string(results.entries.size()));
    }
    void directorySearchEnded(const std::string& id) override { note(id + " ended"); }
    std::string getSubscribingService() override { return "test"; }

    std::string take() { return std::exchange(seen_, ""); }

    std::function<void()> onNext;

  private:
    void note(const std::string& what)
    {
        seen_ += what + "; ";
        if (const auto next = std::exchange(onNext, nullptr))
        {
            next();
        }
    }

    std::string seen_;
};

class PhonebookTest : public testing::Test
{
  protected:
    void SetUp() override
    {
        fs::remove_all(folder_);
        Host::LogSink::instance().setLevel(3);
        Host::LogSink::instance().writeTo([this](const std::string&) { ++logLines_; });
    }

    void TearDown() override
    {
        Host::LogSink::instance().reset();
        fs::remove_all(folder_);
    }

    std::unique_ptr<SQLite::Database> lock(const char* how) const
    {
        auto database = std::make_unique<SQLite::Database>(file_.string(), SQLite::OPEN_READWRITE);
        database->exec(how);
        return database;
    }

    const fs::path folder_ = fs::path(testing::TempDir()) / ("phonebook_" + std::to_string(getpid()));
    const fs::path file_ = folder_ / "new" / "phonebook.sqlite";
    int logLines_ = 0;
};

TEST_F(PhonebookTest, TakesWhatItCanUseAndRefusesTheRest)
{
    const std::string big(1 << 20, '<');
    const struct
    {
        std::string message;
        std::string surname; // none for a message that is refused
        bool isClean = false;
    } cases[] = {
        {contact("<Surname>&lt;/Surname&gt;&lt;X&gt; &amp;amp;&#x42;</Surname>"), "</Surname><X> &amp;B", true},
        {contact("<Surname> \r\n </Surname><Office>1</Office>"), " \r\n ", true},
        {contact("<Surname>M\xFCller \xC3</Surname>"), "M\xFCller \xC3", true},
        {contact("<Surname>" + ClientUtils::escapeXMLString(big) + "</Surname>"), big, true},
        {contact("<Surname><![CDATA[<a>&amp;]]></Surname>"), "<a>&amp;", true},
        {HEAD + "<Entry>\n <Surname>A</Surname>\n</Entry></Schema>", "A", true},
        {contact("<Surname>A &none; & &#0; &#xD800;</Surname>"), "A &none; & &#0; &#xD800;", true},
        {contact("<Surname>A&#1;\x02&#x1F600;</Surname>"), "A\x01\x02\xF0\x9F\x98\x80", true},
        {contact("<Surname>A<b>B<UniqueID>C</UniqueID></b>D</Surname>"), "ABCD"},
        {contact("<Surname>A</Surname><Surname>B</Surname><Entry/>text<Unknown>1</Unknown>"), "A"},
        {HEAD + "<Entry><Surname>A</Surname></Entry><Entry><Surname>B</Surname></Entry></Schema>", "A"},
        {contact("<Surname></Surname><Firstname>A</Firstname><Surname>B</Surname>"), ""},
        {contact("<Surname></Surname><X></Surname><Firstname>B</Firstname>"), "none"},
        {contact(std::string("<Surname>A\0B</Surname>", 22)), "none"},
        {contact("<DefaultNumber>1</DefaultNumber><Group>A</Group>"), "none"},
        {request("read_request", "<Surname>A</Surname>"), "none"},
        {"<Schema name=\"Other\"><Entry><Surname>A</Surname></Entry></Schema>", "none"},
        {HEAD + "<Surname>A</Surname></Schema>", "none"},
        {contact("<Surname>" + std::string(17 << 20, 'A') + "</Surname>"), "none"},
        {"", "none"},
        {HEAD + "<Entry><Surname>A</Surname>", "none"},
        {contact("<Surname>" + times(300000, "<a>") + "B" + times(300000, "</a>") + "</Surname>"), "B"},
        {HEAD + times(1000000, "<a>"), "none"},
    };
    for (const auto& one : cases)
    {
        Phonebook phonebook;
        logLines_ = 0;
        phonebook.write(one.message, true);
        const auto ids = phonebook.contactIds();
        EXPECT_TRUE((ids.empty() ? "none" : valueOf(read(phonebook, ids[0]), "Surname")) == one.surname)
            << one.message.substr(0, 300) << dump(phonebook).substr(0, 300);
        EXPECT_EQ(logLines_ == 0, one.isClean) << one.message.substr(0, 300);
    }
}

TEST_F(PhonebookTest, AChangeKeepsWhatItDoesNotTell)
{
    Phonebook phonebook;
    phonebook.write(contact("<Surname>Lee</Surname><ExternalID>EWS_7</ExternalID>", "7"), true);
    EXPECT_EQ(valueOf(read(phonebook, "7"), "DefaultNumber"), "0");
    phonebook.write(contact("<Surname></Surname><Firstname>Ann</Firstname><DefaultNumber/>", "7"), true);
    phonebook.write(contact("<Firstname></Firstname>", "7"), true);
    EXPECT_EQ(read(phonebook, "7"),
              HEAD + "<Entry><Surname></Surname><Firstname>Ann</Firstname><Office></Office><Mobile></Mobile><Private>"
                     "</Private><Email></Email><Group></Group><DefaultNumber></DefaultNumber><Company></Company>"
                     "<Office2></Office2><Address></Address><Address2></Address2><JobFunction></JobFunction><VoiceDial>"
                     "</VoiceDial><Picture></Picture><ExternalID>EWS_7</ExternalID><ContactSource></ContactSource>"
                     "<UniqueID>7</UniqueID></Entry></Schema>");
    EXPECT_EQ(read(phonebook, "8") + phonebook.read("") + phonebook.read(contact("", "7")), "");
}

TEST_F(PhonebookTest, TellsInOneOrder)
{
    Phonebook phonebook;
    PhonebookRecorder first;
    PhonebookRecorder second;
    phonebook.addObserver(&first);
    phonebook.addObserver(&second);
    first.onNext = [&] { phonebook.write(contact("<Surname>B</Surname>", "b"), true); };
    phonebook.write(contact("<Surname>A</Surname>", "a"), true);
    phonebook.write(contact("<Surname>C</Surname>", "a"), false);
    EXPECT_EQ(second.take(), "new A; new B; ");
    first.onNext = [&] { phonebook.removeObserver(&first); };
    phonebook.write(contact("<Surname>D</Surname>", "b"), true);
    phonebook.deleteContact("b");
    phonebook.deleteContact("b");
    phonebook.search("s", "text");
    phonebook.cancelSearch("s");
    EXPECT_EQ(second.take(), "changed D; deleted b; s ended; ");
    EXPECT_EQ(first.take(), "new A; new B; changed D; ");
}

TEST_F(PhonebookTest, HandsSearchesToTheDirectory)
{
    struct Directory : Host::DirectorySearch
    {
        void setObserver(Host::DirectorySearchObserver* given) override { observer = given; }
        void search(const std::string& id, const std::string& text) override { asked += id + "=" + text + "; "; }
        void cancel(const std::string& id) override { asked += "cancel " + id + "; "; }
        Host::DirectorySearchObserver* observer = nullptr;
        std::string asked;
    } directory;
    PhonebookRecorder recorder;
    {
        Phonebook phonebook;
        phonebook.addObserver(&recorder);
        phonebook.setDirectory(&directory);
        phonebook.search("1", "ann");
        phonebook.search("2", "bo");
        phonebook.cancelSearch("1");
        phonebook.cancelSearch("3");
        EXPECT_EQ(directory.asked, "1=ann; 2=bo; cancel 1; ");
        directory.observer->searchResults("2", {{{}, {}}});
        for (const char* id : {"2", "2", "3"})
        {
            directory.observer->searchEnded(id);
            directory.observer->searchResults(id, {});
        }
        EXPECT_EQ(recorder.take(), "2 found 2; 2 ended; ");
        phonebook.setDirectory(nullptr);
        EXPECT_EQ(recorder.take(), "1 ended; ") << "nobody else would end it";
        EXPECT_EQ(directory.observer, nullptr);
        phonebook.setDirectory(&directory);
    }
    EXPECT_EQ(directory.observer, nullptr);
}

TEST_F(PhonebookTest, RestartsLocksAndDamageChangeNothing)
{
    std::mt19937 random(1);
    const auto below = [&random](unsigned bound) { return static_cast<unsigned>(random() % bound); };
    Phonebook inMemory;
    auto phonebook = std::make_unique<Phonebook>(file_);
    for (unsigned i = 0; i < 200; ++i)
    {
        const std::string id = std::to_string(below(40));
        const std::string field = below(2) == 0 ? "Surname" : "Mobile";
        const std::string xml = contact(
            "<" + field + ">" + std::to_string(i) + "&lt;\xFF" + std::string(below(300), 'x') + "</" + field + ">", id);
        const unsigned action = below(4);
        std::unique_ptr<SQLite::Database> lock;
        if (i % 25 == 10)
        {
            lock = this->lock("BEGIN IMMEDIATE");
        }
        for (Phonebook* each : {phonebook.get(), &inMemory})
        {
            action == 0 ? each->deleteContact(id) : static_cast<void>(each->write(xml, true));
        }
        lock.reset();
        if (i % 100 == 47)
        {
            this->lock("DROP TABLE contacts"); // is noticed when the next change is written
        }
        else if (i % 20 == 19 || i % 25 == 10)
        {
            ASSERT_TRUE(phonebook->store());
            phonebook = std::make_unique<Phonebook>(file_);
        }
        ASSERT_EQ(dump(*phonebook), dump(inMemory)) << i;
    }
}

TEST_F(PhonebookTest, JoinsWhatALockedFileHolds)
{
    for (const std::string name : {"1", "2", "3"})
    {
        Phonebook(file_).write(contact("<Surname>" + name + "</Surname><Mobile>" + name + "</Mobile>", name), true);
    }
    Host::SimulatedEventLoop loop(0);
    const Host::EventLoop::Scope scope(loop);
    auto lock = this->lock("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE");
    Phonebook phonebook(file_);
    PhonebookRecorder recorder;
    phonebook.addObserver(&recorder);
    phonebook.write(contact("<Surname>4</Surname>", "4"), true);
    phonebook.write(contact("<Surname>Two</Surname>", "2"), true);
    phonebook.write(contact("<Surname>Three</Surname>", "3"), true);
    phonebook.deleteContact("3");
    EXPECT_FALSE(phonebook.isStored());
    EXPECT_NE(phonebook.problem().find("locked"), std::string::npos);
    lock.reset();
    loop.advanceBy(31'000);
    EXPECT_EQ(recorder.take(), "new 4; new Two; new Three; deleted 3; all; ");
    EXPECT_TRUE(phonebook.isStored());
    EXPECT_EQ(phonebook.contactIds(), (std::vector<std::string>{"1", "2", "4"}));
    EXPECT_EQ(valueOf(read(phonebook, "2"), "Surname") + valueOf(read(phonebook, "2"), "Mobile"), "Two2");
    EXPECT_EQ(dump(*std::make_unique<Phonebook>(file_)), dump(phonebook));
}

TEST_F(PhonebookTest, SetsDamagedFilesAside)
{
    for (auto phonebook = std::make_unique<Phonebook>(file_); phonebook->contactIds().size() < 100;)
    {
        phonebook->write(contact("<Surname>" + std::string(200, 'x') + "</Surname>"), true);
    }
    std::ifstream stream(file_, std::ios::binary);
    const std::string good{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    int setAside = 0;
    for (std::size_t at = 0; at < good.size(); at += 1499)
    {
        std::string bad = good;
        std::ofstream(file_, std::ios::binary) << bad.replace(at, 40, 40, '\x7F');
        Phonebook phonebook(file_);
        phonebook.write(contact("<Surname>new</Surname>", "new"), true);
        ASSERT_TRUE(phonebook.isStored()) << phonebook.problem();
        EXPECT_EQ(phonebook.contactIds().size(), phonebook.problem().empty() ? 101U : 1U);
        setAside += phonebook.problem().empty() ? 0 : 1;
    }
    EXPECT_GT(setAside, 5);
}
} // namespace
