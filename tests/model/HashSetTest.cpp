#include "model/HashSet.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace
{
using ConversationAPI::HashSet;

/** Most of them want the last places of any table, and have to go on at its beginning. */
TEST(HashSetTest, KnowsWhatItWasGivenHoweverOftenItGrows)
{
    std::minstd_rand random(7);
    HashSet hashes;
    std::set<std::uint32_t> expected = {0};
    EXPECT_TRUE(hashes.has(0));
    EXPECT_FALSE(hashes.has(1));
    EXPECT_FALSE(hashes.insert(0));
    for (int step = 0; step < 2'000; ++step)
    {
        const auto any = static_cast<std::uint32_t>(random());
        const std::uint32_t hash = any % 4 == 0 ? any : 0U - any % 1'000U;
        ASSERT_EQ(hashes.has(hash), expected.count(hash) != 0) << hash;
        ASSERT_EQ(hashes.insert(hash), expected.insert(hash).second) << hash;
        if (step % 500 == 0)
        {
            hashes.reserve(expected.size() * 3);
            EXPECT_FALSE(hashes.insert(0));
        }
    }
    for (const std::uint32_t hash : expected)
    {
        EXPECT_TRUE(hashes.has(hash)) << hash;
    }
}
} // namespace
