#include "support/Phone.h"

namespace
{
using namespace ConversationAPI;
using Testing::ANONYMOUS;
using Testing::ItemInState;
using Testing::Phone;

const std::string CTI = "CTI Assisted";

struct Party
{
    std::string first, last, number;
    std::array<std::string, 4> contact{};
};

ConversationParticipant made(const Party& party)
{
    ConversationParticipantFactory factory(&Testing::digitAnalysis());
    ConversationParticipant participant =
        factory.getConversationParticipant(Phone::party(party.number, party.first, party.last));
    participant.setPhoneNumbers(party.contact[0], party.contact[1], party.contact[2], party.contact[3]);
    return participant;
}

TEST(ParticipantTest, EqualityIsByNumber)
{
    const struct
    {
        Party a, b;
        bool equal;
    } cases[] = {{{"", "", ""}, {"", "", ""}, true}, // both become the anonymous caller
                 {{"", ANONYMOUS, "11"}, {"", "", ""}, true},
                 {{"", ANONYMOUS, "11"}, {"", "Lee", "11"}, true},
                 {{"", ANONYMOUS, "11"}, {"", "Lee", "12"}, false},
                 {{"Ann", "", ""}, {"Ann", "", ""}, false}, // names say nothing
                 {{"Ann", "", ""}, {"Ann", "", "11"}, false},
                 {{"Ann", "Lee", "11"}, {"Bob", "Fox", "11"}, true},
                 {{"Ann", "Lee", "11"}, {"Ann", "Lee", "111"}, false},
                 {{"", "Lee", "030 1234567"}, {"", "Fox", "+49 30 1234567"}, true},
                 {{"", "Lee", "11"}, {"", "Fox", "12", {"", "", "11", ""}}, true},
                 {{"", "Lee", "11", {"12", "", "", ""}}, {"", "Fox", "12"}, true},
                 {{"", "Lee", "11", {"13", "", "", ""}}, {"", "Fox", "12", {"13", "", "", ""}}, false}, // neither's own
                 {{"", "Lee", "", {"", "12", "", ""}}, {"", "Fox", "12"}, true},
                 {{"", "Lee", "", {"", "", "", "12"}}, {"", "Fox", "", {"", "", "", "12"}}, false},
                 {{"", "Lee", "11", {"", "", "", "030 1234567"}}, {"", "Fox", "0049301234567"}, true},
                 {{"", CTI, "11"}, {"", CTI, "11"}, false},
                 {{"", CTI, "11"}, {"", "Lee", "11"}, false},
                 {{"", CTI, ""}, {"", ANONYMOUS, ""}, false}};
    for (const auto& one : cases)
    {
        const ConversationParticipant a = made(one.a), b = made(one.b);
        EXPECT_EQ(a == b, one.equal) << a.toString() << " and " << b.toString();
        EXPECT_EQ(b == a, one.equal) << b.toString() << " and " << a.toString();
        EXPECT_EQ(a != b, !one.equal);
    }
}

TEST(ParticipantTest, EachFieldDecidesTheOrderOnItsOwn)
{
    const ConversationParticipant zed = made({"Ann", "Zed", "2"}), able = made({"Bob", "Able", "2"});
    EXPECT_TRUE(zed < able);
    EXPECT_TRUE(able < zed);
    EXPECT_TRUE(made({"Bob", "Zed", "1"}) < able);
    EXPECT_FALSE(able < made({"Bob", "Able", "2"}));
}

TEST(ParticipantTest, CopiesAreIndependent)
{
    ConversationParticipant one = made({"Ann", "Lee", "11", {"12", "", "", ""}});
    one.setPersonalData("mail", "firm", "", "", "role");
    ConversationParticipant other = one;
    other.setPersonalData("", "", "", "", "");
    other.setPhoneNumbers("", "13", "", "");
    other.saveNumber("030 1234567");
    EXPECT_EQ(one.getRole() + one.getWorkNumber1() + one.getComparableNumber(), "role1211");
    EXPECT_EQ(other.getNumber() + other.getComparableNumber(), "030 1234567+49301234567");
    EXPECT_EQ(other.toString(), "last: Lee comp:+49301234567 w1: w2:13 m: h:");
    EXPECT_EQ(other.getName(), "Ann Lee");
}

TEST(ParticipantTest, ItemsMatchWhateverTheOrderOfTheirParties)
{
    ConversationParticipantFactory factory(&Testing::digitAnalysis());
    const auto matches = [&factory](const std::vector<Party>& mine, const std::vector<Party>& theirs)
    {
        ItemInState a(4, 0), b(4, 0);
        a.setConversationParticipantFactory(&factory);
        b.setConversationParticipantFactory(&factory);
        for (const Party& party : mine)
        {
            a.addParticipant(Phone::party(party.number, party.first, party.last));
        }
        for (const Party& party : theirs)
        {
            b.addParticipant(Phone::party(party.number, party.first, party.last));
        }
        return a.doParticipantsMatch(b);
    };
    const Party ann{"A", "A", "11"}, bob{"B", "B", "12"}, cid{"C", "C", "13"};
    EXPECT_TRUE(matches({}, {}));
    EXPECT_FALSE(matches({}, {ann}));
    EXPECT_TRUE(matches({ann, bob, cid}, {cid, ann, bob}));
    EXPECT_TRUE(matches({cid, bob, ann}, {ann, bob, cid}));
    EXPECT_FALSE(matches({ann, ann, bob}, {ann, bob, bob}));
    EXPECT_FALSE(matches({ann, bob}, {ann, bob, cid}));
}

TEST(ParticipantTest, CallersWithoutADetailAreAnonymous)
{
    const struct
    {
        Party party;
        bool anonymous;
    } cases[] = {{{"", "", ""}, true},
                 {{"", ANONYMOUS, ""}, true},
                 {{"", ANONYMOUS, ANONYMOUS}, true},
                 {{"", ANONYMOUS, "1"}, false},
                 {{"", "Lee", ""}, false},
                 {{"A", ANONYMOUS, ""}, false},
                 {{"", "", "NoNumberProvided"}, true},
                 {{"", "Lee", "NoNumberProvided"}, false}};
    Phone phone;
    for (const auto& one : cases)
    {
        const std::unique_ptr<ConversationItem> item(
            phone.missed(1, one.party.number, one.party.first, one.party.last));
        EXPECT_EQ(item->isCallAnonymous(), one.anonymous) << item->toString();
    }
    EXPECT_FALSE(ItemInState(4, 0).isCallAnonymous());
    EXPECT_EQ(ItemInState(4, 0).toString(), "no participants");
}
} // namespace
