#include "ConversationAPI/BroadsoftServiceConversationItemSource.h"
#include "aggregation/AggregatorFixture.h"
#include "host/NetworkCallLog.h"
#include "support/Phone.h"

namespace
{
using namespace Aggregation;
using Host::NetworkCallLogEntry;
using Testing::LogCapture;

const std::string START = "{{2026-03-05T09:07:00Z}4711:";
const std::string JANE = START + "Jane#Doe:{abc}:";

std::string describeCall(const ConversationItem& item)
{
    return std::to_string(static_cast<int>(item.getState())) + " " + item.getItemId() + " " +
           item.getParticipantsCopy().front().getName() + " " + std::to_string(item.timeStampUTC());
}

std::string describeContact(const Conversation& contact)
{
    return contact.getFirstName() + "|" + contact.getLastName() + "|" + contact.getNumber() + "|" +
           contact.getWorkNumber2();
}

/** The source at a service in memory, observed by the item aggregator and, for its own list, by a recorder. */
class BroadsoftSourceTest : public testing::Test
{
  protected:
    BroadsoftSourceTest()
    {
        source.addObserver(&observer);
        source.addObserver(&observer);
        world.aggregator.addItemSource(&source);
        service.setObserver([this](const Texts& directories, const Texts& entries)
                            { source.broadsoftCallLogChanged(directories, entries); });
    }
    ~BroadsoftSourceTest() override { world.aggregator.removeItemSource(&source); }

    void add(NetworkCallLogEntry::Kind kind, const std::string& id, const std::string& name)
    {
        service.add({kind, id, "2026-03-05T09:" + id + ":00Z", "4711", name, "", ""});
    }

    Texts shown() const
    {
        Texts texts;
        for (const Conversation* conversation : *source.getConversations())
        {
            texts.push_back(describe(*conversation));
        }
        return texts;
    }

    std::string idAt(unsigned row) const { return source.getConversations()->atIndex(row)->getConversationId(); }

    World world;
    Recorder observer;
    Host::NetworkCallLog service{3};
    BroadsoftServiceConversationItemSource source{&service, &world.items, &world.conversations};
};

TEST_F(BroadsoftSourceTest, ReadsALineAsItsFormatSays)
{
    const std::string jane = " abc Jane Doe 1772701620";
    const std::string unknown = "There is a problem at BSCIS::stringToConversationItem s: " + JANE;
    const std::string big(1 << 20, 'x');
    const struct
    {
        std::string line, item, log;
    } cases[] = {
        {JANE + "Missed:*}}", "4" + jane, ""},
        {JANE + "Missed:}}", "4" + jane, ""},
        {JANE + "Missed}}", "4" + jane, ""},
        {JANE + "Received:12}}", "6" + jane, ""},
        {JANE + "Placed}}\r\n", "5" + jane, ""},
        {JANE + "Personal:*}}", "7 abc Jane Doe 0", ""},
        {"{{whenever}1:%n%s:{a}:Missed:*}}", "4 a %n%s 0", ""},
        {"{{" + big + "}1:" + big + ":{a}:Missed:*}}", "4 a " + big + " 0", ""},
        {JANE, "", "sscanf could not read all entry items. Entry[" + JANE + "] - retVal = 4"},
        {"", "", "Entry[] - retVal = -1"},
        {big, "", "retVal = 0"},
        {"{{t}1::{a}:Missed:*}}", "", "retVal = 2"},
        {"{{t}sip:1:Jane:{a}:Missed:*}}", "", "retVal = 3"},
        {JANE + '\0' + "Missed:*}}", "", "retVal = 4"},
        {JANE + "Forwarded}}", "", unknown + "Forwarded}}, time:2026-03-05T09:07:00Z, number:4711, name:Jane Doe, "},
        {JANE + "Missed}:*}}", "", "callLogId:abc, type:Missed}"},
    };
    for (const auto& one : cases)
    {
        SCOPED_TRACE(one.line.substr(0, 60));
        const LogCapture log(2);
        const std::unique_ptr<ConversationItem> item(source.stringToConversationItem(one.line, false));
        EXPECT_TRUE((item ? describeCall(*item) : "") == one.item);
        const std::unique_ptr<Conversation> conversation(source.stringToConversation(one.line));
        EXPECT_EQ(conversation != nullptr, item != nullptr);
        const std::size_t complaints = log.count("sscanf could not read") + log.count("There is a problem");
        EXPECT_EQ(complaints, item ? 0u : 2u);
        EXPECT_GE(log.count(one.log), complaints);
    }
}

TEST_F(BroadsoftSourceTest, TellsNamesAndSecondNumbersOfTwoDirectoriesApart)
{
    const struct
    {
        std::string rest, contact;
    } cases[] = {
        {"Jane#Doe:{a}:GroupDirectory:*}}", "Jane|Doe|4711|"},
        {"Jane#Doe#Lee:{a}:EnterpriseDirectory:4712}}", "Jane|Doe#Lee|4711|4712"},
        {"Desk:{a}:GroupDirectory}}", "Desk||4711|"},
        {"Jane#Doe:{a}:Personal:4712}}", "Jane Doe||4711|"},
        {"Jane#Doe:{a}:Missed:4712}}", "Jane Doe||4711|"},
    };
    for (const auto& one : cases)
    {
        const std::unique_ptr<Conversation> contact(source.stringToConversation(START + one.rest));
        EXPECT_EQ(describeContact(*contact), one.contact) << one.rest;
    }
    const std::unique_ptr<ConversationItem> first(source.stringToConversationItem(JANE + "Missed}}", true));
    const std::unique_ptr<ConversationItem> none(source.stringToConversationItem(JANE + "Missed}}", false));
    const std::unique_ptr<Conversation> second(source.stringToConversation(JANE + "Personal}}"));
    EXPECT_EQ(none->conversationId(), "");
    EXPECT_FALSE(none->isDeleteOnConversationList());
    const int number = std::stoi(first->conversationId().substr(std::string("BSDirItem-").size()));
    EXPECT_EQ(second->getConversationId(), "BSDirItem-" + std::to_string(number + 1));
}

TEST_F(BroadsoftSourceTest, ShowsWhatTheFilterNames)
{
    const auto filter = [this](const char* text)
    {
        source.bwCallLogFilterChanged(text);
        return shown();
    };
    add(NetworkCallLogEntry::MISSED, "01", "Cleo");
    add(NetworkCallLogEntry::PLACED, "02", "Bea");
    add(NetworkCallLogEntry::RECEIVED, "03", "Ann");
    EXPECT_EQ(observer.take(), (Texts{"changed", "changed", "changed"}));
    EXPECT_EQ(filter("CvuDispIF.Missed"), Texts{"Cleo: 01"});
    EXPECT_EQ(filter("CvuDispIF.Dialled"), Texts{"Bea: 02"});
    EXPECT_EQ(filter("CvuDispIF.Received"), Texts{"Ann: 03"});
    add(NetworkCallLogEntry::RECEIVED, "04", "Dan");
    EXPECT_EQ(shown(), (Texts{"Ann: 03", "Dan: 04"})) << "a change keeps the filter";
    source.sortBroadsoftCallLogs(0);
    EXPECT_EQ(shown(), (Texts{"Dan: 04", "Ann: 03"}));
    source.sortBroadsoftCallLogs(1);
    source.sortBroadsoftCallLogs(2);
    EXPECT_EQ(shown(), (Texts{"Ann: 03", "Dan: 04"}));
    source.showStateChanged(3);
    EXPECT_EQ(shown().size(), 4u) << "another state drops the filter";
    world.aggregator.conversationItemsChanged();
    EXPECT_TRUE(world.rows().empty()) << "no items for it";
    source.showStateChanged(6);
    EXPECT_EQ(filter("CvuDispIF.Missed").size(), 4u) << "left as it was";
    add(NetworkCallLogEntry::MISSED, "05", "Eve");
    EXPECT_TRUE(shown().empty()) << "what was shown is gone";
    EXPECT_EQ(world.rows(), Texts{"Eve: 05 04 03 02 01"});
    EXPECT_EQ(observer.take(), Texts(8, "changed"));
    source.showStateChanged(0);
    EXPECT_EQ(shown().size(), 5u);
}

TEST_F(BroadsoftSourceTest, SkipsBadLinesAmongThousands)
{
    const LogCapture log(6);
    Texts lines;
    for (int i = 0; i < 3000; ++i)
    {
        const std::string line = "{{2026-03-05T09:07:00Z}" + std::to_string(i) + ":Jane:{c}:Placed}}";
        lines.push_back(i % 3 == 1 ? line.substr(0, 30) : line);
    }
    source.broadsoftCallLogChanged({"2:7", "x", "", "5", "99999999999999999999:1"}, lines);
    EXPECT_EQ(log.count("broadsoftCallLogChanged updatedDirectories.size = 5, entries.size = 3000"), 1u);
    EXPECT_EQ(log.count("broadsoftCallLogChanged() directory 2 has 7 entries"), 1u);
    EXPECT_EQ(log.count("broadsoftCallLogChanged() directory"), 1u);
    EXPECT_EQ(shown().size(), 2000u);
    EXPECT_EQ(world.rows().size(), 2000u);
}

TEST_F(BroadsoftSourceTest, DeletesThroughTheService)
{
    const LogCapture log(5);
    for (const auto kind : {NetworkCallLogEntry::PLACED, NetworkCallLogEntry::MISSED, NetworkCallLogEntry::RECEIVED,
                            NetworkCallLogEntry::GROUP_DIRECTORY})
    {
        add(kind, "01", "Kind" + std::to_string(kind));
    }
    const std::string missed = idAt(1);
    source.bwCallLogFilterChanged("CvuDispIF.Received");
    source.deleteConversation(missed);
    source.deleteConversation(idAt(0));
    source.showStateChanged(0);
    source.deleteConversation(missed);
    EXPECT_EQ(log.count("deleteConversation unable to find conversation id = " + missed), 1u);
    EXPECT_EQ(shown(), (Texts{"Kind0: 01", "Kind4: 01"}));
    source.deleteConversation(idAt(1));
    EXPECT_EQ(log.count("deleteConversation unexpected Call log entry"), 1u);
    source.deleteConversation(idAt(0));
    EXPECT_EQ(shown(), Texts{"Kind4: 01"});
    EXPECT_EQ(log.count("deleteConversation callLogId = 01"), 4u);
    source.getConversations()->atIndex(0)->removeAndDeleteFrontItem();
    source.deleteConversation(idAt(0));
    EXPECT_EQ(log.count("deleteConversation no initial item"), 1u);
    BroadsoftServiceConversationItemSource alone(nullptr, &world.items, &world.conversations);
    alone.init();
    alone.broadsoftCallLogChanged({}, {JANE + "Missed}}"});
    alone.deleteConversation(alone.getInUseConversationIds().front());
    EXPECT_EQ(log.count("m_pService is NULL"), 1u);
}

TEST_F(BroadsoftSourceTest, ObserversMayChangeTheLogWhileTheyAreTold)
{
    observer.reaction = [this](Conversation*)
    {
        source.showStateChanged(0);
        service.remove(NetworkCallLogEntry::MISSED, "01");
        source.removeObserver(&observer);
    };
    add(NetworkCallLogEntry::MISSED, "01", "Ann");
    EXPECT_EQ(observer.take(), (Texts{"changed", "changed", "changed"}));
    EXPECT_TRUE(shown().empty() && world.rows().empty());
}

TEST_F(BroadsoftSourceTest, TheHistoryShowsTheServicesCallsFromTheSubscriptionOn)
{
    service.setObserver(nullptr);
    for (const char* minute : {"01", "02", "03", "04", "03"})
    {
        add(NetworkCallLogEntry::MISSED, minute, "Ann");
    }
    EXPECT_TRUE(world.rows().empty() && shown().empty());
    source.init();
    EXPECT_EQ(world.rows(), Texts{"Ann: 04 03 02"}) << "the service has forgotten the oldest";
    EXPECT_EQ(world.observer.take(), (Texts{"ready", "changed"}));
    EXPECT_EQ(observer.take(), (Texts{"ready", "changed"}));
    EXPECT_EQ(shown(), (Texts{"Ann: 02", "Ann: 03", "Ann: 04"}));
}
} // namespace
