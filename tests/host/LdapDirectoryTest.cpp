#include "host/LdapDirectory.h"
#include "host/LogSink.h"
#include "host/RealTimeEventLoop.h"
#include "tests/support/LdapServer.h"

#include <boost/algorithm/string/replace.hpp>
#include <boost/asio/write.hpp>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace
{
using Host::LdapDirectory;
using Host::LdapSettings;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;
using Names = std::vector<std::string>;

constexpr std::size_t CROWD = 10'000;
const Names EVA = {"Eva Müller"};

std::string person(const std::string& unit, const std::string& name, const std::string& more = "")
{
    static int made = 0;
    return "dn: uid=" + std::to_string(++made) + ",ou=" + unit +
           ",dc=example,dc=com\nobjectClass: inetOrgPerson\ncn: " + name + "\nsn: " + name + "\n" + more + "\n";
}

/** A few hundred of whom some are odd, and if wanted so many that the server cannot send them all at once. */
std::string content(bool withCrowd)
{
    std::string all = "dn: dc=example,dc=com\nobjectClass: domain\n\n"
                      "dn: ou=people,dc=example,dc=com\nobjectClass: organizationalUnit\n\n"
                      "dn: ou=crowd,dc=example,dc=com\nobjectClass: organizationalUnit\n\n";
    all += person("people", "Eva Müller", // whose password holds a NUL, a TAB and a broken byte
                  "givenName: Eva\ntelephoneNumber: +49 30 4711\ntelephoneNumber: 0815\n"
                  "telephoneNumber: 99\nmobile: +49 171 55\no: Übersee\nuserPassword:: Ym9zcwAJ/2xhZHk=\n");
    all += person("people", "山田 太郎") + person("people", "Ast*rix (Gaul) O\\Neil") + person("people", "Łucja Zoë");
    for (int i = 0; i < 300; ++i)
    {
        const std::string id = std::to_string(i);
        all += person("people", "Person " + id, "telephoneNumber: 555 " + id + "\nmobile: 777 " + id + "\n");
    }
    for (std::size_t i = 0; withCrowd && i < CROWD; ++i)
    {
        all += person("crowd", "Crowd", "title: " + std::string(4000, 'x') + "\n");
    }
    return all;
}

/** Settings are written with single quotes, which are easier to read in a program. */
std::string inJson(const std::string& text)
{
    return boost::replace_all_copy(text, "'", "\"");
}

/** Also checks what every sequence of searches keeps to. */
class SearchRecorder : public Host::DirectorySearchObserver
{
  public:
    void searchResults(const std::string& searchId, const PhonebookSearchResults& results) override
    {
        EXPECT_EQ(ends.count(searchId), 0U) << "results of " << searchId << " after its end";
        auto& all = found[searchId];
        all.insert(all.end(), results.entries.begin(), results.entries.end());
        whenFound();
    }
    void searchEnded(const std::string& searchId) override
    {
        EXPECT_EQ(++ends[searchId], 1) << searchId;
        whenEnded();
    }

    std::map<std::string, std::vector<PhonebookSearchResults::Entry>> found;
    std::map<std::string, int> ends;
    std::function<void()> whenFound = [] {}, whenEnded = [] {};
};

class LdapDirectoryTest : public testing::Test
{
  protected:
    LdapDirectoryTest()
    {
        Host::LogSink::instance().writeTo([this](const std::string& line) { log += line + "\n"; });
    }
    ~LdapDirectoryTest() override
    {
        directory.reset();
        Host::LogSink::instance().reset();
    }

    void serve(bool withCrowd = false)
    {
        server = std::make_unique<Testing::LdapServer>(content(withCrowd));
        people = "'base': 'ou=people,dc=example,dc=com', 'url': '" + server->url() + "'";
        overTls = "'base': 'ou=people,dc=example,dc=com', 'url': '" + server->tlsUrl() + "'";
        trusted = ", 'caCertificate': '" + server->path("ca.pem") + "'";
    }

    void open(const std::string& members)
    {
        std::ofstream(server->path("settings.json")) << inJson("{" + members + "}");
        std::string problem;
        const auto settings = LdapSettings::read(server->path("settings.json"), problem);
        ASSERT_TRUE(settings) << problem;
        directory = std::make_unique<LdapDirectory>(*settings, loop);
        directory->setObserver(&seen);
    }

    bool runUntil(const std::function<bool()>& isDone)
    {
        const auto end = Clock::now() + std::chrono::seconds(30);
        for (loop.runUntilIdle(); !isDone() && Clock::now() < end; loop.runUntilIdle())
        {
            std::this_thread::sleep_for(milliseconds(1));
        }
        return isDone();
    }

    /** Waits for a search's end; how long it took. */
    Clock::duration search(const std::string& id, const std::string& text)
    {
        const auto begin = Clock::now();
        directory->search(id, text);
        EXPECT_EQ(seen.ends.count(id), 0U) << "told before search() returned";
        EXPECT_TRUE(runUntil([&] { return seen.ends.count(id) != 0; })) << id;
        return Clock::now() - begin;
    }

    Names namesFor(const std::string& text)
    {
        const std::string id = "search " + std::to_string(++searches);
        search(id, text);
        Names names;
        for (const auto& entry : seen.found[id])
        {
            names.push_back(entry.at("Surname"));
        }
        return names;
    }

    Host::RealTimeEventLoop loop;
    std::unique_ptr<Testing::LdapServer> server;
    SearchRecorder seen;
    std::unique_ptr<LdapDirectory> directory;
    std::string people, overTls, trusted, log;
    int searches = 0;
};

TEST_F(LdapDirectoryTest, FindsWhatWasTypedWhateverItIs)
{
    serve();
    open(people);
    const auto findsFor = [this](const Names& expected, std::initializer_list<std::string> texts)
    {
        for (const std::string& text : texts)
        {
            EXPECT_EQ(namesFor(text), expected) << text;
        }
    };
    findsFor(EVA, {"MÜLL", " 30 47 "});
    findsFor({"山田 太郎"}, {"田 太"});
    findsFor({"Ast*rix (Gaul) O\\Neil"}, {"*", "(gau", ")", "O\\N"});
    findsFor({}, {"\\2a", "*)(sn=*", "\xC3", "Ev\xFF", "", " \t ", {"e\0v", 3}, std::string(5000, 'e')});
    search("eva", "eva");
    const PhonebookSearchResults::Entry eva = {{"Surname", "Eva Müller"}, {"Firstname", "Eva"},
                                               {"Office", "+49 30 4711"}, {"Office2", "0815"},
                                               {"Mobile", "+49 171 55"},  {"Company", "Übersee"}};
    EXPECT_EQ(seen.found["eva"], std::vector<PhonebookSearchResults::Entry>{eva});
    EXPECT_EQ(namesFor("person").size(), 50U);
}

TEST_F(LdapDirectoryTest, FollowsItsSettingsAndSaysOnceWhatIsWrong)
{
    serve();
    const std::string admin = ", 'bindDn': 'cn=admin,dc=example,dc=com', 'password': ";
    const std::pair<std::string, Names> cases[] = {
        {people + ", 'filter': '(mobile=*{text})', 'attributes': {'Surname': ['fax', 'mobile']}", {"+49 171 55"}},
        {people + ", 'attributes': {'Surname': 'userPassword'}", {"boss  lady"}},
        {people + trusted + ", 'startTls': true", EVA},
        {overTls + trusted, EVA},
        {people + admin + "'secret'", EVA},
        {overTls, {}},
        {people + ", 'startTls': true", {}},
        {people + admin + "'wrong'", {}},
        {people + ", 'filter': '(&(mobile=*{text}*)(!))'", {}},
        {people + ", 'base': 'dc=example,dc=org'", {}},
        {people + ", 'url': 'ldap://127.0.0.1:1'", {}},
        {people + ", 'url': 'ldap://no-such-host.invalid'", {}}};
    for (const auto& [members, names] : cases)
    {
        log.clear();
        open(members);
        EXPECT_EQ(namesFor("171 55"), names) << members;
        EXPECT_EQ(namesFor("171 55"), names) << members;
        directory.reset();
        const auto told = log.find("failed: ");
        EXPECT_EQ(told != std::string::npos, names.empty()) << members << "\n" << log;
        EXPECT_EQ(told, log.rfind("failed: ")) << members << "\n" << log;
    }
}

TEST_F(LdapDirectoryTest, ServerThatHangsHoldsUpNobodyForLong)
{
    serve();
    const std::string quick = ", 'timeoutMs': 400", slow = ", 'timeoutMs': 60000";
    for (const std::string& members : {people, people + trusted + ", 'startTls': true", overTls + trusted})
    {
        server->hang();
        open(members + quick); // which cannot connect, or not log in
        EXPECT_LT(search("new " + members, "eva"), milliseconds(1500));
        open(members + slow);
        directory->search("left " + members, "eva");
        runUntil([end = Clock::now() + milliseconds(200)] { return Clock::now() > end; });
        const auto begin = Clock::now();
        directory.reset();
        EXPECT_LT(Clock::now() - begin, milliseconds(1500)) << members;
        server->goOn();
        open(members + quick);
        EXPECT_EQ(namesFor("eva"), EVA) << members;
        server->hang(); // while a connection is open
        EXPECT_LT(search("open " + members, "eva"), milliseconds(1500));
        server->goOn();
    }
    open(people + slow);
    EXPECT_EQ(namesFor("eva"), EVA);
    server->hang();
    directory->search("old", "eva");
    directory->cancel("old");
    EXPECT_EQ(seen.ends.count("old"), 0U);
    directory->search("next", "eva");
    server->goOn();
    EXPECT_TRUE(runUntil([&] { return seen.ends.count("next") != 0; }));
    EXPECT_EQ(seen.found["next"].size(), 1U);
    EXPECT_EQ(seen.ends["old"], 1);
    EXPECT_EQ(seen.found.count("old"), 0U);
}

TEST_F(LdapDirectoryTest, KeepsWhatCameBeforeTheServerWentAwayInMidAnswer)
{
    serve(true);
    const std::string all = ", 'base': 'ou=crowd,dc=example,dc=com', 'resultLimit': 10000, 'timeoutMs': ";
    open(people + all + "60000");
    search("all", "crowd");
    ASSERT_EQ(seen.found["all"].size(), CROWD);
    EXPECT_EQ(seen.found["all"].front().at("JobFunction"), std::string(1000, 'x'));
    seen.whenFound = [this] { server->hang(); };
    open(overTls + trusted + all + "1000");
    EXPECT_LT(search("hanging", "crowd"), milliseconds(2500));
    directory.reset(); // does not wait for the rest of a message
    server->goOn();
    seen.whenFound = [this] { server->kill(); };
    open(people + all + "60000");
    search("killed", "crowd");
    for (const char* id : {"hanging", "killed"})
    {
        EXPECT_GT(seen.found[id].size(), 0U) << id;
        EXPECT_LT(seen.found[id].size(), CROWD) << id;
    }
    open(people);
    EXPECT_EQ(namesFor("eva"), Names());
    server->start();
    EXPECT_EQ(namesFor("eva"), EVA);
    server->kill(); // the connection that is kept is a dead one now
    server->start();
    EXPECT_EQ(namesFor("eva"), EVA);
}

TEST_F(LdapDirectoryTest, MessageWithoutEndHoldsUpNobodyForLong)
{
    using Tcp = boost::asio::ip::tcp;
    boost::asio::io_context context;
    Tcp::acceptor acceptor(context, {boost::asio::ip::address_v4::loopback(), 0});
    LdapSettings settings;
    settings.url = "ldap://127.0.0.1:" + std::to_string(acceptor.local_endpoint().port());
    settings.filter = "(cn={text})";
    settings.timeout = milliseconds(400);
    directory = std::make_unique<LdapDirectory>(settings, loop);
    directory->setObserver(&seen);
    directory->search("silent", "eva");
    Tcp::socket connection = acceptor.accept();
    boost::asio::write(connection, boost::asio::buffer("\x30\x0C\x02\x01", 4)); // of an answer to the login
    EXPECT_TRUE(runUntil([this] { return seen.ends.count("silent") != 0; }));
    const auto begin = Clock::now();
    directory.reset();
    EXPECT_LT(Clock::now() - begin, milliseconds(1500));
}

TEST_F(LdapDirectoryTest, HasOneEndForEachSearchInAnySequence)
{
    serve();
    open(people);
    std::mt19937 random(4711);
    std::vector<std::string> ids;
    for (int step = 0; step < 400; ++step)
    {
        const auto what = random() % 4;
        if (what < 2)
        {
            ids.push_back(std::to_string(step));
            directory->search(ids.back(), random() % 4 == 0 ? "" : "person " + std::to_string(random() % 40));
        }
        else if (what == 2)
        {
            directory->cancel(std::to_string(step - 1 - static_cast<int>(random() % 5)));
        }
        else
        {
            runUntil([end = Clock::now() + milliseconds(random() % 8)] { return Clock::now() > end; });
        }
    }
    EXPECT_TRUE(runUntil([&] { return seen.ends.size() == ids.size(); }));
    EXPECT_GT(seen.found.size(), 10U);
    EXPECT_LT(seen.found.size(), ids.size());
}

TEST_F(LdapDirectoryTest, ObserverMayLeaveOrDestroyIt)
{
    serve();
    open(people);
    seen.whenFound = [this] { directory->setObserver(nullptr); };
    directory->search("left", "eva");
    EXPECT_TRUE(runUntil([this] { return !seen.found["left"].empty(); }));
    directory->cancel("left");
    loop.runUntilIdle();
    EXPECT_EQ(seen.ends.size(), 0U);
    directory->setObserver(&seen);
    seen.whenEnded = [this] { directory.reset(); };
    directory->search("last", "");
    directory->search("never", "");
    EXPECT_TRUE(runUntil([this] { return !directory; }));
    EXPECT_EQ(seen.ends, (std::map<std::string, int>{{"last", 1}}));
}

TEST(LdapSettings, SaysWhatIsWrong)
{
    const std::string file = testing::TempDir() + "ldap-settings-" + std::to_string(getpid());
    const std::string good = "{'url': 'ldap://x', 'base': 'dc=x', ";
    std::string problem;
    const auto isRefused = [&](const std::string& expected, std::initializer_list<std::string> texts)
    {
        for (const std::string& text : texts)
        {
            std::ofstream(file) << inJson(text);
            EXPECT_FALSE(LdapSettings::read(file, problem)) << text;
            EXPECT_NE(problem.find(inJson(expected)), std::string::npos) << text << "\n" << problem;
        }
    };
    EXPECT_TRUE(LdapSettings::read(LDAP_EXAMPLE, problem)) << problem;
    EXPECT_FALSE(LdapSettings::read("/no/such/file", problem));
    isRefused("is no JSON at line 2", {"{\n'password': 'secret}", "{\n"});
    isRefused("must be a JSON object", {"[]", "1", good + "'attributes': 1}"});
    isRefused("'url' ", {"{}", "{'url': 'http://x'}", "{'url': 'x'}", "{'url': 'ldap://x/dc=y'}", "{'url': 5}"});
    isRefused("'startTls' ", {"{'url': 'ldaps://x', 'startTls': true}", "{'url': 'ldap://x', 'startTls': 1}"});
    isRefused("'base' is no distinguished name", {"{'url': 'ldap://x', 'base': 'x'}"});
    isRefused("bindDn and password go together", {good + "'bindDn': 'cn=x'}", good + "'password': 'x'}"});
    isRefused("'caCertificate' names no file", {good + "'caCertificate': '/'}"});
    isRefused("'filter' must hold {text}", {good + "'filter': '(cn=*)'}"});
    isRefused("must be one filter", {good + "'filter': '(cn={text}'}", good + "'filter': '(cn={text})(x=y)'}"});
    isRefused("from 100 to", {good + "'timeoutMs': 1e99}", good + "'timeoutMs': 99}", good + "'timeoutMs': '5'}"});
    isRefused("from 1 to 10000", {good + "'resultLimit': 0}", good + "'resultLimit': 99999999999999999999}"});
    isRefused("is not known", {good + "'attributes': {'Name': 'cn'}}", good + "'t': 1}"});
    isRefused("'Surname' must be", {good + "'attributes': {'Surname': [1]}}"});
    std::filesystem::remove(file);
}
} // namespace
