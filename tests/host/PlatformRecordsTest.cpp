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
} // namespace
