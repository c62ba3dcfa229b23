#include "aggregation/AggregatorFixture.h"

#include "ConversationAPI/ConversationAggregator.h"
#include "ConversationAPI/ConversationSearchObserverIfc.h"
#include "ConversationAPI/DirectoryServiceConversationSource.h"
#include "support/InMemoryDirectory.h"

namespace
{
using namespace Aggregation;

struct DirectoryFlowsTest : testing::Test, World
{
    DirectoryFlowsTest()
    {
        directory.observer = &source;
        ids.setConversationSources({&aggregator, &source});
        combined.setSources({&aggregator, &source}, true);
        aggregator.sourceSubscribed();
        history("e1", "11");
        history("e2", "22");
    }
    ~DirectoryFlowsTest() override { combined.setSources({}, false); }

    void expectRows(const std::string& what, const Texts& expected)
    {
        Texts shown;
        for (const Conversation* row : *combined.getConversations())
        {
            shown.push_back(describe(*row));
        }
        EXPECT_EQ(shown, expected) << what;
    }

    Testing::InMemoryDirectory directory;
    DirectoryServiceConversationSource source{&conversations, &directory, nullptr};
    ConversationAggregator combined{&items};
};

TEST_F(DirectoryFlowsTest, AContactGathersItsCallsAndGivesThemBack)
{
    const auto write = [&](const std::string& name, const std::string& mobile, const Testing::Fields& id)
    {
        Testing::Fields fields = {{"Firstname", name}, {"Office", "11"}, {"Mobile", mobile}, {"DefaultNumber", "2"}};
        fields.insert(fields.end(), id.begin(), id.end());
        directory.write(Testing::entryXml(fields), true);
    };
    const Testing::Fields known = {{"UniqueID", "c1"}};
    write("Ann", "22", {});
    expectRows("new", {"Ann: e2 e1"});
    const std::string row = combined.getConversation(0U)->getConversationId();
    write("Anna", "22", known);
    expectRows("renamed", {"Anna: e2 e1"});
    event("k", ActiveCall::INCOMING_CALL, "22");
    event("k", ActiveCall::LOCAL_ON_HOLD, "22");
    expectRows("called", {"Anna: k/2 e2 e1"});
    calls.clearActiveCallEvent("k");
    aggregator.conversationItemsChanged();
    source.phonebookDatabaseUpdated(true);
    expectRows("everything anew", {"Anna: e2 e1"});
    EXPECT_EQ(combined.getConversation(0U)->getConversationId(), row);
    write("Anna", "", known);
    expectRows("lost a number", {"22: e2", "Anna: e1"});
    EXPECT_EQ(combined.getConversation(1U)->getConversationId(), row);
}

TEST_F(DirectoryFlowsTest, WhoIsOnlyLookedAtGroupsNoCalls)
{
    struct : ConversationSearchObserverIfc
    {
        void searchResults(const std::string&, const Texts& ids, SearchResultsType) override { id = ids.at(0); }
        void searchEnded(const std::string&) override {}
        std::string id;
    } found;
    source.getMatchingConversationIds("p", "s", &found);
    source.directorySearchResults("s", {{{{"Surname", "Poe"}, {"Office", "22"}, {"Mobile", "23"}}}});
    const Conversation* shown = combined.getConversationByConversationID(found.id);
    EXPECT_EQ(describe(*shown), "Poe: e2");
    EXPECT_EQ(combined.getConversationByConversationID(found.id), shown) << "nothing has changed";
    history("e3", "22");
    aggregator.conversationItemsChanged();
    EXPECT_EQ(describe(*combined.getConversationByConversationID(found.id)), "Poe: e3 e2");
    combined.clearTemporaryConversations();
    history("e4", "23");
    aggregator.conversationItemsChanged();
    expectRows("a call of the other number", {"23: e4", "22: e3 e2", "11: e1"});
}

TEST_F(DirectoryFlowsTest, WhomADirectoryFoundIsShownSavedAndCalled)
{
    DirectoryContact hit;
    hit.searchId = "other";
    hit.lastName = "Poe";
    hit.workNumber1 = "22";
    hit.mobileNumber = "23";
    source.directorySearchResponseEvent(hit);
    expectRows("only found", {"22: e2", "11: e1"});
    hit.searchId = "GROUPPICKUP_CALLED";
    source.directorySearchResponseEvent(hit);
    expectRows("shown for a group's call", {"Poe: e2", "11: e1"});
    source.saveContact(combined.getConversationByConversationID(source.getTemporaryConversationIds().at(0)));
    combined.clearTemporaryConversations();
    event("k", ActiveCall::INCOMING_CALL, "23");
    expectRows("saved and called", {"Poe: k/10 e2", "11: e1"});
}
} // namespace
