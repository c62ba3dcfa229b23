#include "ConversationAPI/ConversationItemAggregator.h"
#include "ConversationAPI/JournalServiceConversationItemSource.h"
#include "ConversationAPI/JournalServiceUtils.h"
#include "support/Phone.h"

namespace
{
using namespace ConversationAPI;
using Texts = std::vector<std::string>;

constexpr auto MISSED = &MissedCallItem::setMissedCallInfoList;
constexpr auto RECEIVED = &ReceivedCallItem::setReceivedCallInfoList;
constexpr auto DIALLED = &DialledCallItem::setDialledCallInfoList;
constexpr auto FORWARDED = &ForwardedCallItem::setForwardedCallInfoList;

/** Calls of one morning at these minutes past ten. The second one, if any, was redirected. */
template <typename Record, typename Call>
Record entry(void (Record::*setCalls)(const std::vector<Call>&), const std::string& id, const std::string& number,
             const Texts& minutes)
{
    std::vector<Call> calls(minutes.size());
    for (std::size_t i = 0; i < calls.size(); ++i)
    {
        calls[i].setRemoteNumber(number);
        calls[i].setCallTime("2035-04-01T10:" + minutes[i] + ":30Z");
        calls[i].setDuration("2:30");
        calls[i].setRedirectingNumber(i == 1 ? "77" : "");
    }
    Record made;
    made.setEntryId(id);
    (made.*setCalls)(calls);
    return made;
}

/** A journal in memory. */
struct Journal : JournalServiceIfc
{
    template <typename Record>
    bool one(const std::string& id, Record& found)
    {
        const auto& kind = std::get<std::deque<Record>>(entries);
        const auto at = std::find_if(kind.begin(), kind.end(), [&](const auto& e) { return e.getEntryId() == id; });
        asked.push_back(id);
        return at != kind.end() && (found = *at, true);
    }
    void getCalls(std::deque<MissedCallItem>& found) override { found = std::get<0>(entries); }
    void getCalls(std::deque<ReceivedCallItem>& found) override { found = std::get<1>(entries); }
    void getCalls(std::deque<DialledCallItem>& found) override { found = std::get<2>(entries); }
    void getCalls(std::deque<ForwardedCallItem>& found) override { found = std::get<3>(entries); }
    bool getCall(const std::string& id, MissedCallItem& found) override { return one(id, found); }
    bool getCall(const std::string& id, ReceivedCallItem& found) override { return one(id, found); }
    bool getCall(const std::string& id, DialledCallItem& found) override { return one(id, found); }
    bool getCall(const std::string& id, ForwardedCallItem& found) override { return one(id, found); }
    void deleteAllEntries() override { entries = {}; }
    void deleteEntries(const std::set<std::string>& ids) override { asked.assign(ids.begin(), ids.end()); }
    bool ageMissedCalls(const std::set<std::string>& ids) override { return ids.size() == 2; }
    void ageMissedCall(const std::string&) override {}

    std::tuple<std::deque<MissedCallItem>, std::deque<ReceivedCallItem>, std::deque<DialledCallItem>,
               std::deque<ForwardedCallItem>>
        entries;
    Texts asked;
};

/** "a 4 @5": entry a, state 4, five minutes past ten, then the lengths; "<3 77" redirected it. */
std::string describe(const ConversationItem& item)
{
    const CallPartyIdentifier* by = item.getForwardedCallParty();
    const std::string redirected = by ? by->getNumber() : "";
    return item.getItemId() + " " + std::to_string(static_cast<int>(item.getState())) + " @" +
           std::to_string((item.timeStampUTC() - 2059034400) / 60) + item.getItemText() + item.getHistoryDuration() +
           (redirected.empty() ? "" : " <" + std::to_string(item.getForwardInfo()) + " " + redirected);
}

struct JournalSource : testing::Test, ConversationItemSourceObserverIfc
{
    JournalSource()
    {
        phone.items.setVoiceMailNumber("900");
        source.setObserver(this);
        source.setJournalServiceSubscribed(true);
    }
    void conversationItemsChanged() override { told.push_back("rebuild"); }
    void conversationItemChanged(ConversationItem*) override {}
    bool removeActiveConversationItemForCall(const std::string&) override { return false; }
    void sourceSubscribed() override { told.push_back("subscribed"); }
    void newConversationItem(ConversationItem* item) override
    {
        told.push_back(describe(*std::unique_ptr<ConversationItem>(item)));
        std::exchange(whenTold, [] {})();
    }
    Texts take() { return std::exchange(told, {}); }
    Texts all()
    {
        told.clear();
        source.notifyObserversForNewConversationItems(source.getConversationItems());
        return take();
    }

    Testing::Phone phone;
    Journal journal;
    JournalServiceConversationItemSource source{&journal, &phone.items, &Testing::digitAnalysis()};
    Texts told;
    std::function<void()> whenTold = [] {};
};

TEST(JournalDurations, AreShownWithinTheirBounds)
{
    const Texts of = {"5:3",    "125:7", "99:59", "2:29", "0:31", "0:29", "5999:59",
                      "6000:0", "1:60",  "0:0",   "-1:5", "5:-1", "12",   ""};
    const Texts shown = {"(05:03)5", "(2:05:07)125", "(1:39:59)100",  "(02:29)2",
                         "(00:31)1", "(00:29)0",     "(99:59:59)6000"};
    for (std::size_t i = 0; i < of.size(); ++i)
    {
        EXPECT_EQ(JournalServiceUtils::createDurationStr(of[i]) + JournalServiceUtils::createHistoryDurationStr(of[i]),
                  i < shown.size() ? shown[i] : "")
            << of[i];
    }
}

TEST_F(JournalSource, TellsTheWholeJournalKindByKindWhileItIsSubscribed)
{
    journal.entries = {{entry(MISSED, "m", "11", {"19", "18", "17"})},
                       {entry(RECEIVED, "r", "13", {"16", "15"})},
                       {entry(DIALLED, "d", "14", {"12", "11"}), entry(DIALLED, "e", "14", {})},
                       {entry(FORWARDED, "f", "12", {"14", "13"})}};
    EXPECT_EQ(all(), (Texts{"d 5 @12(02:30)3", "d 5 @11(02:30)3 <1 77", "r 6 @16(02:30)3", "r 6 @15(02:30)3 <3 77",
                            "m 4 @19", "m 4 @18 <3 77", "m 4 @17", "f 14 @14(02:30)", "f 14 @13(02:30) <2 77"}));
    source.setJournalServiceSubscribed(false);
    EXPECT_EQ(all(), Texts{});
    JournalServiceConversationItemSource unwired(nullptr, nullptr, nullptr);
    unwired.setJournalServiceSubscribed(true);
    unwired.reloadCalls({"m"});
    EXPECT_TRUE(unwired.getConversationItems().empty() && !unwired.ageAllMissedCalls({"m", "n"}));
    EXPECT_TRUE(source.ageAllMissedCalls({"b", "a", "b"}));
    source.deleteCalls({"b", "a", "b"});
    EXPECT_EQ(journal.asked, (Texts{"a", "b"}));
}

TEST_F(JournalSource, GivesAMissedCallItsGroupAndItsNumberThePlaceOfItsType)
{
    for (int type = 0; type < 6; ++type)
    {
        MissedCallItem::MissedCallInfo call;
        call.setRemoteNumber("11");
        call.setNumberType(static_cast<NumberType::NT>(type));
        call.setGroupName("Sales");
        call.setGroupNumber(type == 0 ? "" : "50");
        call.setAnswered(true);
        MissedCallItem record;
        record.setMissedCallInfoList({call});
        record.setViewed(type == 1);
        const std::unique_ptr<ConversationItem> item(source.createConversationItemFromCallItem(record, 0));
        EXPECT_EQ(describe(*item).substr(0, 4) + item->getGroupName() + item->getGroupNumber() + item->lastNumber(),
                  type == 0 ? " 24 11" : " 25 Sales5011")
            << type;
        EXPECT_EQ(item->getViewed(), type == 1);
        EXPECT_EQ(static_cast<MissedCallConversationItem&>(*item).getItemSource(), &source);
        EXPECT_EQ(source.createConversationItemFromCallItem(record, 1), nullptr);
    }
}

TEST_F(JournalSource, ReloadsEachEntryOnceWhateverItsObserverDoes)
{
    const Testing::LogCapture log(5);
    journal.entries = {{entry(MISSED, "a", "11", {"19", "18"})}, {entry(RECEIVED, "b", "13", {"16"})}, {}, {}};
    source.reloadCalls({"a", "", "a"});
    EXPECT_EQ(log.count("reloadCalls() - size of entrySet : [2]"), 1U);
    EXPECT_EQ(take(), (Texts{"a 4 @19", "a 4 @18 <3 77"}));
    EXPECT_EQ(journal.asked, Texts(4, "a"));
    whenTold = [this] { (source.deleteAllCalls(), source.notifyObserver()); };
    source.reloadCalls({"b", "a"});
    EXPECT_EQ(take(), (Texts{"a 4 @19", "rebuild"})) << "nothing of a journal that is gone";
    journal.entries = {{entry(MISSED, "a", "11", {"19", "18"})}, {}, {}, {}};
    whenTold = [this] { source.clearObserver(); };
    source.reloadCalls({"a"});
    EXPECT_EQ(take(), Texts{"a 4 @19"});
}

TEST_F(JournalSource, TellsTheNewestCallOfAnEntryThatWasAddedOrChanged)
{
    using Action = JournalServiceObserverIfc::ActionType;
    const Testing::LogCapture log(2);
    source.missedCallsUpdate(entry(MISSED, "m", "11", {"19", "18"}), "m", Action::ADDED);
    source.receivedCallsUpdate(entry(RECEIVED, "r", "11", {"17"}), "r", Action::UPDATED);
    source.dialledCallsUpdate(entry(DIALLED, "d", "900", {"16"}), "d", Action::ADDED);
    source.forwardedCallsUpdate(entry(FORWARDED, "f", "11", {"15"}), "f", Action::UPDATED);
    EXPECT_EQ(take(), (Texts{"m 4 @19", "r 6 @17(02:30)3", "d 20 @16", "f 14 @15(02:30)"}));
    source.missedCallsUpdate(entry(MISSED, "m", "11", {"19"}), "m", Action::DELETED);
    source.missedCallsUpdate(entry(MISSED, "m", "11", {}), "m", Action::ADDED);
    source.clearObserver();
    source.missedCallsUpdate(entry(MISSED, "m", "11", {"19"}), "m", Action::ADDED);
    source.setVoiceMailMessagesCount(3);
    EXPECT_EQ(take(), Texts{});
    EXPECT_EQ(log.count("entry 'm', which has no calls"), 1U);
}

TEST_F(JournalSource, TheMailboxHasOneRowThatStandsAtItsLatestCall)
{
    source.setVoiceMailMessagesCount(3);
    EXPECT_EQ(all().size(), 1U) << "the mailbox without calls";
    journal.entries = {{entry(MISSED, "m", "900", {"19", "18"})}, {}, {entry(DIALLED, "d", "900", {"17"})}, {}};
    EXPECT_EQ(all(), (Texts{"d 20 @17", "m 20 @19", "m 20 @18"}));
    ConversationItemAggregator rows(&phone.conversations);
    rows.addItemSource(&source);
    for (int i = 0; i < 2; ++i)
    {
        ASSERT_EQ(rows.getConversations()->size(), 1U);
        EXPECT_EQ(describe(*rows.getConversations()->atIndex(0)->items().front()), "m 20 @19");
        EXPECT_EQ(rows.getConversations()->atIndex(0)->numberOfNewEvents(), 3);
        source.reloadCalls({"d", "m"});
    }
    source.clearObserver();
}
} // namespace
