#include "CombinedFixture.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/ConversationListMerger.h"
#include "support/Phone.h"

#include <random>

namespace
{
using namespace Aggregation;

/** Of the last number, callers of whom nothing is known. */
const Texts PARTIES = {"4711", "4712", "4713", "4714", "-"};

struct RandomCombinedDay : Combined
{
    explicit RandomCombinedDay(unsigned seed) : random(seed) {}

    std::size_t upTo(std::size_t end) { return random() % end; }
    std::string anyOf(const Texts& all) { return all[upTo(all.size())]; }

    std::string next()
    {
        const std::size_t kind = upTo(16);
        if (kind < 6 && live.size() < 3)
        {
            live.push_back("c" + std::to_string(now()));
            return anyOf({"ring ", "dial "}) + live.back() + " " + anyOf(PARTIES);
        }
        if (kind < 9 && !live.empty())
        {
            return anyOf({"answer ", "hold ", "held "}) + anyOf(live);
        }
        if (kind < 11 && !live.empty())
        {
            const auto ended = live.begin() + static_cast<std::ptrdiff_t>(upTo(live.size()));
            const std::string text = "end " + *ended;
            live.erase(ended);
            return text;
        }
        if (kind == 11 && live.empty()) // a contact that comes during calls: see CombinedListTest
        {
            const std::size_t who = upTo(2); // contacts that share a number are not told apart
            const std::string name = who == 0 ? "Ann" : "Bob", work = PARTIES[2 * who], mobile = PARTIES[2 * who + 1];
            const bool goes = upTo(4) == 0 && directory.named(name);
            const bool hasOne = upTo(2) == 0;
            return "contact " + name + " " + (goes ? "gone" : work + (hasOne ? "" : " " + mobile));
        }
        if (kind == 12)
        {
            return anyOf({"regroup", "combine", "read", "delete e" + std::to_string(upTo(entries + 1U))});
        }
        return "past e" + std::to_string(++entries) + " " + anyOf(PARTIES);
    }

    /** What a display may do while it is told something. */
    std::string reaction()
    {
        return "on " + anyOf({"leave", "combine", "regroup", "clear", "read", "delete e" + std::to_string(upTo(9))});
    }

    std::mt19937 random;
    Texts live;
    unsigned entries = 0;
};

TEST(CombinedRandomTest, DisplayAndSourcesAgreeAfterEveryEvent)
{
    for (unsigned seed = 1; seed <= 40; ++seed)
    {
        RandomCombinedDay day(seed);
        std::string past;
        for (int step = 0; step < 80; ++step)
        {
            if (seed % 2 == 0 && day.upTo(3) == 0)
            {
                past += day.reaction() + "\n";
                day.run(past.substr(past.rfind("on ")));
            }
            const std::string event = day.next();
            past += event + "\n";
            const std::string before = day.shown();
            day.run(event);
            day.screen.reaction = [] {};
            if (seed % 2 != 0 && (event == "regroup" || event == "combine"))
            {
                ASSERT_EQ(day.shown(), before) << "seed " << seed << "\n" << past;
            }
            if (seed % 2 == 0)
            {
                day.combined.removeObserver(&day.screen);
                day.combined.addObserver(&day.screen);
                day.combined.start();
            }
            ASSERT_EQ(day.disagreements(), "") << "seed " << seed << "\n" << past << day.shown();
        }
    }
}

/** Conversations of all sorts: what tells that two are the same may be any of their traits. */
struct RandomList : Testing::Phone
{
    explicit RandomList(unsigned seed) : random(seed) {}

    std::string anyOf(const Texts& all) { return all[random() % all.size()]; }
    std::string number() { return anyOf({"4711", "4712", "4713", "4714", "4715", "4716", ""}); }

    ConversationItem* item()
    {
        const long time = ++now;
        switch (random() % 8)
        {
        case 0:
            return live(anyOf({"c1", "c2", "GPU"}),
                        random() % 2 ? ActiveCall::GROUP_PICKUP_INCOMING : ActiveCall::GROUP_PICKUP_CONNECTED, time,
                        number());
        case 1:
            return live(anyOf({"c1", "c2", "c3"}), ActiveCall::CONNECTED, time, number());
        case 2:
            return live(anyOf({"c1", "c2"}), ActiveCall::CONFERENCE, time, {party(number()), party(number())});
        case 3:
            return groupCall(time, number(), anyOf({"g", "h"}));
        case 4:
            return missed(time, "", "", std::string(ANONYMOUS_NAME));
        default:
            return missed(time, number(), anyOf({"Ann", "Bob", ""}), "", "e" + std::to_string(now));
        }
    }

    void fill(ConversationList& list)
    {
        const std::size_t count = random() % 12;
        while (list.size() < count)
        {
            auto made = random() % 3 ? conversation({item()}) : contact(anyOf({"Lee", "Fox"}), number(), number());
            made->setExchangeContactId(random() % 4 ? "" : anyOf({"x", "y"}));
            if (random() % 3 == 0)
            {
                made->append(item());
            }
            list.push_back(made.release());
        }
    }

    std::mt19937 random;
    long now = 100;
};

void copyInto(ConversationList& to, const ConversationList& from)
{
    std::for_each(from.begin(), from.end(), [&to](const auto* each) { to.push_back(each->clone()); });
}

Texts texts(const ConversationList& list)
{
    Texts all;
    for (const Conversation* each : list)
    {
        all.push_back(each->toDebugString() + describe(*each) + join(each->getConversationNumbers()) +
                      join(each->getJournalServiceEntries()) + std::to_string(each->getContactSource()));
    }
    return all;
}

TEST(CombinedRandomTest, MergingByIndexIsMergingByPairs)
{
    std::size_t merged = 0;
    for (unsigned seed = 1; seed <= 400; ++seed)
    {
        RandomList make(seed);
        ConversationList byIndex, byPairs, source;
        make.fill(byIndex);
        make.fill(source);
        copyInto(byPairs, byIndex);
        std::set<Conversation*> notMerged(source.begin(), source.end());
        for (Conversation* row : byPairs)
        {
            const Conversation* own =
                source.find(ConversationListConditions::ConversationIDCondition(row->getConversationId()));
            const bool isContacts = own && own->getContactSource() != Conversation::NO_CONTACT;
            for (Conversation* other : source)
            {
                if (isContacts && other->getContactSource() != Conversation::NO_CONTACT && other != own)
                {
                    continue; // it may share the number
                }
                if (other->initialItem() && row->isSameConversationAs(*other->initialItem()) &&
                    !row->isOtherContactThan(*other))
                {
                    for (ConversationItem* orphan : row->foldIn(*other, {false, true, true}))
                    {
                        other->items().empty() ? row->append(orphan) : delete orphan;
                    }
                    notMerged.erase(other);
                }
            }
        }
        ConversationListMerger merger(source);
        byIndex.foreach (merger);
        const std::vector<Conversation*> left = merger.notMerged();
        ASSERT_EQ(std::set<Conversation*>(left.begin(), left.end()), notMerged) << seed;
        ASSERT_EQ(texts(byIndex), texts(byPairs)) << seed;
        merged += source.size() - left.size();
    }
    EXPECT_GT(merged, 400U);
}
} // namespace
