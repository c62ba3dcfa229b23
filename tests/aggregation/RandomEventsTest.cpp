#include "AggregatorFixture.h"
#include "support/Phone.h"

#include <random>

namespace
{
using namespace Aggregation;

/** Of the last number, callers of whom nothing is known. */
const Texts NUMBERS = {"4711", "4712", "030 1234567", "4714", "4715", ""};

struct RandomDay : World
{
    explicit RandomDay(unsigned seed, bool hasContacts) : random(seed)
    {
        std::for_each(NUMBERS.begin(), NUMBERS.end(), [this](const auto& number) { past(number); });
        if (hasContacts)
        {
            contacts.push_back(contact("Ann", NUMBERS[0], NUMBERS[1]));
            contacts.push_back(contact("Bob", NUMBERS[2], NUMBERS[3]));
        }
    }

    std::size_t upTo(std::size_t end) { return random() % end; }
    const std::string& anyNumber() { return NUMBERS[upTo(NUMBERS.size())]; }
    auto anyCall() { return std::next(live.begin(), static_cast<std::ptrdiff_t>(upTo(live.size()))); }
    void past(const std::string& number) { history("e" + std::to_string(journal.held.size()), number); }

    void begin()
    {
        const std::string id = "c" + std::to_string(now());
        live[id] = anyNumber();
        event(id, upTo(2) ? ActiveCall::INCOMING_CALL : ActiveCall::OUTGOING_CALL, live[id]);
    }

    void change()
    {
        static const ActiveCall::activeCallState states[] = {ActiveCall::CONNECTED, ActiveCall::LOCAL_ON_HOLD,
                                                             ActiveCall::REMOTE_ON_HOLD, ActiveCall::CALL_INFO_UPDATE};
        const auto call = anyCall();
        call->second = upTo(4) == 0 ? anyNumber() : call->second;
        event(call->first, states[upTo(4)], call->second);
    }

    void end()
    {
        const auto call = anyCall();
        calls.clearActiveCallEvent(call->first);
        past(call->second);
        live.erase(call);
    }

    std::string step()
    {
        const std::size_t kind = upTo(12);
        if (kind < 5 && live.size() < (kind < 2 ? 4U : 1U))
        {
            begin();
            return "begin";
        }
        if (kind < 7 && !live.empty())
        {
            kind < 5 ? change() : end();
            return kind < 5 ? "change" : "end";
        }
        if (kind == 7)
        {
            aggregator.conversationItemsChanged();
            return "rebuild";
        }
        if (kind == 8 && !contacts.empty())
        {
            aggregator.conversationUpdated(contacts[upTo(contacts.size())].get());
            return "contact";
        }
        past(anyNumber());
        return "history";
    }

    /** Which conversation the history of each number stands in. */
    std::map<std::string, std::string> historyIds() const
    {
        std::map<std::string, std::string> found;
        for (const auto& item : journal.held)
        {
            const std::string id = idOf(item->getItemId());
            const std::string number = item->participants().front().getComparableNumber();
            found.insert_or_assign(number, id == "none" ? found[number] : id);
        }
        return found;
    }

    std::mt19937 random;
    std::vector<std::unique_ptr<Conversation>> contacts;
    std::map<std::string, std::string> live;
};

TEST(RandomEventsTest, NothingIsLostOrShownTwiceAndIdentifiersStay)
{
    for (unsigned seed = 1; seed <= 12; ++seed)
    {
        const bool hasContacts = seed % 2 == 0;
        RandomDay day(seed, hasContacts);
        const auto before = day.historyIds();
        for (int step = 0; step < 120; ++step)
        {
            const std::string what = day.step();
            SCOPED_TRACE(std::to_string(seed) + what + std::to_string(step) + testing::PrintToString(day.rows()));
            ASSERT_EQ(day.contradictions(), "");
            const Texts ids = day.aggregator.getInUseConversationIds();
            ASSERT_TRUE(Testing::tellsTheHashesOf(ids, day.aggregator));
            if (!hasContacts)
            {
                ASSERT_EQ(day.historyIds(), before);
                ASSERT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), ids.size());
            }
        }
        while (!day.live.empty())
        {
            day.end();
        }
        day.aggregator.conversationItemsChanged();
        EXPECT_EQ(day.contradictions(), "");
        std::set<std::string> ids;
        for (const auto& of : day.historyIds())
        {
            ids.insert(of.second);
        }
        EXPECT_EQ(ids.size(), before.size() - (hasContacts ? 2 : 0)) << "contacts unite their numbers";
        EXPECT_EQ(day.list().size(), ids.size());
    }
}
} // namespace
