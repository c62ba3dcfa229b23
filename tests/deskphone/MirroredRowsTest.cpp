// The wired telephone over random days: what the display was told, and what must hold of the rows at any moment.

#include "Contact.h"
#include "ConversationAPI/AggregatorSwitchIfc.h"
#include "ConversationAPI/Conversation.h"
#include "Telephone.h"
#include "host/Clock.h"
#include "host/SimulatedEventLoop.h"

#include <filesystem>
#include <random>
#include <unistd.h>

namespace
{
using ConversationAPI::ActiveCall;
using ConversationAPI::Conversation;
using Host::JournalCall;

constexpr long MORNING = 1772700000;
constexpr int EVENTS = 80;

class RandomDay
{
  public:
    explicit RandomDay(unsigned seed) : random_(seed), scope_(loop_), telephone_(Deskphone::TelephoneSettings())
    {
        changeContact();
        telephone_.people().add(
            {{"Surname", "Berg"}, {"Firstname", "Anna"}, {"Office", "4711"}, {"Mobile", "0221 4710200"}});
        telephone_.people().add({{"Surname", "Bergmann"}, {"Mobile", "4711"}, {"Private", "040 66969222"}});
        telephone_.people().add({{"Surname", "Vogt"}, {"Email", "vogt@example.com"}});
    }

    void happen()
    {
        loop_.advanceBy(7000);
        const unsigned kind = below(100);
        kind < 45   ? call()
        : kind < 62 ? clearCall()
        : kind < 78 ? addHistory()
        : kind < 88 ? changeWebContact()
                    : somethingElse();
        loop_.runUntilIdle();
    }

    void changeContactsAndHistory()
    {
        loop_.advanceBy(7000);
        const unsigned kind = below(100);
        kind < 40 ? addHistory(true) : kind < 65 ? changeContact() : kind < 90 ? removeContact() : removeEntry();
        loop_.runUntilIdle();
    }

    void reloadHistory() { telephone_.reloadHistory(); }

    /** Who has which calls, under which id. */
    std::set<std::string> told() const
    {
        std::set<std::string> all;
        for (const Conversation* row : telephone_.rows())
        {
            std::string text = row->getConversationId() + " " + row->toString() + " " + row->getNumber();
            for (const auto& item : row->items())
            {
                text += " " + item->getItemId() + " of " + std::to_string(item->timeStampUTC());
            }
            all.insert(text);
        }
        return all;
    }

    void check()
    {
        const auto& list = *telephone_.conversations().getConversations();
        if (telephone_.shownList() != Deskphone::Telephone::NETWORK_LIST)
        {
            EXPECT_EQ(Host::DisplayModel::Rows(list.begin(), list.end()), telephone_.rows());
        }
        std::set<std::string> ids;
        std::map<std::string, int> places;
        std::set<std::string> liveCalls;
        for (const Conversation* row : telephone_.rows())
        {
            EXPECT_TRUE(ids.insert(row->getConversationId()).second) << "two rows have one id";
            EXPECT_TRUE(row->getConversationItemsSize() > 0 || row->getContactSource() != Conversation::NO_CONTACT);
            for (const auto& item : row->items())
            {
                ++places[item->getItemId() + item->conversationItemId() + " of " +
                         std::to_string(item->timeStampUTC()) + " call " + item->getCallId()];
                liveCalls.insert(item->getCallId());
            }
        }
        for (const auto& place : places)
        {
            EXPECT_EQ(place.second, 1) << place.first << " is in several rows, or twice in one";
        }
        for (const auto& live : parties_)
        {
            const bool isShown = telephone_.shownList() == Deskphone::Telephone::LOCAL_LIST;
            EXPECT_EQ(liveCalls.count(live.first), isShown ? 1U : 0U) << live.first << " is in no row";
        }
    }

  private:
    unsigned below(unsigned end) { return static_cast<unsigned>(random_() % end); }

    CallPartyIdentifier party()
    {
        static const std::vector<std::string> numbers{
            "030 23125000", "+49 30 23125000", "0221 4710200", "040 66969222", "4711", "", "+44 20 7946 0018"};
        static const std::vector<std::string> names{"Berg", "Vogt", ""};
        return {"", names[below(3)], numbers[below(7)], CallPartyIdentifier::PhoneNumberIconType(below(5)), "", false};
    }

    /** A call that goes on or a new one; at times the party of one that goes on changes. */
    void call()
    {
        static const std::vector<ActiveCall::activeCallState> states{ActiveCall::CONNECTED,
                                                                     ActiveCall::LOCAL_ON_HOLD,
                                                                     ActiveCall::REMOTE_ON_HOLD,
                                                                     ActiveCall::CONFERENCE,
                                                                     ActiveCall::INCOMING_CALL,
                                                                     ActiveCall::OUTGOING_CALL,
                                                                     ActiveCall::CALL_WAITING,
                                                                     ActiveCall::CLEARING,
                                                                     ActiveCall::CALL_WAITING_IGNORED,
                                                                     ActiveCall::CALL_WAITING_ISOLATED,
                                                                     ActiveCall::ISOLATED,
                                                                     ActiveCall::REPRESENT_HELD_CALL};
        const bool isPickup = below(12) == 0;
        const std::string id = isPickup ? "GPU" : std::to_string(below(4));
        if (parties_.count(id) == 0 || below(8) == 0)
        {
            parties_[id] = party();
        }
        ActiveCall report(&Host::currentTime, id, parties_[id], ActiveCall::NO_CONFERENCE);
        report.setState(isPickup ? ActiveCall::GROUP_PICKUP_INCOMING : states[below(10)]);
        telephone_.callControl().callReported(report);
    }

    void clearCall()
    {
        if (!parties_.empty())
        {
            const std::string id = std::next(parties_.begin(), below(static_cast<unsigned>(parties_.size())))->first;
            parties_.erase(id);
            below(2) == 0 ? telephone_.callControl().callEnded(id) : telephone_.callControl().callCleared(id);
        }
    }

    /** Of the calls that are there, none began in the same second. Plain ones bring nothing but a number. */
    void addHistory(bool isPlain = false)
    {
        const CallPartyIdentifier of = party();
        JournalCall call;
        call.kind = JournalCall::Kind(below(4));
        call.surname = isPlain ? "" : of.getSurname();
        call.info.setRemoteNumber(of.getNumber());
        call.info.setNumberType(NumberType::NT(of.getPhoneNumberType()));
        call.info.setCallTime(Host::localIso8601(loop_.now() - below(3) * below(100000)));
        const bool isOfGroup = !isPlain && call.kind == JournalCall::MISSED && below(4) == 0;
        call.info.setGroupNumber(isOfGroup ? "600" : "");
        entries_.push_back(telephone_.journal().addCall(call));
    }

    void somethingElse()
    {
        static const std::vector<std::string> mailboxes{"030 23125000", "4711", "030 23125999", ""};
        const std::vector<std::function<void()>> all{
            [this] { removeEntry(); },
            [this] { telephone_.reloadHistory(); },
            [this] { telephone_.mailbox().setVoiceMailMessagesCount(static_cast<int>(below(4))); },
            [this] { telephone_.mailbox().setNoVoiceMailMessageWaiting(); },
            [this] { telephone_.setVoiceMailNumber(mailboxes[below(4)]); },
            [this] { deleteRow(); },
            [this] { telephone_.conversations().markAllMissedCallsRead(); },
            [this] { telephone_.conversations().conversationsChanged(); },
            [this] { changeContact(); },
            [this] { removeContact(); },
            [this] { search(); },
            [this] { changeNetworkLog(); },
            [this] { telephone_.networkShowStateChanged(static_cast<int>(3 * below(3))); },
            [this] { changeCloud(); },
            [this] { telephone_.showList(Deskphone::Telephone::ShownList(below(3))); },
        };
        all[below(static_cast<unsigned>(all.size()))]();
    }

    void changeNetworkLog()
    {
        static const std::vector<std::string> numbers{"030 23125000", "4711", "0511 3456789"};
        Host::NetworkCallLogEntry entry;
        entry.kind = Host::NetworkCallLogEntry::Kind(below(3));
        entry.callLogId = "network" + std::to_string(entry.kind) + std::to_string(below(4));
        entry.time = Host::localIso8601(loop_.now() - below(100000));
        entry.number = numbers[below(3)];
        below(4) == 0 ? telephone_.networkLog().remove(entry.kind, entry.callLogId)
                      : telephone_.networkLog().add(entry);
    }

    /** Conversation 0 is a group, the others are with one user each. */
    void changeCloud()
    {
        Host::CloudService& cloud = telephone_.cloud();
        const std::string number = std::to_string(below(3));
        const std::string user = "user" + number;
        cloud.putUser({user, "", below(2) == 0 ? "Berg" : "Vogt", "", "", "", Quorvel::PresenceState::OFFLINE});
        cloud.setPresence(user, Quorvel::PresenceState(below(5)));
        below(4) == 0 ? cloud.logOut() : static_cast<void>(cloud.logIn("user0"));
        cloud.putItem({"item" + std::to_string(below(20)), number, user, loop_.now() - below(3), 0, "", "text", 0, {}});
        if (cloud.conversation(number) == nullptr)
        {
            cloud.putConversation({number, number == "0" ? 1 : 0, "", user, {"user0", user}, false, {}});
            cloud.putItem({"first" + number, number, user, loop_.now(), 0, "", "text", 0, {}});
        }
    }

    void removeEntry()
    {
        if (!entries_.empty())
        {
            telephone_.journal().deleteEntries({entries_[below(static_cast<unsigned>(entries_.size()))]});
        }
    }

    /** Some share names or numbers, and numbers come and go whoever is called. */
    void changeContact()
    {
        static const std::vector<Deskphone::Contact> all{{"1", "Anna", "Berg", "030 23125000", "0221 4710200", "", ""},
                                                         {"2", "", "Vogt", "", "", "040 66969222", "4711"},
                                                         {"3", "Anna", "Berg", "030 23125000", "", "+442079460018", ""},
                                                         {"4", "Bo", "Berg", "", "", "", "4711"}};
        Deskphone::Contact contact = all[below(4)];
        if (below(2) == 0)
        {
            (below(2) == 0 ? contact.work2 : contact.home).clear();
        }
        telephone_.phonebook().write(Deskphone::writeRequest(contact), true);
    }

    /** Found, told, completed by the directory, saved or deleted. */
    void changeWebContact()
    {
        const std::string number = below(2) == 0 ? "040 66969229" : "+44 20 7946 0018";
        WSIItem item;
        item.id = "exchange" + number;
        item.searchId = below(2) == 0 ? "told" : "";
        item.lastName = "Zorn";
        item.workNumber1 = number;
        DirectoryContact hit;
        hit.searchId = "told";
        hit.workNumber1 = number;
        hit.firstName = below(2) == 0 ? "Nina" : "";
        const std::vector<std::function<void()>> all{
            [&] { telephone_.webDirectory().put(item); },          [&] { telephone_.directoryHit(hit); },
            [&] { telephone_.search(below(2) == 0 ? "zo" : ""); }, [&] { saveFound(0); },
            [&] { telephone_.deleteWebContact(item.id); },
        };
        all[below(static_cast<unsigned>(all.size()))]();
    }

    void removeContact() { telephone_.phonebook().deleteContact(std::to_string(1 + below(4))); }

    /** What is found is looked up as a screen does that is drawn anew. */
    void search()
    {
        static const std::vector<std::string> texts{"b", "be", "vo", ""};
        telephone_.search(texts[below(4)]);
        loop_.runUntilIdle();
        loop_.advanceBy(2000);
        telephone_.found();
        if (below(3) == 0)
        {
            saveFound(below(3));
        }
    }

    void saveFound(std::size_t place)
    {
        const auto found = telephone_.found();
        if (place < found.size() && !telephone_.isOfCloud(*found[place].conversation))
        {
            telephone_.saveContact(*found[place].conversation);
        }
    }

    /** Not one with a call, which would go on unseen. */
    void deleteRow()
    {
        const Conversation* row = telephone_.row(1 + below(6));
        const auto isCall = [](const auto& item) { return !item->getCallId().empty(); };
        if (row != nullptr && std::none_of(row->items().begin(), row->items().end(), isCall))
        {
            telephone_.deleteRow(*row);
        }
    }

    std::mt19937 random_;
    Host::SimulatedEventLoop loop_{MORNING};
    const Host::EventLoop::Scope scope_;
    Deskphone::Telephone telephone_;
    std::map<std::string, CallPartyIdentifier> parties_; ///< of the calls that go on
    std::vector<std::string> entries_;                   ///< of the journal, gone ones among them
};

class MirroredRows : public testing::TestWithParam<unsigned>
{
};

TEST_P(MirroredRows, EqualTheListAndHoldEverythingOnce)
{
    for (unsigned seed = GetParam() * 20; seed < (GetParam() + 1) * 20; ++seed)
    {
        RandomDay day(seed);
        for (int event = 0; event < EVENTS && !HasFailure(); ++event)
        {
            SCOPED_TRACE("day " + std::to_string(seed) + ", event " + std::to_string(event));
            day.happen();
            day.check();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(TwentyDays, MirroredRows, testing::Range(0U, 10U));

TEST(TelephoneTest, ContactsThatShareNumbersGroupTheHistoryAsItsReloadDoes)
{
    for (unsigned seed = 0; seed < 40; ++seed)
    {
        RandomDay day(seed);
        for (int event = 0; event < EVENTS && !HasFailure(); ++event)
        {
            SCOPED_TRACE("day " + std::to_string(seed) + ", event " + std::to_string(event));
            day.changeContactsAndHistory();
            const std::set<std::string> before = day.told();
            day.reloadHistory();
            EXPECT_EQ(day.told(), before);
            day.check();
        }
    }
}

/** A display that does something as soon as it is told of a new row. */
struct HastyDisplay : Host::DisplayModel
{
    void newConversation(Conversation*, int) override { react(); }

    std::function<void()> react;
};

TEST(TelephoneTest, ContactMayGoWhileTheDisplayIsToldOfIt)
{
    Host::SimulatedEventLoop loop{MORNING};
    const Host::EventLoop::Scope scope(loop);
    HastyDisplay display;
    Deskphone::Telephone telephone{Deskphone::TelephoneSettings()};
    telephone.conversations().addConversationEventObserver(&display);
    int told = 0;
    display.react = [&] { ++told, telephone.phonebook().deleteContact("1"); };
    telephone.phonebook().write(Deskphone::writeRequest({"1", "Anna", "Berg", "030 23125000", "", "", ""}), true);
    EXPECT_EQ(told, 1);
    EXPECT_TRUE(telephone.rows().empty());
}

TEST(TelephoneTest, ManyPeopleAreFoundEachOnce)
{
    constexpr int PEOPLE = 10'000;
    Host::SimulatedEventLoop loop{MORNING};
    const Host::EventLoop::Scope scope(loop);
    Deskphone::Telephone telephone{Deskphone::TelephoneSettings()};
    for (int i = 0; i < PEOPLE; ++i)
    {
        telephone.people().add({{"Surname", "Poe" + std::to_string(i)}, {"Office", std::to_string(100'000 + i / 2)}});
    }
    for (const char* text : {"p", "po"})
    {
        telephone.search(text);
        loop.advanceBy(2000);
        EXPECT_EQ(telephone.found().size(), static_cast<std::size_t>(PEOPLE)) << text;
    }
    telephone.saveContact(*telephone.found().back().conversation);
    EXPECT_EQ(telephone.rows().at(0)->getLastName(), "Poe9999");
}

Host::JournalCall missedAt(long time)
{
    Host::JournalCall call;
    call.info.setRemoteNumber("030 23125000");
    call.info.setCallTime(Host::localIso8601(time));
    return call;
}

TEST(TelephoneTest, HistoryThatCannotBeReadAtFirstComesIntoTheRows)
{
    namespace fs = std::filesystem;
    const fs::path folder = fs::path(testing::TempDir()) / ("telephone-test-" + std::to_string(getpid()));
    const fs::path journal = Deskphone::Telephone::journalFile(folder);
    fs::create_directories(journal); // in the place of the file
    Host::SimulatedEventLoop loop{MORNING};
    const Host::EventLoop::Scope scope(loop);
    {
        Host::Journal stored(folder / "stored");
        stored.addCall(missedAt(MORNING - 200));
        stored.addCall(missedAt(MORNING - 100));
    }
    Deskphone::Telephone telephone(Deskphone::TelephoneSettings(), folder);
    telephone.journal().addCall(missedAt(MORNING));
    EXPECT_FALSE(telephone.journal().isStored());
    fs::remove(journal);
    fs::rename(folder / "stored", journal);
    loop.advanceBy(31000);
    EXPECT_TRUE(telephone.journal().isStored());
    ASSERT_EQ(telephone.rows().size(), 1U);
    EXPECT_EQ(telephone.rows().front()->getConversationItemsSize(), 3U);
    fs::remove_all(folder);
}
} // namespace
