#include "ConversationAPI/AggregatorConversationSource.h"
#include "ConversationAPI/ConversationListProvider.h"
#include "ConversationAPI/StaticConversationIDGenerator.h"
#include "support/Phone.h"
#include "support/RecordingAggregator.h"

namespace
{
using namespace Testing;

struct Served : testing::Test
{
    Served()
    {
        StaticConversationIDGenerator none("");
        add(phone.conversation({phone.missed(30, "4711", "Ann", "Lee")}).release(), "u1");
        add(phone.conversation({phone.missed(20, "", "", "Caller.Unknown.XXX")}).release(), "");
        add(phone.conversation({phone.live("c1", ActiveCall::CONNECTED, 10, "4712", "Leeds")}).release(), "u2")
            ->setType(Conversation::GROUP);
        add(phone.conversations.createConversation(phone.missed(5, "4719", "Bob", "Leeds"), none), "");
        notes.clear();
    }

    Conversation* add(Conversation* conversation, const std::string& user)
    {
        conversation->setUserId(user);
        aggregator.list->push_back(conversation);
        return conversation;
    }

    /** The place in the list, -1 for null. */
    long placeOf(const Conversation* found) const
    {
        const ConversationList& list = *aggregator.list;
        return found ? std::find(list.begin(), list.end(), found) - list.begin() : -1;
    }

    Phone phone;
    Notes notes;
    RecordingAggregator aggregator{"a", notes}, other{"o", notes};
    AggregatorConversationSource source{aggregator}, otherSource{other};
    ConversationListProvider provider{&phone.items};
};

TEST_F(Served, LookUpsAreAnsweredFromTheList)
{
    const std::string first = aggregator.list->atIndex(0)->getConversationId();
    const struct
    {
        std::function<Conversation*(ConversationListProvider&)> lookUp;
        int place;
    } cases[] = {{[](auto& p) { return p.getConversation(1U); }, 1},
                 {[](auto& p) { return p.getConversation(4U); }, -1},
                 {[](auto& p) { return p.getConversation(std::string("c1")); }, 2},
                 {[](auto& p) { return p.getConversation(std::string("c2")); }, -1},
                 {[&](auto& p) { return p.getConversationByConversationID(first); }, 0},
                 {[](auto& p) { return p.getConversationByConversationID(""); }, -1},
                 {[](auto& p) { return p.getConversationByContact("Bob", "Low", "4712"); }, 2},
                 {[&](auto& p) { return p.getConversationByContact("", ANONYMOUS, ""); }, 1},
                 {[&](auto& p) { return p.getConversationByContact(ANONYMOUS, "", ""); }, -1},
                 {[](auto& p) { return p.getDirectConversationByContact("Bob", "Low", "4711"); }, 0},
                 {[](auto& p) { return p.getDirectConversationByContact("", "", "4712"); }, -1},
                 {[](auto& p) { return p.getConversationForUser("u1"); }, 0},
                 {[](auto& p) { return p.getConversationForUser(""); }, -1}};
    ConversationListProvider withoutSource(&phone.items);
    provider.setSource(&source, false);
    for (std::size_t i = 0; i < std::size(cases); ++i)
    {
        EXPECT_EQ(placeOf(cases[i].lookUp(provider)), cases[i].place) << i;
        EXPECT_EQ(cases[i].lookUp(withoutSource), nullptr) << i;
    }
    EXPECT_TRUE(provider.hasConversationWithConversationId(first));
    EXPECT_FALSE(provider.hasConversationWithConversationId("other"));
    EXPECT_EQ(provider.getMatchingConversationIds("lee"), (Notes{first, ""}));
    EXPECT_EQ(source.getInUseConversationIds().size(), 4U);
}

TEST_F(Served, RequestsGoToTheSourceIfThereIsOne)
{
    for (AggregatorConversationSource* served : {static_cast<AggregatorConversationSource*>(nullptr), &source})
    {
        provider.setSource(served, false);
        provider.deleteConversation("x");
        provider.deleteConversations();
        EXPECT_EQ(provider.markAllMissedCallsRead(), served != nullptr);
        EXPECT_EQ(placeOf(provider.getConversationForUser("u2")), served ? 0 : -1); // a group: the source is asked
        EXPECT_EQ(provider.getMatchingConversationIds("lee").empty(), !served);
        EXPECT_EQ(provider.hasConversationWithConversationId(aggregator.list->atIndex(0)->getConversationId()),
                  served != nullptr);
    }
    source.clearSearchResults();
    EXPECT_EQ(notes, (Notes{"a list", "a delete x", "a delete all", "a read", "a user u2", "a clear"}));
    AggregatorConversationSource{other};
    EXPECT_EQ(other.observers.size(), 1U); // that of the fixture
    EXPECT_EQ(provider.getSourceTypeWithPriority(), 1U);
}

TEST_F(Served, ObserversAreToldTheListOfTheSourceOfTheMoment)
{
    Display first, second, third, late;
    for (Display* display : {&first, &second, &third, &first, static_cast<Display*>(nullptr)})
    {
        provider.addObserver(display);
    }
    const auto told = [&] { return std::vector<int>{first.timesTold, second.timesTold, third.timesTold}; };
    provider.start();
    EXPECT_EQ(first.lastList, nullptr);
    provider.setSource(&source, false);
    EXPECT_EQ(told(), (std::vector<int>{1, 1, 1}));
    aggregator.tellListChanged();
    EXPECT_EQ(told(), (std::vector<int>{2, 2, 2}));
    EXPECT_EQ(first.lastList, aggregator.list.get());

    first.whenTold = [&]
    {
        provider.removeObserver(&first);
        provider.removeObserver(&second);
        provider.addObserver(&late);
    };
    provider.setSource(&otherSource, true);
    EXPECT_EQ(told(), (std::vector<int>{3, 2, 3}));
    EXPECT_EQ(third.lastList, other.list.get());
    aggregator.tellListChanged(); // the source no longer
    EXPECT_EQ(late.timesTold, 0);
    provider.setSource(nullptr, true);
    other.tellListChanged();
    EXPECT_EQ(late.timesTold, 1);
    EXPECT_EQ(late.lastList, other.list.get());
}
} // namespace
