#include "ConversationAPI/ActiveCall.h"

#include <gtest/gtest.h>
#include <set>

namespace
{
using ConversationAPI::ActiveCall;

std::time_t present = 0;

std::time_t clockOfTest(std::time_t* time)
{
    return *time = present;
}

CallPartyIdentifier party(const std::string& first, const std::string& last, const std::string& number)
{
    return CallPartyIdentifier(first, last, number, CallPartyIdentifier::MOBILE, "/" + number + ".png", false);
}

ActiveCall call(const CallPartyIdentifier& remote, ActiveCall::conferenceState conference = ActiveCall::NO_CONFERENCE)
{
    return ActiveCall(nullptr, "7", remote, conference);
}

std::string told(const CallPartyIdentifier& who)
{
    return who.getFirstName() + "|" + who.getSurname() + "|" + who.getNumber();
}

TEST(ActiveCallTest, OnlyAnsweringACallThatWaitsForItStampsTheTimeAnew)
{
    const std::set<int> waiting = {ActiveCall::INCOMING_CALL, ActiveCall::OUTGOING_CALL,
                                   ActiveCall::GROUP_PICKUP_CONNECTED};
    for (int from = ActiveCall::CONNECTED; from <= ActiveCall::BLINDTRANSFERRING; ++from)
    {
        for (int to = ActiveCall::CONNECTED; to <= ActiveCall::BLINDTRANSFERRING; ++to)
        {
            present = 1000;
            ActiveCall record(&clockOfTest, "7", party("", "", "1"), ActiveCall::NO_CONFERENCE);
            record.setState(static_cast<ActiveCall::activeCallState>(from));
            present = 2000;
            record.setState(static_cast<ActiveCall::activeCallState>(to));
            const bool answered = to == ActiveCall::CONNECTED && waiting.count(from) == 1;
            EXPECT_EQ(record.callInitiatedTime(), answered ? 2000 : 1000) << from << " to " << to;
        }
    }
}

TEST(ActiveCallTest, WithoutAClockTheTimeIsOnlyWhatWasSet)
{
    ActiveCall record = call(party("", "", "1"));
    record.setState(ActiveCall::INCOMING_CALL);
    record.setState(ActiveCall::CONNECTED);
    EXPECT_EQ(record.callInitiatedTime(), 0);
    record.setCallInitiatedTime((1L << 32) + 5);
    EXPECT_EQ(record.callInitiatedTime(), (1L << 31) - 1);
}

struct Update
{
    CallPartyIdentifier known;
    CallPartyIdentifier newer;
    const char* result;
    bool onlyStates; ///< the newer record names the same party
};

TEST(ActiveCallTest, ANewerRecordOfTheFirstPartyWipesNothingKnown)
{
    const std::vector<Update> updates = {
        {party("Ann", "Lee", "1"), party("Ann", "Lee", "1"), "Ann|Lee|1", true},
        {party("Ann", "Lee", "1"), party("", "", "1"), "Ann|Lee|1", true},
        {party("Ann", "Lee", "1"), party("", "", "2"), "||2", false},
        {party("Ann", "Lee", "1"), party("Bob", "", "1"), "Bob|Lee|1", false},
        {party("Ann", "Lee", "1"), party("", "Roe", ""), "Ann|Roe|1", false},
        {party("Ann", "Lee", "1"), party("Bob", "Roe", "2"), "Bob|Roe|2", false},
        {party("", "CTI Assisted", "1"), party("", "", "1"), "||1", false},
        {party("Ann", "CTI Assisted", "1"), party("", "", ""), "Ann||1", false},
        {party("", "CTI Assisted 2", "1"), party("", "", "1"), "|CTI Assisted 2|1", true},
    };
    for (const Update& update : updates)
    {
        SCOPED_TRACE(told(update.known) + " then " + told(update.newer));
        ActiveCall record = call(update.known);
        const ActiveCall newer = call(update.newer);
        EXPECT_EQ(record.needsUpdatingFrom(newer), !update.onlyStates);
        EXPECT_EQ(record.areStatesOnlyDifference(newer), update.onlyStates);
        record.updateFrom(newer);
        EXPECT_EQ(told(record.participants().front()), update.result);
        EXPECT_EQ(record.picturepath(), "/1.png");
        EXPECT_EQ(record.participants().front().getPhoneNumberType(),
                  update.onlyStates ? CallPartyIdentifier::MOBILE : CallPartyIdentifier::NO_ICON);
    }
}

TEST(ActiveCallTest, TheSecondPartyJoinsWithThePictureOfTheFirst)
{
    ActiveCall record = call(party("Ann", "Lee", "1"));
    ActiveCall conference(nullptr, "7", party("", "", "1"), party("Bob", "", "2"), ActiveCall::SMALL_CONFERENCE);
    EXPECT_FALSE(record.areStatesOnlyDifference(conference));
    record.updateFrom(conference);
    EXPECT_EQ(record.getState(), ActiveCall::CONFERENCE);
    ASSERT_TRUE(record.hasSecondParticipant());
    EXPECT_EQ(told(record.getParticipants()[1]), "Bob||2");
    EXPECT_EQ(record.secondPartyPicturepath(), "/1.png");

    conference.updateSecondPartyDetails("Roe", "", "", "");
    record.updateFrom(conference);
    EXPECT_EQ(told(record.getParticipants()[1]), "Bob|Roe|2");

    record.updateFrom(call(party("", "", "1")));
    EXPECT_EQ(record.secondPartyNumber(), "2") << "an event about one party says nothing about the other";
}

TEST(ActiveCallTest, ACallInfoUpdateChangesThePartyAndTheFlagsButNotTheState)
{
    ActiveCall record = call(party("", "", "1"), ActiveCall::LARGE_CONFERENCE);
    record.setState(ActiveCall::LOCAL_ON_HOLD);
    ActiveCall info = call(party("Ann", "Lee", "1"));
    info.setState(ActiveCall::CALL_INFO_UPDATE);
    info.setCallDirection(static_cast<ActiveCall::callDirection>(9));
    info.setHDAudioIconStatus(true);
    info.setDSSCall(true);
    record.updateFrom(info);
    EXPECT_EQ(record.firstname() + record.lastname(), "AnnLee");
    EXPECT_EQ(record.getState(), ActiveCall::LOCAL_ON_HOLD);
    EXPECT_TRUE(record.isLargeConference());
    EXPECT_EQ(record.getCallDirection(), 9);
    EXPECT_TRUE(record.getHDAudioIconStatus() && record.isDSSCall());
    EXPECT_FALSE(record.areStatesOnlyDifference(info)) << "an info event moves the call even when it brings nothing";
}

TEST(ActiveCallTest, TwoConferencesAreAlwaysRefreshedInPlace)
{
    const ActiveCall large = call(party("Ann", "Lee", "1"), ActiveCall::LARGE_CONFERENCE);
    EXPECT_TRUE(large.needsUpdatingFrom(large));
    EXPECT_TRUE(large.areStatesOnlyDifference(call(party("Bob", "Roe", "2"), ActiveCall::SMALL_CONFERENCE)));
    EXPECT_FALSE(large.needsUpdatingFrom(call(party("Ann", "Lee", "1"))));
}

TEST(ActiveCallTest, StatesHaveTheirNames)
{
    EXPECT_STREQ(activeCallStateToString(ActiveCall::GROUP_PICKUP_CONNECTED), "GROUP_PICKUP_CONNECTED");
    EXPECT_STREQ(activeCallStateToString(ActiveCall::BLINDTRANSFERRING), "BLINDTRANSFERRING");
    EXPECT_STREQ(activeCallStateToString(static_cast<ActiveCall::activeCallState>(17)), "UNKOWN");
    EXPECT_STREQ(activeCallStateToString(static_cast<ActiveCall::activeCallState>(-1)), "UNKOWN");
}
} // namespace
