#include "ConversationAPI/ConversationAggregator.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationSearchObserverIfc.h"
#include "ConversationAPI/ConversationSourceObserverIfc.h"
#include "ConversationAPI/QuorvelServiceObserverIfc.h"
#include "ConversationAPI/UserInfoObserverIfc.h"
#include "host/CloudNotices.h"
#include "host/DisplayModel.h"
#include "support/Phone.h"

#include <fstream>
#include <random>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace
{
using namespace ConversationAPI;
using namespace Host;
using Texts = std::vector<std::string>;
using Quorvel::PresenceState;

std::string joined(const Texts& texts)
{
    std::string all;
    std::for_each(texts.begin(), texts.end(), [&all](const auto& text) { all += (all.empty() ? "" : "|") + text; });
    return all;
}

/**
 * "Ann Lee/2: i1(Bob Ray) i0 @me [7]" is a conversation shown under that name, its user's presence 2, with items, the
 * first of which affects somebody, a participant and a number.
 */
std::string describeCloud(const Conversation& conversation)
{
    std::string text = conversation.getContactName() + "/" + std::to_string(conversation.getPresenceState()) + ":";
    for (const auto& item : conversation.items())
    {
        const std::string affected = joined(item->getAffectedParticipants());
        text += " " + item->conversationItemId() + (affected.empty() ? "" : "(" + affected + ")");
    }
    for (const ConversationParticipant& one : conversation.getGroupParticipants())
    {
        text += " @" + one.getUserId();
    }
    const Texts& numbers = conversation.getBridgeNumbers();
    return text + (numbers.empty() ? "" : " [" + joined(numbers) + (conversation.isModerated() ? "]!" : "]"));
}

template <typename Conversations>
Texts describeAll(const Conversations& conversations)
{
    Texts all;
    std::for_each(conversations.begin(), conversations.end(),
                  [&all](auto* one) { all.push_back(describeCloud(*one)); });
    return all;
}

class Listener : public ConversationSourceObserverIfc,
                 public QuorvelServiceObserverIfc,
                 public UserInfoObserverIfc,
                 public ConversationSearchObserverIfc
{
  public:
    void conversationUpdated(Conversation* conversation) override
    {
        note(conversation->getConversationId() + "/" + std::to_string(conversation->getUpdateReason()));
    }
    void conversationsChanged() override { note("changed"); }
    void removeActiveItemForCall(const std::string&, ConversationSourceIfc*) override { note("ended"); }
    bool hasConversationWithConversationId(const std::string&) override { return false; }
    void conversationSourcesReady() override { note("ready"); }
    void serviceLoggedIn(bool loggedIn) override { note(loggedIn ? "logged in" : "logged out"); }
    void userInfoChanged() override { note("me"); }
    void searchResults(const std::string& id, const Texts& found, SearchResultsType type) override
    {
        note(id + "=" + joined(found) + " " + std::to_string(type));
    }
    void searchEnded(const std::string& id) override { note(id + " ended"); }

    Texts take() { return std::exchange(told, {}); }

    Texts told;
    std::function<void()> reaction; ///< runs once

  private:
    void note(const std::string& text)
    {
        told.push_back(text);
        if (const auto reacts = std::exchange(reaction, nullptr))
        {
            reacts();
        }
    }
};

class CloudSourceTest : public testing::Test
{
  protected:
    CloudSourceTest()
    {
        source.addObserver(&listener);
        source.setMyUserInfoObserver(&listener);
        cloud.putUser({"me", "Max", "Mey", "Max Mey", "", "", PresenceState::AVAILABLE});
        cloud.putUser({"ann", "Ann", "Lee", "Ann Lee", "ann@x.org", "file:///pics/ann.png", PresenceState::AWAY});
        cloud.putUser({"bob", "Bob", "Ray", "", "", "/pics/bob.png", PresenceState::BUSY});
    }

    bool withAnn()
    {
        return cloud.putConversation({"direct", 0, "", "me", {"me", "ann"}, false, {}}) &&
               text("i1", "direct", "ann", 10);
    }

    void withGroup()
    {
        cloud.putConversation({"group", 1, "", "ann", {"me", "ann", "ann", "ghost"}, true, CloudMeeting{{"1"}, "7"}});
    }

    void logIn()
    {
        cloud.logIn("me");
        listener.take();
    }

    bool put(const std::string& id, int type, const std::string& one, const std::string& other)
    {
        return cloud.putConversation({id, type, "Topic", "ann", {one, other}, false, {}});
    }

    bool text(const std::string& id, const std::string& conversation, const std::string& creator, long time)
    {
        return cloud.putItem({id, conversation, creator, time, 0, "", "hello", 0, {}});
    }

    bool notice(const std::string& id, const std::string& conversation, const std::string& affected, long time)
    {
        return cloud.putItem({id, conversation, "me", time, 0, "", "", 0, CloudSystemMessage{1, 1, {affected, "bob"}}});
    }

    bool user(const std::string& id, const std::string& first, const std::string& last, int presence)
    {
        return cloud.putUser({id, first, last, "", "", "", PresenceState(presence)});
    }

    bool remove(const std::string& id)
    {
        source.deleteConversation(id);
        return source.getConversation(id) == nullptr;
    }

    bool presence(const std::string& user, int state) { return cloud.setPresence(user, PresenceState(state)); }

    Conversation& at(const std::string& id) { return *source.getConversation(id); }

    Texts rows() const { return describeAll(*source.getConversations()); }

    Testing::Phone phone;
    Listener listener;
    CloudService cloud;
    QuorvelServiceConversationSource source{&phone.items, &phone.conversations, &listener};
    CloudNotices notices{cloud, source};
};

TEST_F(CloudSourceTest, LogsInAndOut)
{
    withAnn();
    EXPECT_EQ(listener.take(), Texts{}) << "before log-in";
    EXPECT_FALSE(cloud.logIn("nobody"));
    cloud.logIn("me");
    EXPECT_EQ(listener.take(), (Texts{"changed", "ready", "me", "logged in"}));
    EXPECT_EQ(source.displayName() + "/" + source.getUserId(), "Max Mey/me");
    EXPECT_EQ(rows(), Texts{"Ann Lee/2: i1"});

    cloud.logIn("me");
    EXPECT_EQ(listener.take(), (Texts{"changed", "logged in"}));
    cloud.putUser({"me", "Max", "Mey", "Maximilian", "", "", PresenceState::AVAILABLE});
    EXPECT_EQ(listener.take(), Texts{"me"});
    cloud.logOut();
    EXPECT_EQ(listener.take(), (Texts{"changed", "me", "logged out"}));
    EXPECT_EQ(source.displayName() + source.getUserId() + joined(rows()), "");
}

TEST_F(CloudSourceTest, NamesWhomADirectConversationIsWith)
{
    cloud.putUser({"short", "", "", "Shorty", "", "", PresenceState::UNKNOWN});
    cloud.logIn("me");
    const struct
    {
        const char* what;
        Texts parties;
        std::string shown;
    } cases[] = {
        {"picture with prefix", {"me", "ann"}, "Ann Lee/2:|Ann|Lee|ann|/pics/ann.png"},
        {"picture without, no display name", {"bob", "me"}, "Bob Ray/3:|Bob|Ray|bob|/pics/bob.png"},
        {"an unknown user", {"me", "ghost"}, "/4:|||ghost|"},
        {"nobody but who made it", {"me"}, "Ann Lee/2:|Ann|Lee|ann|/pics/ann.png"},
    };
    for (const auto& one : cases)
    {
        cloud.putConversation({one.what, 5, "topic", "ann", one.parties, false, {}});
        const Conversation& made = at(one.what);
        std::string shown = describeCloud(made);
        for (const auto& text : {made.getFirstName(), made.getLastName(), made.getUserId(), made.getContactImagePath()})
        {
            shown += "|" + text;
        }
        EXPECT_EQ(shown, one.shown) << one.what;
        EXPECT_EQ(source.getConversationForUser(made.getUserId())->getUserId(), made.getUserId());
    }
    EXPECT_EQ(source.getConversationForUser(""), nullptr);
    cloud.putConversation({"display name alone", 0, "", "short", {"me"}, false, {}});
    EXPECT_EQ(describeCloud(at("display name alone")) + at("display name alone").getLastName(), "Shorty/4:Shorty");
}

TEST_F(CloudSourceTest, UsesThePictureOfTheDirectoryForWhoHasNone)
{
    const std::string path = "/tmp/ldappic";
    const std::string kept = path + ".kept"; // a picture that is there comes back
    const int otherRuns = open((path + ".lock").c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0666);
    flock(otherRuns, LOCK_EX);
    std::rename(path.c_str(), kept.c_str());
    std::ofstream(path) << "picture";
    cloud.putConversation({"own", 0, "", "me", {"me"}, false, {}});
    cloud.putConversation({"ghost", 0, "", "me", {"me", "ghost"}, false, {}});
    logIn();
    EXPECT_EQ(at("own").getContactImagePath(), path);
    EXPECT_EQ(at("own").getContactName(), "Max Mey") << "with nobody else, oneself";
    EXPECT_EQ(at("ghost").getContactImagePath(), "");
    std::remove(path.c_str());
    logIn();
    EXPECT_EQ(at("own").getContactImagePath(), "");
    std::rename(kept.c_str(), path.c_str());
    close(otherRuns);
}

TEST_F(CloudSourceTest, MakesItemsOfMessages)
{
    withAnn();
    logIn();
    cloud.putItem({"t", "direct", "me", 20, 25, "about", "hi", 3, {}});
    const ConversationItem& text = *at("direct").initialItem();
    EXPECT_EQ(text.getItemText() + text.getItemSubjectText() + text.getCreatorId(), "hiaboutme");
    EXPECT_EQ(text.creator().getName() + "/" + text.participants().front().getName(), "Max Mey/Ann Lee");
    EXPECT_EQ(text.timeStampUTC() + text.modificationTimeStampUTC() + text.getNumberOfAttachments(), 20 + 25 + 3);

    const struct
    {
        int cloudType, type, cloudReason, reason;
    } cases[] = {{0, 0, 0, 2}, {1, 1, 1, 0}, {2, 2, 2, 1}, {3, 3, 3, 2},  {4, 7, -1, 2}, {5, 7, 0, 2},
                 {6, 7, 0, 2}, {7, 4, 0, 2}, {8, 5, 0, 2}, {9, 6, 99, 2}, {10, 7, 0, 2}, {-1, 7, 0, 2}};
    for (const auto& one : cases)
    {
        CloudItem joins{"s", "direct", "ann", 30, 0, "", "", 0, {}};
        joins.systemMessage = CloudSystemMessage{one.cloudType, one.cloudReason, {"bob", "ghost"}};
        cloud.putItem(joins);
        const ConversationItem& item = *at("direct").initialItem();
        EXPECT_EQ(item.getType(), one.type) << one.cloudType;
        EXPECT_EQ(item.getAddParticipantReason(), one.reason) << one.cloudReason;
        EXPECT_EQ(item.getAffectedParticipants(), (Texts{"Bob Ray", "ghost"}));
        EXPECT_FALSE(item.getUserHasLeftOrJoined());
        joins.systemMessage->affectedUserIds = {"ann"};
        cloud.putItem(joins);
        EXPECT_TRUE(at("direct").initialItem()->getUserHasLeftOrJoined());
    }
    EXPECT_EQ(describeCloud(at("direct")), "Ann Lee/2: s(Ann Lee) t i1");
}

TEST_F(CloudSourceTest, TakesInEachChangeAndTellsItOnce)
{
    logIn();
    const struct
    {
        const char* what;
        std::function<bool()> change;
        Texts told, shown;
    } steps[] = {
        {"conversation", [&] { return withAnn(); }, {"direct/0", "direct/0"}, {"Ann Lee/2: i1"}},
        {"its item anew", [&] { return text("i1", "direct", "ann", 12); }, {"direct/0"}, {"Ann Lee/2: i1"}},
        {"presence", [&] { return presence("ann", 1); }, {"direct/2"}, {"Ann Lee/1: i1"}},
        {"the same again", [&] { return presence("ann", 1); }, {}, {"Ann Lee/1: i1"}},
        {"without conversation", [&] { return presence("bob", 0); }, {}, {"Ann Lee/1: i1"}},
        {"a value unheard of", [&] { return presence("ann", 9); }, {"direct/2"}, {"Ann Lee/4: i1"}},
        {"a user", [&] { return user("ann", "Ann", "Ray", 3); }, {"direct/0"}, {"Ann Ray/3: i1"}},
        {"notice", [&] { return notice("n", "direct", "x", 13); }, {"direct/0"}, {"Ann Ray/3: n(x|Bob Ray) i1"}},
        {"whom it affects", [&] { return user("x", "X", "", 0); }, {"direct/0"}, {"Ann Ray/3: n(X|Bob Ray) i1"}},
        {"others'", [&] { return put("others", 0, "ann", "bob"); }, {}, {"Ann Ray/3: n(X|Bob Ray) i1"}},
        {"theirs", [&] { return text("o", "others", "bob", 14); }, {}, {"Ann Ray/3: n(X|Bob Ray) i1"}},
        {"a group", [&] { return put("direct", 1, "me", "x"); }, {"changed"}, {"Topic/4: n(X|Bob Ray) i1 @me @x"}},
        {"with a stranger", [&] { return put("direct", 0, "me", "y"); }, {"changed"}, {"/4: n(X|Bob Ray) i1"}},
        {"with Ann again", [&] { return put("direct", 0, "me", "ann"); }, {"changed"}, {"Ann Ray/3: n(X|Bob Ray) i1"}},
        {"within one second", [&] { return text("i3", "direct", "ann", 13); }, {"direct/0"}, {"Ann Ray/3: i3 i1"}},
        {"whom nothing shows", [&] { return user("x", "Y", "", 0); }, {}, {"Ann Ray/3: i3 i1"}},
        {"deleted", [&] { return remove("direct"); }, {"changed"}, {}},
        {"deleted again", [&] { return remove("direct"); }, {}, {}},
        {"now mine", [&] { return put("others", 1, "me", "me"); }, {"others/0"}, {"Topic/4: o @me"}},
        {"not here", [&] { return remove("others"); }, {"changed"}, {}},
        {"and back", [&] { return text("i2", "direct", "me", 9); }, {"direct/0"}, {"Ann Ray/3: i3 i1 i2"}},
    };
    for (const auto& step : steps)
    {
        EXPECT_TRUE(step.change()) << step.what;
        EXPECT_EQ(listener.take(), step.told) << step.what;
        EXPECT_EQ(rows(), step.shown) << step.what;
        EXPECT_EQ(source.getInUseConversationIds().size(), step.shown.size());
    }
    EXPECT_EQ(at("direct").getUpdateReason(), Conversation::CONTENT_UPDATED);
    EXPECT_EQ(at("direct").items()[2]->participants().front().getName(), "Ann Ray") << "items show the new name";
    EXPECT_FALSE(text("i1", "elsewhere", "ann", 1) || cloud.putUser({}) || cloud.putConversation({}));
}

TEST_F(CloudSourceTest, KnowsParticipantsAndMeetingOfAGroup)
{
    withGroup();
    logIn();
    const auto shown = [this]
    {
        const Conversation& group = at("group");
        Texts texts{group.getContactName(), joined(group.getBridgeNumbers()), group.getGroupCallPin()};
        texts.push_back(group.isModerated() ? "moderated" : "free");
        texts.push_back(group.userIsAGroupParticipant() ? "in" : "out");
        for (const ConversationParticipant& one : group.getGroupParticipants())
        {
            texts.push_back(one.getUserId() + "=" + one.getName());
        }
        return joined(texts);
    };
    EXPECT_EQ(shown(), "Max Mey, Ann Lee, Caller.Unknown.XXX|1|7|moderated|in|me=Max Mey|ann=Ann Lee|"
                       "ghost=Caller.Unknown.XXX");
    text("i1", "group", "ghost", 5);
    user("ghost", "Gus", "Host", 3);
    EXPECT_EQ(shown(), "Max Mey, Ann Lee, Gus Host|1|7|moderated|in|me=Max Mey|ann=Ann Lee|ghost=Gus Host");
    EXPECT_EQ(at("group").initialItem()->creator().getName(), "Gus Host");
    EXPECT_EQ(at("group").initialItem()->participants().front().getName(), "Gus Host");

    EXPECT_TRUE(cloud.putSessionEvent({"group", false, {}}));
    EXPECT_TRUE(shown().find("|1|7|free|in|") != std::string::npos) << "no word of the meeting is no news of it";
    cloud.putConversation({"group", 1, "Plans", "ann", {"ann"}, false, {}});
    EXPECT_EQ(shown(), "Plans|||free|out|ann=Ann Lee") << "without meeting there is none to dial into";
    EXPECT_TRUE(cloud.putSessionEvent({"group", true, CloudMeeting{{"3", "2"}, ""}}));
    EXPECT_EQ(shown(), "Plans|3|2||moderated|out|ann=Ann Lee");
    EXPECT_EQ(listener.take(), Texts(5, "group/0"));
    EXPECT_FALSE(cloud.putSessionEvent({"unknown", false, {}}));
}

/** A service that knows nobody and nothing any more, and repeats itself. */
struct ForgetfulService : Quorvel::ServiceIfc
{
    std::vector<const Quorvel::ConversationIfc*> conversations() const override { return listed; }
    const Quorvel::ConversationIfc* conversation(const std::string&) const override { return nullptr; }
    const Quorvel::UserIfc* user(const std::string&) const override { return nullptr; }
    const Quorvel::UserIfc* me() const override { return nullptr; }

    std::vector<const Quorvel::ConversationIfc*> listed;
};

TEST_F(CloudSourceTest, KeepsWhatItKnowsWhenTheServiceForgets)
{
    withAnn();
    withGroup();
    logIn();
    const auto* direct = cloud.conversation("direct");
    const auto* item = direct->items().front();
    ForgetfulService forgetful;
    source.setQuorvelService(&forgetful);
    const Testing::LogCapture log(2);
    source.newConversation(nullptr);
    source.updatedConversationItem(nullptr);
    source.updatedUser(nullptr);
    source.processRTCSessionEvent(nullptr);
    EXPECT_EQ(log.count("without"), 4U);
    source.fetchMyUserData();
    source.updatedConversation(direct);
    source.updatedConversation(cloud.conversation("group"));
    source.newConversationItem(item);
    EXPECT_EQ(rows(), (Texts{"Ann Lee/2: i1", "Max Mey, Ann Lee, Caller.Unknown.XXX/4: @me @ann @ghost [1]!"}));
    EXPECT_EQ(source.getUserId() + at("direct").getUserId(), "meann");
    EXPECT_EQ(listener.take(), (Texts{"direct/0", "group/0", "direct/0"}));

    forgetful.listed = {nullptr, direct, direct};
    source.loadConversations();
    EXPECT_EQ(rows(), Texts{"/4: i1"});
    cloud.logOut();
    source.loadConversations();
    EXPECT_EQ(at("direct").getUserId(), "me");
    cloud.setObserver(nullptr);
    cloud.logIn("me");
    source.setQuorvelService(&cloud);
    source.updatedUser(cloud.me());
    EXPECT_EQ(rows().front(), "Ann Lee/2: i1") << "now it is known who is the other one";
    source.setQuorvelService(&forgetful);
    source.deleteConversations();
    source.newConversationItem(item);
    EXPECT_EQ(log.count("'direct', which it does not know"), 1U);
    source.setQuorvelService(nullptr);
    source.loggedIn();
    EXPECT_EQ(log.count("no cloud service"), 1U);
    EXPECT_EQ(rows(), Texts{});
}

TEST_F(CloudSourceTest, AnswersSearches)
{
    withAnn();
    cloud.putConversation({"plans", 1, "Plans with Ann", "me", {"me"}, false, {}});
    logIn();
    EXPECT_EQ(source.getMatchingConversationIds("ann"), (Texts{"direct", "plans"}));
    source.getMatchingConversationIds("LEE", "s1", &listener);
    source.getMatchingConversationIds("nobody", "s2", &listener);
    source.getMatchingConversationIds("", "s3", &listener);
    source.getMatchingConversationIds("lee", "s4", nullptr);
    EXPECT_EQ(listener.take(), (Texts{"s1=direct 1", "s1 ended", "s2= 1", "s2 ended", "s3 ended"}));
}

TEST_F(CloudSourceTest, LetsObserversChangeWhatTheyAreToldOf)
{
    /** What one observer, which reacts, and another one are told of a presence, and what is there then. */
    const auto told = [this](const std::function<void()>& reaction)
    {
        presence("ann", 2);
        withAnn();
        logIn();
        source.addObserver(&listener);
        source.addObserver(&listener);
        source.addObserver(nullptr);
        Listener second;
        source.addObserver(&second);
        listener.reaction = reaction;
        presence("ann", 1);
        source.removeObserver(&second);
        return joined(listener.take()) + "; " + joined(second.take()) + "; " + joined(rows());
    };
    EXPECT_EQ(told([&] { remove("direct"); }), "direct/2|changed; changed; ");
    EXPECT_EQ(told([&] { source.loadConversations(); }), "direct/2|changed; direct/2|changed; Ann Lee/1: i1");
    EXPECT_EQ(told([&] { text("i2", "direct", "me", 11); }), "direct/2|direct/0; direct/0|direct/2; Ann Lee/1: i2 i1");
    EXPECT_EQ(told([&] { cloud.logOut(); }), "direct/2|me|logged out|changed; changed; ");
    EXPECT_EQ(told([&] { source.removeObserver(&listener); }), "direct/2; direct/2; Ann Lee/1: i2 i1");
}

/** Whatever happens in whatever order: rows are those of the source, and that shows what one made anew shows. */
TEST_F(CloudSourceTest, ShowsWhatTheServiceHasAfterAnySequenceOfEvents)
{
    ConversationAggregator aggregator;
    DisplayModel display;
    aggregator.setSources({&source}, false);
    aggregator.addObserver(&display);
    logIn();
    aggregator.start();
    std::mt19937 random(5);
    const auto any = [&random](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    const auto anybody = [&] { return Texts{"me", "ann", "bob"}[static_cast<std::size_t>(any(3))]; };
    const auto conversation = [&] { return "c" + std::to_string(any(4)); };
    long now = 1000; // each item at another time: of one second, a conversation shows one item
    CloudConversation changed;
    const auto change = [&](int which) // two of them are at times direct, each with somebody else
    {
        changed = {"c" + std::to_string(which), which < 2 ? any(2) : 1, any(2) ? "T" : "", "me", {}, any(2) == 1, {}};
        changed.participantIds = {"me", which == 0 ? "ann" : (any(2) ? "bob" : "ghost"), anybody()};
        changed.meeting = any(2) ? std::optional(CloudMeeting{{std::to_string(any(9))}, ""}) : std::nullopt;
        return cloud.putConversation(changed);
    };
    const std::vector<std::function<bool()>> events{
        [&] { return user(anybody(), "F" + std::to_string(any(9)), "", any(5)); },
        [&] { return change(any(4)); },
        [&] { return text("i" + std::to_string(any(60)), conversation(), anybody(), ++now); },
        [&] { return notice("n" + std::to_string(any(60)), conversation(), anybody(), ++now); },
        [&] { return presence(anybody(), any(5)); },
        [&] {
            return cloud.putSessionEvent({conversation(), any(2) == 1, changed.meeting});
        },
        [&] { return (source.loadConversations(), true); },
    };
    const auto happens = [&] { events[static_cast<std::size_t>(any(7))](); };
    for (int step = 0; step < 600; ++step)
    {
        listener.reaction = any(3) == 0 ? happens : std::function<void()>();
        happens();
        listener.reaction = nullptr;
        QuorvelServiceConversationSource anew(&phone.items, &phone.conversations, nullptr);
        anew.setQuorvelService(&cloud);
        anew.loggedIn();
        ASSERT_THAT(describeAll(*anew.getConversations()), testing::UnorderedElementsAreArray(rows())) << step;
        ASSERT_THAT(describeAll(display.rows()), testing::UnorderedElementsAreArray(rows())) << step;
        ASSERT_EQ(display.rows(),
                  DisplayModel::Rows(aggregator.getConversations()->begin(), aggregator.getConversations()->end()));
    }
    aggregator.setSources({}, false);
}
} // namespace
