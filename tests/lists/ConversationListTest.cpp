#include "ConversationAPI/ConversationList.h"

#include "ConversationAPI/HasConversationAnyNumberMatchingCondition.h"
#include "ConversationAPI/PhantomCondition.h"
#include "ConversationAPI/VoicemailConversationItem.h"
#include "support/Phone.h"

#include <random>

namespace
{
using namespace ConversationAPI;
using ConversationListConditions::HasConversationAnyNumberMatchingCondition;
using Testing::ANONYMOUS;
using Texts = std::vector<std::string>;
using Owned = std::unique_ptr<Conversation>;

class ConversationListTest : public testing::Test
{
  protected:
    Conversation* add(ConversationItem* item)
    {
        Conversation* conversation = phone.conversation({item}).release();
        list.push_back(conversation);
        return conversation;
    }

    Conversation* addNamed(const std::string& name, const std::string& number = "11")
    {
        Conversation* conversation = add(phone.missed(1, number));
        conversation->setDisplayName(name);
        return conversation;
    }

    Texts names() const
    {
        Texts all;
        std::transform(list.begin(), list.end(), std::back_inserter(all),
                       [](auto* one) { return one->getContactName(); });
        return all;
    }

    Testing::Phone phone;
    ConversationList list;
};

TEST_F(ConversationListTest, WhatMayEnter)
{
    EXPECT_EQ(list.toString(), "ConversationList[0]\n");
    Conversation* first = addNamed("a");
    Conversation* second = addNamed("b");
    list.push_back(first);
    list.push_front(first);
    list.push_back(nullptr);
    EXPECT_EQ(names(), (Texts{"a", "b"}));
    const Owned phantom = phone.conversation({phone.missed(1, "12")});
    phantom->setDisplayName("p");
    list.push_back_phantom(phantom.get());
    phantom->setPhantom(true);
    list.push_back(phantom.get());
    EXPECT_FALSE(list.hasPhantomConversation());
    list.push_back_phantom(phantom.get());
    EXPECT_EQ(list.getPhantomConversation(), phantom.get());
    list.clearPhantomConversation();
    list.push_back_phantom(phantom.get());
    EXPECT_EQ(names(), (Texts{"a", "b", "p"}));
    list.moveConversationToTop(1);
    list.moveConversationToTop(9);
    EXPECT_EQ(names(), (Texts{"b", "a", "p"}));
    EXPECT_EQ(list.atIndex(0), second);
    EXPECT_EQ(list.atIndex(3), nullptr);
    const auto none = list.findWithIndex(HasConversationAnyNumberMatchingCondition("99"));
    EXPECT_EQ(none, (std::pair<Conversation*, unsigned>(nullptr, 3)));
    EXPECT_EQ(list.toString(), "ConversationList[3]" + second->toDebugString() + first->toDebugString() +
                                   phantom->toDebugString() + "\n");
    std::vector<std::string> ids = {"x"};
    list.getInUseConversationIds(ids);
    EXPECT_EQ(ids, (Texts{"x", second->getConversationId(), first->getConversationId(), "PhantomConversation"}));
    ids.erase(ids.begin());
    EXPECT_TRUE(Testing::tellsTheHashesOf(ids, list));
    list.pop(phantom.get());
}

TEST_F(ConversationListTest, EveryWayOutForgetsTheConversation)
{
    using Way = std::function<void(Conversation*)>;
    const HasConversationAnyNumberMatchingCondition hasNumber("11");
    const std::vector<std::pair<Way, bool>> ways = {
        {[&](Conversation* one) { list.pop(one); }, false},
        {[&](Conversation*) { list.findAndRemoveConversationsThatMatch(hasNumber); }, false},
        {[&](Conversation* one) { list.remove(one); }, true},
        {[&](Conversation* one) { list.erase(one); }, true},
        {[&](Conversation* one)
         {
             const Owned twin(one->clone()); // same id
             list.erase(twin.get());
         },
         true},
        {[&](Conversation*) { list.removeConversationAndDelete(1); }, true},
        {[&](Conversation*) { list.findAndDeleteConversationsThatMatch(hasNumber); }, true},
        {[&](Conversation*) { list.removeAndDeleteAll(); }, true}};
    for (std::size_t way = 0; way < ways.size(); ++way)
    {
        add(phone.missed(1, "22"));
        Conversation* leaving = add(phone.missed(1, "11", "", ANONYMOUS));
        leaving->saveMobileNumber("11");
        const std::string id = leaving->getConversationId();
        EXPECT_EQ(list.getAnonymousConversation(), leaving);
        EXPECT_EQ(list.findByNumber("11"), leaving);
        EXPECT_EQ(list.findByConversationId(id), leaving);
        EXPECT_EQ(list.getModifiedConversations().front(), id);
        ways[way].first(leaving);
        EXPECT_EQ(list.getAnonymousConversation(), nullptr) << way;
        EXPECT_EQ(list.findByNumber("11"), nullptr) << way;
        EXPECT_EQ(list.findByConversationId(id), nullptr) << way;
        EXPECT_EQ(list.find(hasNumber), nullptr) << way;
        if (!ways[way].second)
        {
            leaving->saveHomeNumber("12"); // nobody listens any more
            EXPECT_EQ(list.findByNumber("12"), nullptr) << way;
            EXPECT_TRUE(list.getModifiedConversations().empty()) << way;
            delete leaving;
        }
        list.removeAndDeleteAll();
        list.clearModifiedConversations();
    }
    const Owned kept(addNamed("a"));
    kept->setPhantom(true);
    list.clear();
    EXPECT_TRUE(list.empty());
}

TEST_F(ConversationListTest, APhantomThatLeavesIsForgotten)
{
    const Owned phantom = phone.conversation({phone.missed(1, "11")});
    phantom->setPhantom(true);
    list.push_back_phantom(phantom.get());
    list.findAndRemoveConversationsThatMatch(ConversationListConditions::PhantomCondition(phantom.get()));
    EXPECT_FALSE(list.hasPhantomConversation());
    EXPECT_TRUE(list.empty());
}

/** Nobody has asked for a number yet when conversations that share some change and leave. */
TEST_F(ConversationListTest, TheNumberIndexKnowsWhatHappenedBeforeItWasAsked)
{
    const auto withNumbers = [this](const std::string& mobile, const std::string& home)
    {
        Conversation* one = phone.conversation({phone.missed(1, "9")}).release();
        one->setPhoneNumbers("", "", mobile, home, "9", CallPartyIdentifier::MOBILE);
        list.push_back(one);
        return one;
    };
    Conversation* lee = withNumbers("11", "12");
    Conversation* fox = withNumbers("11", "13");
    const Owned ray(withNumbers("12", "14"));
    withNumbers("13", "15");
    list.remove(fox);
    list.pop(ray.get());
    ray->saveMobileNumber("16");
    lee->saveHomeNumber("14");
    EXPECT_EQ(list.findByNumber("11"), nullptr) << "whoever leaves takes the numbers along that others lost to it";
    EXPECT_EQ(list.findByNumber("12"), nullptr);
    EXPECT_EQ(list.findByNumber("13"), list.atIndex(1));
    EXPECT_EQ(list.findByNumber("14"), lee);
    EXPECT_EQ(list.findByNumber("16"), nullptr);
}

TEST_F(ConversationListTest, TheNumberIndexFollowsTheConversations)
{
    Conversation* lee = add(phone.missed(1, "11"));
    Conversation* fox = add(phone.missed(1, "12"));
    EXPECT_EQ(list.findByNumber("11"), nullptr) << "a main number is not indexed";
    lee->saveMobileNumber("030 1234567");
    EXPECT_EQ(list.findByNumber("+49301234567"), lee);
    fox->saveHomeNumber("+49301234567");
    EXPECT_EQ(list.findByNumber("+49301234567"), fox) << "the last claim counts";
    lee->saveMobileNumber("21");
    EXPECT_EQ(list.findByNumber("+49301234567"), nullptr) << "whoever gives a number up takes it from all";
    EXPECT_EQ(list.findByNumber("21"), lee);
    lee->saveMobileNumber("");
    EXPECT_EQ(list.findByNumber("21"), nullptr);
    EXPECT_EQ(list.findByNumber(""), nullptr);
    list.conversationNumberUpdated(numberUpdateReason::DUMMY, fox, "", "");
    EXPECT_EQ(list.findByNumber("+49301234567"), fox);
    list.conversationNumberUpdated(numberUpdateReason::DUMMY, lee, "x", "");
    list.conversationNumberUpdated(static_cast<numberUpdateReason>(4), lee, "31", "+49301234567");
    EXPECT_EQ(list.findByNumber("+49301234567"), fox);
    EXPECT_EQ(list.findByNumber("x"), nullptr);
    list.conversationNumberUpdated(numberUpdateReason::DUMMY, lee, "", "31");
    EXPECT_EQ(list.findByNumber("31"), lee);
    const Owned contact = phone.contact("Lee", "11", "41");
    EXPECT_TRUE(lee->foldIn(*contact, {}).empty());
    EXPECT_EQ(list.findByNumber("41"), lee);
    contact->saveMobileNumber("42");
    EXPECT_TRUE(lee->mergeWith(*phone.conversation({phone.missed(2, "11")})).empty());
    EXPECT_EQ(list.findByNumber("41"), nullptr) << "not among the numbers that were merged in";
    Conversation* group = add(phone.groupCall(1, "13", "g"));
    group->saveWorkNumber1("13");
    EXPECT_EQ(list.findByNumber("13"), nullptr);
    EXPECT_EQ(list.findByConversationId(group->getConversationId()), group);
}

TEST_F(ConversationListTest, FindsWhatASearchFound)
{
    Conversation* used = addNamed("a");
    Conversation* fresh = addNamed("b");
    for (Conversation* one : {used, fresh})
    {
        one->setSearchId("s");
        one->saveWorkNumber1("11");
        one->saveMobileNumber(one == used ? "12" : "13"); // work 1 is indexed for the later one only
    }
    EXPECT_EQ(list.findBySearchIdWithNumber("s", "11"), fresh);
    fresh->setSearchIdUsed(true);
    EXPECT_EQ(list.findBySearchIdWithNumber("s", "11"), used);
    EXPECT_EQ(list.findBySearchIdWithNumber("t", "11"), nullptr);
    EXPECT_EQ(list.findBySearchIdWithNumber("s", "12"), nullptr);
}

TEST_F(ConversationListTest, AlphabeticalOrder)
{
    for (const char* name : {"Zoe", "anna", "B", "ANN", "ann", "\xC3\x84nne", "Bo", "b", "_x", "1"})
    {
        addNamed(name);
    }
    list.push_back(phone.conversations.createConversation()); // of no name at all
    list.sortAlphabetically();
    EXPECT_EQ(names(), (Texts{"", "\xC3\x84nne", "1", "_x", "ANN", "ann", "anna", "B", "b", "Bo", "Zoe"}));
    const auto set = list.asSet();
    EXPECT_TRUE(std::equal(set.begin(), set.end(), list.begin(), list.end()));
}

/** It stands before calls of the history of any time, but not before newer voicemail, which newer calls stand before.
 */
TEST_F(ConversationListTest, RowsThatChangeTogetherFindTheirPlacesBesideAHeldCall)
{
    const auto item = [](ConversationItemState state, long time)
    { return new Testing::ItemInState(static_cast<int>(state), time); };
    const auto rows = [](const ConversationList& of) { return std::vector<Conversation*>(of.begin(), of.end()); };
    const auto states = {ConversationItemState::MISSED, ConversationItemState::VOICEMAIL, ConversationItemState::TEXT};
    for (const ConversationItemState older : states)
    {
        for (const ConversationItemState newer : states)
        {
            list.removeAndDeleteAll();
            add(item(ConversationItemState::REPRESENTED_HELD_CALL, 1));
            Conversation* first = add(item(ConversationItemState::DIALLED, 5));
            Conversation* second = add(item(ConversationItemState::RECEIVED, 3));
            list.sort();
            first->append(item(older, 10));
            second->append(item(newer, 20));
            ConversationList fresh;
            std::for_each(list.begin(), list.end(), [&fresh](Conversation* row) { fresh.push_back(row); });
            fresh.sort();
            const std::vector<Conversation*> expected = rows(fresh);
            fresh.clear();
            list.sort();
            EXPECT_EQ(rows(list), expected) << static_cast<int>(older) << " and " << static_cast<int>(newer);
        }
    }
}

TEST_F(ConversationListTest, AtMostFiftyConversationsCountAsModified)
{
    Conversation* conversation = addNamed("a");
    list.clearModifiedConversations();
    conversation->append(phone.missed(2, "11"));
    const std::string own = conversation->getConversationId();
    for (int i = 0; i < 49; ++i)
    {
        list.conversationModified(std::to_string(i));
    }
    conversation->append(phone.missed(3, "11")); // known already: keeps its place, the last
    EXPECT_EQ(list.getModifiedConversations().size(), 50U);
    EXPECT_EQ(list.getModifiedConversations().back(), own);
    list.conversationModified("50");
    const auto ids = list.getModifiedConversations();
    EXPECT_EQ(ids.size(), 50U);
    EXPECT_EQ(ids.front() + "/" + ids.back(), "50/0");
    list.conversationModified(own);
    EXPECT_EQ(list.getModifiedConversations().front(), own) << "forgotten before, it is new again";
}

TEST(ModifiedConversationsListTest, IsOneQueueWhateverIsTakenOutOfIt)
{
    std::mt19937 random(5);
    ModifiedConversationsList queue;
    ModifiedConversationsList::Ids expected;
    for (int step = 0; step < 5'000; ++step)
    {
        if (random() % 400 == 0)
        {
            queue.clear();
            expected.clear();
        }
        const std::string id = std::to_string(random() % 80);
        const auto known = std::find(expected.begin(), expected.end(), id);
        if (random() % 20 == 0)
        {
            queue.remove(id);
            expected.erase(known, known == expected.end() ? known : known + 1);
        }
        else
        {
            queue.insert(id);
            expected.insert(expected.begin(), known == expected.end() ? 1 : 0, id);
            expected.resize(std::min<std::size_t>(expected.size(), 50));
        }
        ASSERT_EQ(queue.getModifiedConversations(), expected) << step;
    }
}

TEST_F(ConversationListTest, UnseenEventsAndSeeingThem)
{
    const auto unseen = [this](bool answered, bool group)
    {
        auto* call = static_cast<MissedCallConversationItem*>(phone.missed(9, "11"));
        call->setViewed(false);
        call->setAnswerStatus(answered);
        call->setGroupStatus(group);
        add(call);
    };
    const auto voicemail = [this](int count)
    {
        auto* item = phone.items.getVoicemailConversationItem(9);
        static_cast<VoicemailConversationItem*>(item)->setNumberOfVoiceMessages(count);
        add(item);
    };
    EXPECT_EQ(list.getCurrentEventNotifications(), (std::pair<int, int>(0, 0)));
    unseen(false, false);
    unseen(true, false);
    unseen(false, true);
    voicemail(3);
    voicemail(2);
    voicemail(0);
    add(phone.missed(1, "12"));
    EXPECT_EQ(list.getCurrentEventNotifications(), (std::pair<int, int>(3, 2)));
    list.setAllConversationsAsViewed();
    EXPECT_EQ(list.getCurrentEventNotifications(), (std::pair<int, int>(1, 2))) << "answered elsewhere stays";
}
} // namespace
