#include "platform/CallJournal.h"
#include "platform/CallPartyIdentifier.h"

#include <gtest/gtest.h>

namespace
{
TEST(CallPartyIdentifier, ChangingOneCopyLeavesTheOthers)
{
    CallPartyIdentifier party("Anna", "Berg", "4711", CallPartyIdentifier::WORK_1, "/tmp/a.png", true);
    const CallPartyIdentifier copy = party;
    EXPECT_EQ(&copy.getSurname(), &party.getSurname()) << "copies share their texts";
    party.setDetails(party.getSurname(), party.getFirstName(), "4712", CallPartyIdentifier::MOBILE, "", false);
    EXPECT_EQ(copy.getFirstName() + copy.getSurname() + copy.getNumber() + copy.getContactImagePath(),
              "AnnaBerg4711/tmp/a.png");
    EXPECT_EQ(copy.getPhoneNumberType(), CallPartyIdentifier::WORK_1);
    EXPECT_EQ(party.getFirstName() + party.getSurname() + party.getNumber() + party.getContactImagePath(),
              "BergAnna4712");
    EXPECT_EQ(party.getPhoneNumberType(), CallPartyIdentifier::MOBILE);
}

TEST(CallPartyIdentifier, EmptyAndMovedFromPartiesAnswer)
{
    CallPartyIdentifier party("Anna", "Berg", "4711", CallPartyIdentifier::HOME, "", false);
    const CallPartyIdentifier moved = std::move(party);
    EXPECT_EQ(moved.getNumber(), "4711");
    party = CallPartyIdentifier();
    EXPECT_EQ(party.getFirstName() + party.getSurname() + party.getNumber() + party.getContactImagePath(), "");
    EXPECT_EQ(party.getPhoneNumberType(), CallPartyIdentifier::NO_ICON);
}

TEST(CallJournal, EntriesAreDeepValues)
{
    MissedCallItem::MissedCallInfo call;
    call.setRemoteNumber("4711");
    call.setGroupName("Sales");
    call.setAnswered(true);
    MissedCallItem entry;
    entry.setEntryId("e1");
    entry.setMissedCallInfoList({call, call});
    MissedCallItem copy = entry;
    copy.setViewed(true);
    copy.setMissedCallInfoList({});
    ASSERT_EQ(entry.getMissedCallInfoList().size(), 2U);
    EXPECT_EQ(entry.getMissedCallInfoList()[1].getGroupName(), "Sales");
    EXPECT_TRUE(entry.getMissedCallInfoList()[1].getAnswered());
    EXPECT_FALSE(entry.getViewed());
    EXPECT_EQ(copy.getEntryId(), "e1");
}
} // namespace
