#include "ConversationAPI/AggregatorSwitch.h"
#include "ConversationAPI/AggregatorConversationSource.h"
#include "ConversationAPI/ConversationListProvider.h"
#include "support/Phone.h"
#include "support/RecordingAggregator.h"

namespace
{
using namespace Testing;

const std::string LOCAL = "ConversationListState", CLOUD = "QuorvelConversationListState";

struct Switched : testing::Test
{
    Switched()
    {
        for (RecordingAggregator* each : {&normal, &cloud, &listed})
        {
            each->list->push_back(phone.conversation({phone.missed(1, "4711")}).release());
            each->list->atIndex(0)->setUserId("u");
        }
        provider.setSource(&source, false);
        notes.clear();
    }

    Phone phone;
    Notes notes;
    RecordingAggregator normal{"n", notes}, cloud{"q", notes}, listed{"p", notes};
    AggregatorConversationSource source{listed};
    ConversationListProvider provider{&phone.items};
    Display ann{"ann"}, bob{"bob"}, eve{"eve"};
    AggregatorSwitch door;
};

/** The provider answers from its list, which is that of its own source, and passes only requests on. */
TEST_F(Switched, QueriesGoToTheAggregatorOfTheMomentOrToTheProvider)
{
    using Door = AggregatorSwitch;
    const auto nothing = static_cast<Conversation*>(nullptr);
    const std::string id = listed.list->atIndex(0)->getConversationId();
    const struct
    {
        std::function<Conversation*(Door&)> ask;
        std::string note;
        bool isForHandler, isAnswered;
    } cases[] = {
        {[&](Door& d) { return (d.clearTemporaryConversations(), nothing); }, "clear", false, false},
        {[&](Door& d) { return (d.makeTemporaryConversationPermanent(listed.list->atIndex(0)), nothing); },
         "keep " + id, false, false},
        {[&](Door& d) { return (d.makeConversationPermanent("x"), nothing); }, "keep id x", false, false},
        {[&](Door& d) { return (d.conversationsChanged(), nothing); }, "changed", false, false},
        {[](Door& d) { return d.getConversationThatHasAnyNumberMatching("1"); }, "has 1", false, true},
        {[](Door& d) { return d.getConversation(std::string("c")); }, "call c", false, true},
        {[](Door& d) { return d.getConversationByConversationIDFromAggregator("x"); }, "id x", false, true},
        {[](Door& d) { return d.getConversations()->atIndex(0); }, "list", true, true},
        {[](Door& d) { return d.getConversation(0U); }, "at 0", true, true},
        {[&](Door& d) { return d.getConversationByConversationIDFromConversationHandler(id); }, "id " + id, true, true},
        {[](Door& d) { return d.getConversationByContact("A", "B", "4711"); }, "any AB4711", true, true},
        {[](Door& d) { return d.getDirectConversationByContact("A", "B", "4711"); }, "1:1 AB4711", true, true},
        {[](Door& d) { return d.getConversationForUser("u"); }, "user u", true, true},
        {[&](Door& d) { return (d.deleteConversation("x"), nothing); }, "delete x", true, false},
        {[&](Door& d) { return (d.deleteConversations(), nothing); }, "delete all", true, false},
        {[](Door& d) { return d.markAllMissedCallsRead() ? nullptr : d.getConversation(9U); }, "read", true, false},
    };
    door.addNormalAggregator(&normal);
    door.addQuorvelAggregator(&cloud);
    door.addConversationListProvider(&provider);
    door.addConversationEventObserver(&ann);
    for (const bool isProviderUsed : {false, true})
    {
        isProviderUsed ? door.useConversationListProvider() : door.useConversationAggregator();
        for (RecordingAggregator* current : {&cloud, &normal})
        {
            current == &cloud ? door.useQuorvelConversationAggregator() : door.useNormalConversationAggregator();
            for (const auto& one : cases)
            {
                notes.clear();
                const bool isForProvider = one.isForHandler && isProviderUsed;
                const RecordingAggregator& asked = isForProvider ? listed : *current;
                EXPECT_EQ(one.ask(door), one.isAnswered ? asked.list->atIndex(0) : nullptr) << one.note;
                EXPECT_EQ(notes, Notes(isForProvider && one.isAnswered ? 0 : 1, asked.name + " " + one.note));
            }
            current->tellListChanged();
            EXPECT_EQ(ann.lastList, current->list.get());
        }
    }
}

TEST_F(Switched, EventObserversFollowTheAggregatorOfTheMoment)
{
    EXPECT_EQ(door.getCurrentConversationState(), CLOUD); // nothing is current, nor is there a cloud
    const struct
    {
        std::function<void()> act;
        Notes told;
        RecordingAggregator& current;
    } steps[] = {
        {[&] { door.addNormalAggregator(&normal); }, {}, normal},
        {[&] { door.addConversationEventObserver(&ann); }, {"n add ann"}, normal},
        {[&] { door.addConversationEventObserver(&bob); }, {"n add bob"}, normal},
        {[&] { door.addConversationEventObserver(&ann); }, {}, normal},
        {[&] { door.addConversationEventObserver(nullptr); }, {}, normal},
        {[&] { door.addConversationEventObserverToProvider(&eve); }, {}, normal},
        {[&] { door.useQuorvelConversationAggregator(); }, {}, normal},
        {[&] { door.addConversationList(&eve, CLOUD); }, {}, normal},
        {[&] { door.addQuorvelAggregator(&cloud); }, {}, normal},
        {[&] { door.useQuorvelConversationAggregator(); },
         {"n remove ann", "n remove bob", "q add ann", "q add bob"},
         cloud},
        {[&] { door.useQuorvelConversationAggregator(); }, {}, cloud},
        {[&] { door.removeConversationEventObserver(&ann); }, {}, cloud},
        {[&] { door.removeConversationEventObserver(&eve); }, {"q remove eve"}, cloud}, // and forgets Bob
        {[&] { door.useNormalConversationAggregator(); }, {"q remove ann", "n add ann"}, normal},
        {[&] { door.useNormalConversationAggregator(); }, {}, normal},
        {[&] { door.removeConversationEventObserver(&eve); }, {"n remove eve"}, normal}, // and forgets Ann
        {[&] { door.removeConversationEventObserver(&eve); }, {"n remove eve"}, normal},
        {[&] { door.useQuorvelConversationAggregator(); }, {}, cloud},
        {[&] { door.addConversationList(&eve, LOCAL); }, {"n add eve"}, cloud},
        {[&] { door.addConversationList(&eve, CLOUD); }, {"q add eve"}, cloud},
        {[&] { door.addConversationList(&eve, "Other"); }, {}, cloud},
    };
    for (const auto& step : steps)
    {
        notes.clear();
        step.act();
        EXPECT_EQ(notes, step.told) << &step - steps;
        EXPECT_EQ(door.getCurrentConversationState(), &step.current == &cloud ? CLOUD : LOCAL) << &step - steps;
        EXPECT_EQ(door.getConversations(), step.current.list.get()) << &step - steps;
    }
    door.addConversationListProvider(&provider);
    door.addConversationEventObserverToProvider(&eve);
    listed.tellListChanged();
    EXPECT_EQ(eve.timesTold, 1);
}
} // namespace
