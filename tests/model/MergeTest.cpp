#include "ConversationAPI/StaticConversationIDGenerator.h"
#include "support/Phone.h"

namespace
{
using namespace ConversationAPI;
using Testing::ANONYMOUS;
using Testing::Items;
using Testing::LogCapture;
using Testing::timesOf;
using Times = std::vector<long>;
using Texts = std::vector<std::string>;

class MergeTest : public testing::Test
{
  protected:
    static constexpr Conversation::Folding EVERYTHING = {};

    /** The times of what was handed back, which is deleted. */
    static Times handedBack(const Items& items)
    {
        Times times;
        for (const ConversationItem* item : items)
        {
            EXPECT_EQ(item->conversationId(), "");
            times.push_back(item->timeStampUTC());
        }
        Testing::deleteAll(items);
        return times;
    }

    static void expectStamped(const Conversation& conversation)
    {
        for (const auto& item : conversation.items())
        {
            EXPECT_EQ(item->conversationId(), conversation.getConversationId());
            EXPECT_EQ(item->exchangeContactId(), conversation.exchangeContactId());
        }
    }

    Testing::Phone phone;
};

TEST_F(MergeTest, MergingTakesIdDetailsAndCopiesAndHandsBackWhatDoesNotBelong)
{
    const auto into =
        phone.conversation({phone.missed(10, "11", "", "Old", "e10"), phone.missed(20, "12", "", "", "e20")});
    const auto from = phone.conversation({phone.missed(30, "11", "Ann", "Lee", "e30")});
    from->setExchangeContactId("x");
    from->setSearchIdUsed(true);
    from->setPersonalData("Ann", "Lee", "mail", "firm", "a1", "a2", "role");
    from->saveMobileNumber("030 1234567");
    from->setTemporary(true);
    from->setExtraActiveConversation(true);
    from->setPhantom(true);
    ConversationItem* removed = phone.missed(1, "11", "", "", "gone");
    removed->setConversationItemId("r");
    from->append(removed);
    from->removeItem("r");
    const std::string id = from->initialItem()->conversationId();
    const LogCapture log(6);
    EXPECT_EQ(handedBack(into->mergeWith(*from)), (Times{20}));
    EXPECT_EQ(timesOf(*into), (Times{30, 10}));
    EXPECT_STREQ(into->initialItem()->isClone(), "[clone]");
    EXPECT_EQ(into->getConversationId(), id) << "never the alias of a phantom";
    EXPECT_EQ(into->getJournalServiceEntries(), (Texts{"e10", "e30", "gone"}));
    EXPECT_EQ(into->getContactName() + into->getRole() + into->exchangeContactId(), "Ann Leerolex");
    EXPECT_EQ(into->getMobileNumber(), "+49301234567");
    EXPECT_FALSE(into->isTemporary() || into->extraActiveConversation() || into->isPhantomConversation());
    expectStamped(*into);
    EXPECT_EQ(timesOf(*from), (Times{30}));
    EXPECT_EQ(log.count(", newId=" + id), 1U);
    EXPECT_TRUE(into->mergeWith(*into).empty());
    EXPECT_EQ(into->getConversationItemsSize(), 2U);
}

TEST_F(MergeTest, TemporaryAndMissingIdsAreNotTaken)
{
    for (const char* id : {"tempId", ""})
    {
        StaticConversationIDGenerator generator(id);
        const std::unique_ptr<Conversation> from(
            phone.conversations.createConversation(phone.missed(5, "11"), generator));
        for (const bool folds : {false, true})
        {
            const auto into = phone.conversation({phone.missed(1, "11")});
            const std::string kept = into->getConversationId();
            EXPECT_TRUE((folds ? into->foldIn(*from, EVERYTHING) : into->mergeWith(*from)).empty());
            EXPECT_EQ(into->getConversationId(), kept);
            expectStamped(*into);
            EXPECT_EQ(timesOf(*into), (Times{5, 1}));
        }
    }
}

TEST_F(MergeTest, OnlyPermanenceIsContagious)
{
    for (const bool mine : {false, true})
    {
        for (const bool theirs : {false, true})
        {
            const auto into = phone.conversation({phone.missed(1, "11")});
            const auto from = phone.conversation({phone.missed(2, "11")});
            into->setTemporary(mine);
            from->setTemporary(theirs);
            const LogCapture log(6);
            EXPECT_TRUE(into->mergeWith(*from).empty());
            EXPECT_EQ(into->isTemporary(), mine && theirs);
            EXPECT_EQ(log.count("mergeWith: making conversation permanent"), mine && !theirs ? 1U : 0U);
        }
    }
}

TEST_F(MergeTest, OfAMereContactMergingTakesTheGroupOnly)
{
    const auto bare = phone.contact("Lee", "11", "12");
    const auto wsi = phone.contact("Lee", "11", "12", Conversation::WSI_CONTACT);
    wsi->append(phone.missed(9, "11", "", "", "e9"));
    for (Conversation* from : {bare.get(), wsi.get()})
    {
        from->setGroupName("Team");
        from->setModerated(true);
        const auto into =
            phone.conversation({phone.missed(1, "11", "", "", "e1"), phone.missed(2, "99", "", "", "e1")});
        const std::string id = into->getConversationId();
        EXPECT_TRUE(into->mergeWith(*from).empty());
        EXPECT_EQ(into->getConversationId(), id);
        EXPECT_EQ(into->getContactName() + into->getMobileNumber(), "99");
        EXPECT_EQ(into->getContactSource(), Conversation::NO_CONTACT);
        EXPECT_EQ(into->getGroupName(), "Team");
        EXPECT_TRUE(into->isModerated());
        EXPECT_EQ(timesOf(*into), (Times{2, 1}));
        EXPECT_EQ(into->getJournalServiceEntries(), Texts{"e1"}) << "of items that stay where they are";
    }
}

TEST_F(MergeTest, FoldingTakesAContact)
{
    auto* const source = reinterpret_cast<ConversationSourceIfc*>(&phone); // only compared
    const struct
    {
        Conversation::ContactSource kind;
        Conversation::Folding folding;
        bool id, kindTaken, sourceTaken;
    } cases[] = {{Conversation::DIRECTORY_CONTACT, {true, true, true}, true, true, true},
                 {Conversation::DIRECTORY_CONTACT, {false, true, true}, false, true, true},
                 {Conversation::DIRECTORY_CONTACT, {true, false, false}, true, false, false},
                 {Conversation::WSI_CONTACT, {true, true, true}, false, true, true}};
    for (const auto& one : cases)
    {
        Testing::Phone directory; // with ids of its own
        const auto contact = directory.contact("Lee", "11", "030 1234567", one.kind);
        contact->setSource(source);
        contact->setExchangeContactId("x");
        const auto into =
            phone.conversation({phone.missed(1, "030 1234567", "", "", "e1"), phone.missed(2, "11", "", "", "e1"),
                                phone.missed(3, "13", "", "", "e3"), phone.missed(4, "", "", "Nobody")});
        const std::string id = into->getConversationId();
        EXPECT_EQ(handedBack(into->foldIn(*contact, one.folding)), (Times{4, 3}));
        EXPECT_EQ(timesOf(*into), (Times{2, 1}));
        EXPECT_EQ(into->getJournalServiceEntries(), (Texts{"e1"}));
        EXPECT_EQ(into->getContactName() + into->getNumber(), "Lee11");
        EXPECT_EQ(into->getConversationNumbers(), contact->getConversationNumbers());
        EXPECT_EQ(into->getConversationId() == contact->getConversationId(), one.id);
        EXPECT_EQ(into->getConversationId() == id, !one.id);
        EXPECT_EQ(into->getContactSource(), one.kindTaken ? one.kind : Conversation::NO_CONTACT);
        EXPECT_EQ(into->getSource() == source, one.sourceTaken);
        expectStamped(*into);
        into->setConversationItems({});
        EXPECT_EQ(into->initialItem() != nullptr, one.kindTaken) << "a contact has its placeholder";
    }
}

TEST_F(MergeTest, FoldingKeepsWhatTheMergedConversationClaims)
{
    const auto contact = phone.contact("Lee", "11", "12");
    const Items conference = {
        phone.live("1", ActiveCall::CONFERENCE, 9, {Testing::Phone::party("11"), Testing::Phone::party("77")})};
    const auto second = phone.conversation(conference);
    EXPECT_TRUE(handedBack(second->foldIn(*contact, EVERYTHING)).empty()) << "the other party of a conference";
    const auto later = phone.conversation(
        {phone.live("1", ActiveCall::CONFERENCE, 9, {Testing::Phone::party("11"), Testing::Phone::party("78", "Bo")})});
    EXPECT_TRUE(handedBack(second->foldIn(*later, EVERYTHING)).empty());
    EXPECT_EQ(second->secondParty().firstName, "Bo") << "who has taken the other one's place";
    const auto nameless = phone.conversation({phone.live("2", ActiveCall::CONNECTED, 9, "", "Lee")});
    EXPECT_TRUE(handedBack(nameless->foldIn(*contact, EVERYTHING)).empty()) << "a name without a number";
    const auto anonymous = phone.conversation({phone.missed(1, "", "", ANONYMOUS), phone.missed(2, "", "", ANONYMOUS)});
    const auto other = phone.conversation({phone.missed(3, "", "", ANONYMOUS)});
    EXPECT_TRUE(handedBack(anonymous->foldIn(*other, EVERYTHING)).empty()) << "callers of whom nothing is known";
    EXPECT_EQ(timesOf(*anonymous), (Times{3, 2, 1}));
    const auto call = phone.conversation({phone.missed(5, "12")});
    const auto mixed = phone.conversation({phone.missed(7, "13"), phone.missed(8, "11")});
    const auto plain = phone.conversation({phone.missed(1, "11")});
    EXPECT_TRUE(handedBack(plain->foldIn(*mixed, EVERYTHING)).empty()) << "what came along";
    const auto kept = phone.contact("Lee", "11", "12");
    kept->append(phone.missed(4, "11"));
    EXPECT_TRUE(handedBack(kept->foldIn(*call, EVERYTHING)).empty()) << "a contact's other number";
    EXPECT_EQ(timesOf(*kept), (Times{5, 4}));
}

TEST_F(MergeTest, AConversationKeepsItsFirstContact)
{
    const auto into = phone.contact("Lee", "11", "12");
    const auto call = phone.conversation({phone.missed(9, "12", "Wrong", "Name")});
    const std::string id = into->getConversationId(), other = call->getConversationId();
    EXPECT_TRUE(handedBack(into->foldIn(*call, EVERYTHING)).empty());
    EXPECT_EQ(into->getContactName() + into->getNumber() + into->getMobileNumber(), "Lee1112");
    EXPECT_EQ(into->getContactSource(), Conversation::DIRECTORY_CONTACT);
    EXPECT_EQ(into->getConversationId(), other);
    const auto second = phone.contact("Fox", "12", "13");
    second->setGroupName("Team");
    EXPECT_TRUE(handedBack(into->foldIn(*second, EVERYTHING)).empty());
    EXPECT_EQ(into->getContactName() + into->getMobileNumber() + into->getGroupName(), "Lee12Team");
    EXPECT_EQ(into->getConversationId(), other);
    into->setConversationItems({});
    EXPECT_EQ(into->initialItem()->toString(), "last: Lee comp:11 w1:11 w2: m:12 h:");
}

TEST_F(MergeTest, ANewerRecordOfTheSameContactIsTaken)
{
    StaticConversationIDGenerator contactId("contact-1");
    const auto record = [&](const std::string& name)
    {
        std::unique_ptr<Conversation> made(
            phone.conversations.createConversation("", name, "11", contactId, 0, "", CallPartyIdentifier::WORK_1));
        made->setContactSource(Conversation::DIRECTORY_CONTACT);
        made->init();
        return made;
    };
    const auto fromCalls = phone.conversation({phone.missed(1, "11")});
    const auto fromContact = record("Lee");
    EXPECT_TRUE(fromCalls->foldIn(*record("Lee"), EVERYTHING).empty());
    EXPECT_TRUE(
        fromContact->foldIn(*phone.conversation({phone.missed(2, "11")}), EVERYTHING).empty()); // takes another id
    for (Conversation* into : {fromCalls.get(), fromContact.get()})
    {
        EXPECT_TRUE(into->foldIn(*record("Fox"), EVERYTHING).empty());
        EXPECT_EQ(into->getContactName(), "Fox");
    }
}

TEST_F(MergeTest, AContactsNumbersShareOneIdAfterARebuild)
{
    for (const bool takesContactSource : {true, false})
    {
        Testing::Phone fresh;
        auto into = fresh.conversation({fresh.missed(1, "11")});
        const auto contact = fresh.contact("Lee", "11", "12");
        EXPECT_TRUE(into->foldIn(*contact, {true, takesContactSource, false}).empty());
        const auto call = fresh.conversation({fresh.missed(7, "11")});
        EXPECT_TRUE(into->mergeWith(*call).empty()) << "a call that comes later must not make it forget";
        const std::string id = into->getConversationId();
        EXPECT_EQ(fresh.conversation({fresh.missed(3, "11")})->getConversationId(), id);
    }
    auto into = phone.conversation({phone.missed(1, "11")});
    const auto contact = phone.contact("Lee", "11", "12");
    EXPECT_TRUE(into->foldIn(*contact, {false, false, false}).empty());
    const std::string id = into->getConversationId();
    into.reset();
    EXPECT_EQ(phone.conversation({phone.missed(2, "12")})->getConversationId(), id);
    EXPECT_EQ(phone.conversation({phone.missed(2, "11")})->getConversationId(), id);
}

TEST_F(MergeTest, ANewerRecordOfALiveCallReplacesTheOlder)
{
    const struct
    {
        ActiveCall::activeCallState before, after;
        const char* callId;
        std::size_t items;
    } cases[] = {{ActiveCall::INCOMING_CALL, ActiveCall::CONNECTED, "1", 2},
                 {ActiveCall::CONNECTED, ActiveCall::REPRESENT_HELD_CALL, "1", 2},
                 {ActiveCall::CALL_WAITING_IGNORED, ActiveCall::CALL_WAITING_ISOLATED, "1", 2},
                 {ActiveCall::REMOTE_CALL, ActiveCall::CONNECTED, "1", 3}};
    for (const auto& one : cases)
    {
        const auto into = phone.conversation({phone.live("1", one.before, 9, "11"), phone.missed(5, "11")});
        ConversationItem* newer = phone.live(one.callId, one.after, 10, "11");
        newer->setConversationId(into->getConversationId());
        into->mergeItems({newer, nullptr});
        EXPECT_EQ(into->getConversationItemsSize(), one.items) << one.before;
        EXPECT_EQ(into->initialItem(), newer);
    }
    for (const bool folds : {false, true})
    {
        const auto into = phone.conversation({phone.live("1", ActiveCall::CONNECTED, 9, "11")});
        const auto from = phone.conversation({phone.live("2", ActiveCall::LOCAL_ON_HOLD, 10, "11")});
        EXPECT_NE(into->getConversationId(), from->getConversationId());
        handedBack(folds ? into->foldIn(*from, EVERYTHING) : into->mergeWith(*from));
        EXPECT_EQ(into->getConversationItemsSize(), 2U) << "two calls, not two records of one";
    }
    const auto contact = phone.contact("Lee", "11");
    const LogCapture log(6);
    contact->mergeItems({});
    contact->mergeItems({phone.missed(1, "11")});
    EXPECT_EQ(log.count(" mergeItems"), 1U);
}

TEST(NumberUpdateReasonTest, HasATextForEachReason)
{
    const char* texts[] = {"UPDATED", "ADDED", "DELETED", "DUMMY", "UNKNOWN", "UNKNOWN"};
    for (int reason = 0; reason < 6; ++reason)
    {
        EXPECT_STREQ(numberUpdateReasonToString(static_cast<numberUpdateReason>(reason)), texts[reason]);
    }
}
} // namespace
