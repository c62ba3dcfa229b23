#include "CombinedFixture.h"

namespace
{
using namespace Aggregation;

struct Step
{
    std::string event, rows, told;
};
using Flow = std::vector<Step>;

const std::map<std::string, Flow>& flows()
{
    static const std::map<std::string, Flow> all = {
        {"a call of a party with history",
         {{"past e1 4711 Ann", "A Ann: e1", "new A@0"},
          {"past e2 4712 Bob", "B Bob: e2 | A Ann: e1", "new B@0"},
          {"ring c1 4711", "A Ann: c1/10 e1 | B Bob: e2", "moved A@0"},
          {"answer c1", "A Ann: c1/1 e1 | B Bob: e2", "moved A@0"},
          {"hold c1", "A Ann: c1/2 e1 | B Bob: e2", "moved A@0"},
          {"end c1", "B Bob: e2 | A Ann: e1", "moved A@1"},
          {"past e3 4711 Ann", "A Ann: e3 e1 | B Bob: e2", "moved A@0"},
          {"dial c2 4711", "A Ann: c2/11 e3 e1 | B Bob: e2", "moved A@0"},
          {"past e4 4711 Ann", "A Ann: c2/11 e4 e3 e1 | B Bob: e2", "moved A@0"},
          {"end c2", "A Ann: e4 e3 e1 | B Bob: e2", "moved A@0"}}},
        {"a call of a contact without history",
         {{"contact Ann 4711 4712", "A Ann:", "new A@0 list"},
          {"past e1 4713 Bob", "B Bob: e1 | A Ann:", "new B@0"},
          {"ring c1 4712", "A Ann: c1/10 | B Bob: e1", "moved A@0"},
          {"answer c1", "A Ann: c1/1 | B Bob: e1", "moved A@0"},
          {"end c1", "B Bob: e1 | A Ann:", "moved A@1"},
          {"past e2 4712", "A Ann: e2 | B Bob: e1", "moved A@0"}}},
        {"two calls on one number, the first ends first",
         {{"past e1 4711 Ann", "A Ann: e1", "new A@0"},
          {"answer c1 4711", "A Ann: c1/1 e1", "moved A@0"},
          {"hold c1", "A Ann: c1/2 e1", "moved A@0"},
          {"ring c2 4711", "A Ann: c1/2 e1 | B *Ann: c2/10", "new B@1"},
          {"answer c2", "B *Ann: c2/1 | A Ann: c1/2 e1", "moved B@0"},
          {"hold c2", "B *Ann: c2/2 | A Ann: c1/2 e1", "moved B@0"},
          {"end c1", "B *Ann: c2/2 | A Ann: e1", "moved A@1"},
          {"held c2", "B *Ann: c2/3 | A Ann: e1", "moved B@0"},
          {"past e2 4711", "B *Ann: c2/3 | A Ann: e2 e1", "moved A@1"},
          {"end c2", "A Ann: e2 e1", "deleted B"},
          {"past e3 4711", "A Ann: e3 e2 e1", "moved A@0"}}},
        {"two calls on one number of a contact, the second ends first",
         {{"contact Ann 4711 4712", "A Ann:", "new A@0 list"},
          {"past e1 4711", "A Ann: e1", "moved A@0"},
          {"answer c1 4711", "A Ann: c1/1 e1", "moved A@0"},
          {"hold c1", "A Ann: c1/2 e1", "moved A@0"},
          {"ring c2 4711", "A Ann: c1/2 e1 | B *Ann: c2/10", "new B@1"},
          {"hold c2", "B *Ann: c2/2 | A Ann: c1/2 e1", "moved B@0"},
          {"end c2", "A Ann: c1/2 e1", "deleted B"},
          {"past e2 4711", "A Ann: c1/2 e2 e1", "moved A@0"},
          {"answer c1", "A Ann: c1/1 e2 e1", "moved A@0"},
          {"end c1", "A Ann: e2 e1", "moved A@0"}}},
        {"two calls on one number of a contact without history",
         {{"contact Ann 4711 4712", "A Ann:", "new A@0 list"},
          {"answer c1 4711", "A Ann: c1/1", "moved A@0"},
          {"hold c1", "A Ann: c1/2", "moved A@0"},
          {"ring c2 4711", "A Ann: c1/2 | B *Ann: c2/10", "new B@1"},
          {"end c1", "B *Ann: c2/10 | A Ann:", "moved A@1"},
          {"answer c2", "B *Ann: c2/1 | A Ann:", "moved B@0"},
          {"end c2", "A Ann:", "deleted B"}}},
        {"two calls on a contact's two numbers, the first ends first",
         {{"past e1 4711", "A 4711: e1", "new A@0"},
          {"contact Ann 4711 4712", "A Ann: e1", "moved A@0 list"},
          {"answer c1 4711", "A Ann: c1/1 e1", "moved A@0"},
          {"hold c1", "A Ann: c1/2 e1", "moved A@0"},
          {"ring c2 4712", "A Ann: c1/2 e1 | P Ann: c2/10", "new P@1"},
          {"answer c2", "P Ann: c2/1 | A Ann: c1/2 e1", "moved P@0 moved A@1"},
          {"answer c3 4713 Bob", "B Bob: c3/1 | P Ann: c2/1 | A Ann: c1/2 e1", "new B@0"},
          {"end c3", "P Ann: c2/1 | A Ann: c1/2 e1", "deleted B"},
          {"past e2 4713 Bob", "P Ann: c2/1 | A Ann: c1/2 e1 | C Bob: e2", "new C@2"},
          {"hold c2", "P Ann: c2/2 | A Ann: c1/2 e1 | C Bob: e2", "moved P@0 moved A@1"},
          {"end c1", "A Ann: c2/2 e1 | C Bob: e2", "deleted P moved A@1 moved A@0"},
          {"past e3 4711", "A Ann: c2/2 e3 e1 | C Bob: e2", "moved A@0"},
          {"held c2", "A Ann: c2/3 e3 e1 | C Bob: e2", "moved A@0"},
          {"end c2", "A Ann: e3 e1 | C Bob: e2", "moved A@0"},
          {"past e4 4712", "A Ann: e4 e3 e1 | C Bob: e2", "moved A@0"}}},
        {"two calls on a contact's two numbers, the second ends first",
         {{"contact Ann 4711 4712", "A Ann:", "new A@0 list"},
          {"answer c3 4713 Bob", "B Bob: c3/1 | A Ann:", "new B@0"},
          {"answer c1 4711", "A Ann: c1/1 | B Bob: c3/1", "moved A@0"},
          {"hold c1", "B Bob: c3/1 | A Ann: c1/2", "moved A@1"},
          {"ring c2 4712", "B Bob: c3/1 | A Ann: c1/2 | P Ann: c2/10", "new P@2"},
          {"hold c2", "B Bob: c3/1 | P Ann: c2/2 | A Ann: c1/2", "moved P@1 moved A@2"},
          {"end c3", "P Ann: c2/2 | A Ann: c1/2", "deleted B"},
          {"past e1 4711", "P Ann: c2/2 | A Ann: c1/2 e1", "moved A@1"},
          {"end c2", "A Ann: c1/2 e1", "deleted P"},
          {"past e2 4712", "A Ann: c1/2 e2 e1", "moved A@0"},
          {"answer c1", "A Ann: c1/1 e2 e1", "moved A@0"},
          {"end c1", "A Ann: e2 e1", "moved A@0"}}},
        {"an anonymous missed call",
         {{"past e1 -", "A Caller.Unknown.XXX: e1", "new A@0"},
          {"past e2 4711 Ann", "B Ann: e2 | A Caller.Unknown.XXX: e1", "new B@0"},
          {"past e3 -", "A Caller.Unknown.XXX: e3 e1 | B Ann: e2", "moved A@0"},
          {"ring c1 -", "A Caller.Unknown.XXX: c1/10 e3 e1 | B Ann: e2", "moved A@0"},
          {"end c1", "A Caller.Unknown.XXX: e3 e1 | B Ann: e2", "moved A@0"}}},
        {"a conference",
         {{"past e1 4711 Ann", "A Ann: e1", "new A@0"},
          {"answer c1 4711", "A Ann: c1/1 e1", "moved A@0"},
          {"conference c2 4711 4712", "A Ann: c1/1 e1 | B 4711: c2/8", "new B@1"},
          {"past e2 4712", "A Ann: c1/1 e1 | B 4711: c2/8 | C 4712: e2", "new C@2"},
          {"end c1", "B 4711: c2/8 | C 4712: e2 | A Ann: e1", "moved A@2"},
          {"end c2", "C 4712: e2 | A Ann: e1", "deleted B"}}},
        {"a group pickup",
         {{"past e1 4711 Ann", "A Ann: e1", "new A@0"},
          {"group GPU 4711 Ann", "A Ann: GPU/17 e1", "moved A@0"},
          {"pickup c1 4711 Ann", "A Ann: c1/16 GPU/17 e1", "moved A@0"},
          {"end GPU", "A Ann: c1/16 e1", "moved A@0"},
          {"answer c1", "A Ann: c1/1 e1", "moved A@0"},
          {"past e2 4711 Ann", "A Ann: c1/1 e2 e1", "moved A@0"},
          {"end c1", "A Ann: e2 e1", "moved A@0"}}},
    };
    return all;
}

TEST(CombinedFlowsTest, RowsIdsAndCallbacksAfterEveryEvent)
{
    for (const auto& flow : flows())
    {
        Combined w;
        for (const Step& step : flow.second)
        {
            SCOPED_TRACE(flow.first + ": " + step.event);
            w.run(step.event);
            EXPECT_EQ(w.shown(), step.rows);
            EXPECT_EQ(w.screen.take(), step.told);
            EXPECT_EQ(w.disagreements(), "");
        }
    }
}

/**
 * A rebuild after any step loses nothing, and every row keeps its id. Only group calls may change places in it: there
 * the call that comes first takes the row with the history.
 */
TEST(CombinedFlowsTest, ARebuildInTheMiddleOfEach)
{
    for (const auto& [name, steps] : flows())
    {
        const bool isPlain = name != "a group pickup";
        for (std::size_t at = 0; at < 2 * steps.size(); ++at)
        {
            Combined w;
            std::map<std::string, std::string> ids;
            for (std::size_t i = 0; i < steps.size(); ++i)
            {
                w.run(steps[i].event);
                if (i == at / 2)
                {
                    w.screen.take();
                    w.run(at % 2 == 0 ? "combine" : "regroup");
                    EXPECT_EQ(w.screen.take(), "list");
                }
                SCOPED_TRACE(name + ": " + steps[i].event + ", " + std::to_string(at));
                ASSERT_EQ(w.disagreements(), "") << w.shown();
                EXPECT_TRUE(w.shown() == steps[i].rows || (!isPlain && at % 2 != 0)) << w.shown();
                for (const auto& of : w.historyIds())
                {
                    EXPECT_EQ(ids.insert(of).first->second, of.second) << of.first << " in " << w.shown();
                }
            }
        }
    }
}
} // namespace
