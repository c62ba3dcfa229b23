#include "ConversationAPI/ConversationList.h"
#include "support/Phone.h"

#include <random>

namespace
{
using namespace ConversationAPI;
using Testing::ItemInState;

constexpr int STATES = 27;
const std::set<int> ACTIVE_OR_CLEARING = {1, 2, 3, 8, 15, 16, 18, 26};
const std::set<int> PROGRESSING = {10, 11, 22};
const std::set<int> LIVE = {1, 2, 3, 8, 10, 11, 15, 16, 17, 18, 22, 26};
const std::set<int> ISOLATED_OR_TRANSFERRING = {18, 19, 26};
const std::set<int> HISTORY = {4, 5, 6, 14, 24, 25};

bool in(const std::set<int>& states, int state)
{
    return states.count(state) != 0;
}

struct Fact
{
    int state;
    long time;
    std::string itemId;
    std::string callId;
};

/** The order of items, told once more by state numbers. */
bool precedes(const Fact& a, const Fact& b)
{
    if (!a.itemId.empty() && a.itemId == b.itemId)
    {
        return false;
    }
    if (in(LIVE, a.state) && in(LIVE, b.state) && a.callId == b.callId)
    {
        return false;
    }
    if ((a.state == 1) != (b.state == 1))
    {
        return a.state == 1;
    }
    if (in(ACTIVE_OR_CLEARING, a.state) != in(ACTIVE_OR_CLEARING, b.state))
    {
        return in(ACTIVE_OR_CLEARING, a.state);
    }
    if (in(ACTIVE_OR_CLEARING, a.state) && in(ISOLATED_OR_TRANSFERRING, b.state))
    {
        return true;
    }
    if (in(ACTIVE_OR_CLEARING, b.state) && in(ISOLATED_OR_TRANSFERRING, a.state))
    {
        return false;
    }
    if (in(PROGRESSING, a.state) != in(PROGRESSING, b.state))
    {
        return in(PROGRESSING, a.state);
    }
    if (a.state == 13 || b.state == 13)
    {
        return a.state == 13;
    }
    if (in(HISTORY, b.state) && a.state == 23)
    {
        return true;
    }
    if (in(HISTORY, a.state) && b.state == 23)
    {
        return false;
    }
    return a.time > b.time;
}

std::string told(const Fact& fact)
{
    return std::to_string(fact.state) + "@" + std::to_string(fact.time) + "/" + fact.itemId + "/" + fact.callId;
}

TEST(ItemOrderTest, AllStatesTimesAndIds)
{
    std::vector<Fact> facts;
    for (int state = 0; state < STATES; ++state)
    {
        for (const long time : {5L, 7L})
        {
            for (const char* itemId : {"", "a", "b"})
            {
                facts.push_back({state, time, itemId, ""});
                facts.push_back({state, time, itemId, "1"});
            }
        }
    }
    std::vector<std::unique_ptr<ItemInState>> items;
    for (const Fact& fact : facts)
    {
        items.push_back(std::make_unique<ItemInState>(fact.state, fact.time, fact.itemId, fact.callId));
        items.back()->setModificationTimeStampUTC(fact.time == 5 ? 9 : 8); // turns the times round
    }
    for (std::size_t a = 0; a < facts.size(); ++a)
    {
        for (std::size_t b = 0; b < facts.size(); ++b)
        {
            const Fact &x = facts[a], &y = facts[b];
            const bool expected = precedes(x, y);
            ASSERT_EQ(*items[a] < *items[b], expected) << told(x) << " and " << told(y);
            const Fact late = {x.state, x.time == 5 ? 9 : 8, x.itemId, x.callId};
            const Fact later = {y.state, y.time == 5 ? 9 : 8, y.itemId, y.callId};
            ASSERT_EQ(items[a]->lessThanOtherConsideringModificationTime(*items[b]), precedes(late, later))
                << told(late) << " and " << told(later);
        }
    }
}

/** Sorts conversations of one item each as a list does and answers the places from which they came. */
std::vector<std::size_t> sortedByList(Testing::Phone& phone, const std::vector<Fact>& facts)
{
    ConversationList list;
    std::map<const Conversation*, std::size_t> places;
    for (const Fact& fact : facts)
    {
        auto* item = fact.state < 0 ? nullptr : new ItemInState(fact.state, fact.time, fact.itemId, fact.callId);
        Conversation* conversation = phone.conversations.createConversation(item);
        places.emplace(conversation, places.size());
        list.push_back(conversation);
    }
    list.sort();
    std::vector<std::size_t> sorted;
    std::transform(list.begin(), list.end(), std::back_inserter(sorted), [&](const auto* one) { return places[one]; });
    return sorted;
}

bool goesFirst(const Fact& a, const Fact& b)
{
    return a.state < 0 || b.state < 0 ? a.state >= 0 && b.state < 0 : precedes(a, b);
}

TEST(ItemOrderTest, AListSortsStably)
{
    // Within each of these pools the order has no circles, so that there is one right result; -1 has no item.
    const std::vector<std::vector<int>> pools = {
        {0, 1, 2, 4, 5, 6, 7, 8, 9, 10, 11, 12, 14, 15, 16, 17, 19, 20, 21, 22, 24, 25, -1},
        {1, 3, 4, 5, 6, 10, 14, 22, 23, 24, 25, -1}};
    Testing::Phone phone;
    std::mt19937 random(7);
    const auto draw = [&random](std::size_t below) { return static_cast<std::size_t>(random()) % below; };
    for (int round = 0; round < 120; ++round)
    {
        const std::vector<int>& pool = pools[draw(pools.size())];
        std::vector<Fact> facts;
        for (std::size_t i = draw(30); i > 0; --i)
        {
            facts.push_back({pool[draw(pool.size())], static_cast<long>(draw(6)), "", std::to_string(i)});
        }
        if (!facts.empty())
        {
            facts[draw(facts.size())].state = round % 2 == 0 ? 13 : 18;
        }
        std::vector<std::size_t> expected;
        for (std::size_t place = 0; place < facts.size(); ++place)
        {
            const auto at = std::find_if(expected.begin(), expected.end(),
                                         [&](std::size_t other) { return goesFirst(facts[place], facts[other]); });
            expected.insert(at, place);
        }
        ASSERT_EQ(sortedByList(phone, facts), expected) << "round " << round;
    }
}
} // namespace
