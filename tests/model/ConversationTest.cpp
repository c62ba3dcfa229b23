#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/StaticConversationIDGenerator.h"
#include "support/Phone.h"

namespace
{
using namespace ConversationAPI;
using Testing::Items;
using Testing::LogCapture;
using Testing::timesOf;
using Flags = std::vector<bool>;
using Times = std::vector<long>;
using Texts = std::vector<std::string>;

/** Writes down what a conversation tells a list. */
class Listener : public ConversationModificationObserverIfc
{
  public:
    void conversationNumberUpdated(numberUpdateReason reason, Conversation*, std::string first,
                                   std::string second) override
    {
        told.push_back(std::string(numberUpdateReasonToString(reason)) + " " + first + " " + second);
    }
    void conversationRegistered(Conversation*) override { told.push_back("registered"); }
    void conversationUnregistered(Conversation*) override { told.push_back("unregistered"); }
    void conversationModified(const std::string&) override { ++modified; }
    void conversationKeysChanged(Conversation*) override {}

    Texts takeTold() { return std::exchange(told, {}); }

    Texts told;
    int modified = 0;
};

class ConversationTest : public testing::Test
{
  protected:
    Testing::Phone phone;
};

TEST_F(ConversationTest, TheEleventhItemOfTheHistoryPushesTheOldestOut)
{
    const auto conversation = phone.conversation({});
    for (long time = 1; time <= 10; ++time)
    {
        conversation->append(phone.missed(time * 10, "11", "", "", "e" + std::to_string(time)));
    }
    conversation->append(phone.missed(55, "11", "", "", "late"));
    EXPECT_EQ(timesOf(*conversation), (Times{100, 90, 80, 70, 60, 55, 50, 40, 30, 20}));
    conversation->append(phone.missed(5, "11", "", "", "oldest"));
    EXPECT_EQ(conversation->getConversationItemsSize(), 10U);
    EXPECT_EQ(conversation->getJournalServiceEntries(),
              (Texts{"e1", "e2", "e3", "e4", "e5", "e6", "e7", "e8", "e9", "e10", "late", "oldest"}));
    conversation->append(phone.live("1", ActiveCall::CONNECTED, 200, "11"));
    conversation->append(phone.missed(15, "11"));
    EXPECT_EQ(conversation->getConversationItemsSize(), 12U) << "a live call keeps all";
    conversation->removeItem("1");
    conversation->append(phone.missed(14, "11")); // older than all that it has kept
    EXPECT_EQ(timesOf(*conversation), (Times{100, 90, 80, 70, 60, 55, 50, 40, 30, 20}));
}

TEST_F(ConversationTest, OnlyLiveAndRepresentedCallsKeepMoreThanTenItems)
{
    const std::map<int, std::size_t> kept = {{ActiveCall::REPRESENT_HELD_CALL, 12},
                                             {ActiveCall::GROUP_PICKUP_INCOMING, 12},
                                             {ActiveCall::CALL_WAITING_IGNORED, 10},
                                             {ActiveCall::REMOTE_CALL, 10}};
    for (const auto& [state, count] : kept)
    {
        const auto conversation =
            phone.conversation({phone.live("1", static_cast<ActiveCall::activeCallState>(state), 1000, "11")});
        for (long time = 1; time <= 11; ++time)
        {
            conversation->append(phone.items.getForwardedCallConversationItem(
                "1970-01-01T00:00:" + std::to_string(10 + time), "11", "", ""));
        }
        EXPECT_EQ(conversation->getConversationItemsSize(), count) << state;
    }
}

TEST_F(ConversationTest, AnEquivalentItemIsReplaced)
{
    const auto conversation = phone.conversation({phone.missed(1, "11"), phone.missed(2, "11")});
    ConversationItem* newer = phone.items.getReceivedCallConversationItem(1, "11", "", "");
    EXPECT_TRUE(conversation->equivalentItemAlreadyAddedToThisConversation(*newer));
    conversation->append(newer);
    EXPECT_EQ(conversation->getConversationItems().back(), newer);
    EXPECT_EQ(conversation->getConversationItemsSize(), 2U);
    conversation->append(phone.live("1", ActiveCall::CONNECTED, 5, "11"));
    conversation->append(phone.live("1", ActiveCall::LOCAL_ON_HOLD, 9, "11"));
    EXPECT_EQ(conversation->getConversationItemsSize(), 3U);
    EXPECT_TRUE(conversation->isLocallyHeld());
}

TEST_F(ConversationTest, RemoteCallsThatEndedAreNotShownAsStarted)
{
    Listener listener;
    const auto remote = [this](long time) { return phone.live("9", ActiveCall::REMOTE_CALL, time, "11"); };
    const auto conversation = phone.conversation({remote(10)});
    conversation->addObserver(&listener);
    conversation->append(phone.missed(10, "11")); // not later: both stay
    EXPECT_EQ(conversation->getConversationItemsSize(), 2U);
    conversation->append(phone.missed(20, "11"));
    EXPECT_EQ(timesOf(*conversation), (Times{20, 10}));
    EXPECT_FALSE(conversation->initialItem()->isStartedRemoteCall());
    const int before = listener.modified;
    conversation->append(remote(15));
    EXPECT_EQ(conversation->getConversationItemsSize(), 2U);
    EXPECT_GT(listener.modified, before) << "told of, though deleted on arrival";
    conversation->append(remote(25));
    EXPECT_EQ(timesOf(*conversation), (Times{25, 20, 10}));
}

TEST_F(ConversationTest, NameAndNumberComeFromTheNewestItem)
{
    const auto conversation = phone.conversation({phone.missed(10, "030 1234567", "Ann", "Lee")});
    EXPECT_EQ(conversation->getNumber(), "+49301234567");
    conversation->append(phone.missed(5, "12", "Bob", "Old"));
    EXPECT_EQ(conversation->getContactName() + conversation->getNumber(), "Ann Lee+49301234567");
    conversation->append(phone.missed(10, "13", "", "Fox"));
    EXPECT_EQ(conversation->getContactName() + conversation->getNumber(), "Fox13");
    conversation->append(phone.missed(20, "14"));
    EXPECT_EQ(conversation->getContactName() + conversation->getNumber(), "Fox14");
    conversation->setContactSource(Conversation::DIRECTORY_CONTACT);
    conversation->append(phone.missed(30, "15", "Cid", "New"));
    EXPECT_EQ(conversation->getContactName() + conversation->getNumber(), "Fox14");
    EXPECT_EQ(conversation->initialItem()->conversationId(), conversation->getConversationId());
}

TEST_F(ConversationTest, APartysNumbersFillFreePlacesOnly)
{
    Listener listener;
    const auto conversation = phone.conversation({});
    conversation->addObserver(&listener);
    const auto append =
        [&](long time, const std::array<std::string, 4>& numbers, CallPartyIdentifier::PhoneNumberIconType type)
    {
        ConversationItem* item = phone.missed(time, "11");
        item->setNumberType(type);
        item->setPhoneNumbers(numbers[0], numbers[1], numbers[2], numbers[3]);
        conversation->append(item);
        return conversation->getConversationNumbers();
    };
    EXPECT_EQ(append(1, {}, CallPartyIdentifier::NO_ICON), (Texts{"", "", "", ""}));
    EXPECT_EQ(append(2, {}, CallPartyIdentifier::MOBILE), (Texts{"", "", "11", ""}));
    EXPECT_EQ(append(3, {}, CallPartyIdentifier::HOME), (Texts{"", "", "11", ""})) << "held already";
    EXPECT_EQ(append(4, {"21", "11", "23", "21"}, CallPartyIdentifier::HOME), (Texts{"21", "", "11", ""}));
    EXPECT_EQ(append(5, {"31", "32", "", ""}, CallPartyIdentifier::HOME), (Texts{"21", "32", "11", ""}));
    EXPECT_EQ(listener.told, (Texts{"registered", "ADDED 11 ", "ADDED 21 ", "ADDED 32 "}));
}

TEST_F(ConversationTest, ChangedNumbersAreToldSlotBySlot)
{
    Listener listener;
    const auto conversation = phone.contact("Lee", "11", "12");
    conversation->addObserver(&listener);
    listener.takeTold();
    conversation->updateContactNumber(CallPartyIdentifier::WORK_1, "030 1234567"); // the main number's type
    EXPECT_EQ(conversation->getNumber(), "+49301234567");
    EXPECT_EQ(listener.takeTold(), (Texts{"UPDATED +49301234567 11"}));
    conversation->updateContactNumber(CallPartyIdentifier::HOME, "13");
    conversation->updateContactNumber(CallPartyIdentifier::NO_ICON, "14");
    EXPECT_EQ(listener.takeTold(), (Texts{"ADDED 13 "}));
    EXPECT_EQ(conversation->getNumber(), "+49301234567");
    conversation->setPhoneNumbers("", "12", "13", "13", "11", CallPartyIdentifier::NO_ICON);
    EXPECT_EQ(listener.takeTold(), (Texts{"DELETED  +49301234567", "ADDED 12 ", "UPDATED 13 12"}));
    const LogCapture log(6);
    conversation->conversationNumbersChanged({"", "12", "13", "13", "99"});
    EXPECT_EQ(log.count("conversationNumbersChanged") * 10 + log.count("No type is found for the number 99 at 4"), 11U);
    const std::unique_ptr<ConversationItem> item(phone.missed(1, "13"));
    EXPECT_EQ(conversation->getMatchingNumberType(*item), CallPartyIdentifier::MOBILE);
    conversation->saveMobileNumber("");
    EXPECT_EQ(conversation->getMatchingNumberType(*item), CallPartyIdentifier::HOME);
    EXPECT_TRUE(conversation->hasAnyNumberMatching("11"));
    EXPECT_FALSE(conversation->hasAnyNumberMatching(""));
}

TEST_F(ConversationTest, Identifiers)
{
    const LogCapture log(6);
    for (const auto& [id, shortId] : std::map<std::string, std::string>{{"1234567", ""}, {"12345678", "2345678"}})
    {
        StaticConversationIDGenerator fixed(id);
        const std::unique_ptr<Conversation> conversation(phone.conversations.createConversation(fixed));
        EXPECT_EQ(conversation->getConversationId(), "");
        EXPECT_FALSE(conversation->isSameConversationAs(Testing::ItemInState(0, 0)));
        conversation->append(phone.missed(1, "11"));
        EXPECT_EQ(conversation->getConversationId(), id);
        EXPECT_EQ(conversation->getShortConversationId(), shortId);
        EXPECT_EQ(conversation->initialItem()->conversationId(), id);
        conversation->setPhantom(true);
        EXPECT_EQ(conversation->getConversationId(), "PhantomConversation");
        conversation->append(phone.missed(2, "11"));
        EXPECT_EQ(conversation->initialItem()->conversationId(), id);
    }
    EXPECT_EQ(log.count("id=2345678"), 1U);
}

TEST_F(ConversationTest, AContactsPlaceholderFollowsTheContact)
{
    const auto contact = phone.contact("Lee", "11", "12");
    contact->setExchangeContactId("x");
    contact->saveHomeNumber("13");
    const ConversationItem& dummy = *contact->initialItem();
    EXPECT_EQ(dummy.toString(), "last: Lee comp:11 w1:11 w2: m:12 h:13");
    EXPECT_EQ(dummy.exchangeContactId() + "/" + dummy.conversationId(), "x/");
    EXPECT_EQ(contact->getConversationId().size(), 36U);
    EXPECT_EQ(contact->getConversationItemsSize(), 0U);
}

TEST_F(ConversationTest, ItemsAreReplacedAndRemovedByTheirIds)
{
    const auto withId = [this](long time, const char* id)
    {
        ConversationItem* item = phone.missed(time, "11");
        item->setConversationItemId(id);
        return item;
    };
    const auto conversation = phone.conversation({withId(1, "a"), withId(2, "b"), withId(3, "")});
    conversation->updateItem(withId(9, "a"));
    EXPECT_EQ(timesOf(*conversation), (Times{9, 3, 2}));
    conversation->updateItem(withId(7, ""));
    conversation->updateItem(nullptr);
    conversation->append(nullptr);
    conversation->removeItem("");
    EXPECT_EQ(timesOf(*conversation), (Times{9, 7, 3, 2}));
    conversation->updateInitialItem(phone.live("1", ActiveCall::INCOMING_CALL, 4, "11", "Ring"));
    conversation->updateInitialItem(phone.live("1", ActiveCall::CONNECTED, 6, "12", "Lee"));
    EXPECT_EQ(timesOf(*conversation), (Times{6, 9, 7, 3, 2}));
    conversation->removeItem("b");
    conversation->removeItem("1");
    EXPECT_EQ(timesOf(*conversation), (Times{9, 7, 3}));
    ConversationItem* again = withId(9, "a");
    again->setEntryId("journal-entry-9");
    conversation->updateInitialItem(again);
    EXPECT_EQ(timesOf(*conversation), (Times{9, 7, 3}));
    EXPECT_EQ(conversation->getJournalServiceEntries(), (Texts{"", "journal-entry-9"}));
    ConversationItem* kept = conversation->getConversationItems()[1];
    conversation->setConversationItems({phone.missed(8, "11"), kept, nullptr, kept});
    EXPECT_EQ(timesOf(*conversation), (Times{8, 7}));
    conversation->setConversationItems({});
    conversation->removeAndDeleteFrontItem();
    EXPECT_EQ(conversation->initialItem(), nullptr);
    EXPECT_EQ(conversation->timeStampUTC() + static_cast<long>(conversation->getState()), 0);
}

TEST_F(ConversationTest, ACloneIsIndependent)
{
    Listener listener;
    const LogCapture log(6);
    const auto conversation = phone.contact("Lee", "11", "12");
    conversation->addObserver(&listener);
    conversation->append(phone.missed(1, "11", "", "", "the-journal-entry-1"));
    const std::unique_ptr<Conversation> copy(conversation->clone());
    listener.takeTold();
    copy->saveHomeNumber("13");
    copy->append(phone.missed(2, "11"));
    copy->updateName("", "Fox");
    copy->setGroupName("g");
    EXPECT_TRUE(listener.told.empty());
    EXPECT_EQ(conversation->getContactName() + conversation->getHomeNumber(), "Lee");
    EXPECT_EQ(timesOf(*conversation).size() * 10 + timesOf(*copy).size(), 12U);
    EXPECT_EQ(copy->getConversationId(), conversation->getConversationId());
    EXPECT_EQ(conversation->getJournalServiceEntries(), (Texts{"the-journal-entry-1"}));
    EXPECT_EQ(copy->getJournalServiceEntries(), (Texts{"the-journal-entry-1", ""}));
    EXPECT_STREQ(copy->getConversationItems().back()->isClone(), "[clone]");
    EXPECT_EQ(std::string(copy->isClone()) + conversation->isClone(), "[clone]");
    EXPECT_EQ(log.count("Conversation::clone["), 1U);
}

/** Copies share items: nobody may notice, whoever has the pointer to one and whoever goes first. */
TEST_F(ConversationTest, WhatHappensToAnItemStaysInItsConversation)
{
    auto original = phone.conversation({});
    original->appendNew(std::unique_ptr<ConversationItem>(phone.missed(1, "11")));
    const std::unique_ptr<Conversation> early(original->clone());
    ASSERT_EQ(early->shownItem(), original->shownItem());
    ConversationItem* const known = original->initialItem();
    EXPECT_STREQ(known->isClone(), "");
    const std::unique_ptr<Conversation> late(original->clone());
    const auto viewed = [&] {
        return Flags{known->getViewed(), early->shownItem()->getViewed(), late->shownItem()->getViewed()};
    };
    known->setViewed(false);
    EXPECT_EQ(viewed(), (Flags{false, true, true}));
    early->initialItem()->setViewed(false);
    known->setViewed(true);
    const std::unique_ptr<Conversation> third(early->clone());
    third->setAllItemsAsViewed();
    EXPECT_EQ(viewed(), (Flags{true, false, true}));
    EXPECT_EQ(original->initialItem(), known);

    ConversationItem* const kept = phone.missed(20, "11");
    original->append(kept);
    const std::unique_ptr<Conversation> copy(original->clone());
    kept->extractTimeAndDateFromJournalServiceISO8601String("");
    EXPECT_EQ(copy->timeStampUTC(), 20);
    original->setConversationItems(original->getConversationItems());
    EXPECT_EQ(timesOf(*original), (Times{1, 0}));
    original.reset();
    EXPECT_STREQ(early->initialItem()->isClone(), "[clone]");
    EXPECT_EQ(copy->initialItem()->getItemText() + copy->getNumber(), "11");
}

TEST_F(ConversationTest, WhoLeavesTakesNobodysNews)
{
    class Leaving : public Listener
    {
      public:
        explicit Leaving(Conversation& conversation) : conversation_(conversation) {}
        void conversationModified(const std::string& id) override
        {
            Listener::conversationModified(id);
            conversation_.removeObserver(this);
        }

      private:
        Conversation& conversation_;
    };
    const auto conversation = phone.conversation({});
    Leaving first(*conversation), second(*conversation);
    Listener third;
    for (Listener* one : std::initializer_list<Listener*>{&first, &second, &third})
    {
        conversation->addObserver(one);
    }
    conversation->append(phone.missed(1, "11"));
    conversation->append(phone.missed(2, "11"));
    EXPECT_EQ((std::vector<int>{first.modified, second.modified, third.modified}), (std::vector<int>{1, 1, 2}));
    conversation->removeObserver(&third);
}

/** What is told of a conversation looks at it as soon as it is told, and so ends the sharing of items. */
TEST_F(ConversationTest, ObserversMayLookAtWhatIsBeingFolded)
{
    class Looking : public Listener
    {
      public:
        explicit Looking(Conversation& conversation) : conversation_(conversation) {}
        void conversationModified(const std::string&) override
        {
            looked += conversation_.getConversationItems().size();
        }

        std::size_t looked = 0;

      private:
        Conversation& conversation_;
    };
    const auto into = phone.conversation({phone.missed(3, "11")});
    const auto from = phone.conversation({});
    from->appendNew(std::unique_ptr<ConversationItem>(phone.missed(1, "21")));
    from->appendNew(std::unique_ptr<ConversationItem>(phone.missed(2, "22")));
    Looking observer(*into);
    into->addObserver(&observer);
    for (ConversationItem* stranger : into->foldIn(*from, {false}))
    {
        EXPECT_EQ(stranger->timeStampUTC(), 3);
        delete stranger;
    }
    EXPECT_EQ(timesOf(*into), (Times{2, 1}));
    EXPECT_EQ(timesOf(*from), (Times{2, 1}));
    EXPECT_GT(observer.looked, 0U);
    into->removeObserver(&observer);
}

} // namespace
