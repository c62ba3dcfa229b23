#include "platform/Semaphore.h"

#include <chrono>
#include <future>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace
{
/** Whether another thread has to wait for a unit; leaves as many free as there were. */
bool othersWait(Semaphore& semaphore)
{
    auto other = std::async(std::launch::async, [&] { semaphore.acquire(); });
    const bool waits = other.wait_for(std::chrono::milliseconds(50)) == std::future_status::timeout;
    semaphore.release();
    return waits;
}

TEST(Semaphore, KeepsToCountAndMax)
{
    struct Case
    {
        int count, max, releases, free;
    };
    for (const Case& each : {Case{2, 2, 0, 2}, Case{2, 2, 3, 2}, Case{5, 2, 0, 2}, Case{1, 3, 1, 2}, Case{1, 1, 2, 1},
                             Case{0, 1, 0, 0}, Case{0, 1, 2, 1}, Case{-1, 0, 0, 0}})
    {
        Semaphore semaphore(each.count, each.max, false);
        for (int unit = 0; unit < each.releases; ++unit)
        {
            semaphore.release();
        }
        for (int unit = 0; unit < each.free; ++unit)
        {
            EXPECT_FALSE(othersWait(semaphore)) << each.count << '/' << each.max << " unit " << unit;
            semaphore.acquire();
        }
        EXPECT_TRUE(othersWait(semaphore)) << each.count << '/' << each.max;
    }
}

TEST(Semaphore, IsAMutexBetweenThreads)
{
    Semaphore lock(1, 1, false);
    long counter = 0;
    std::vector<std::thread> threads;
    for (int each = 0; each < 4; ++each)
    {
        threads.emplace_back(
            [&]
            {
                for (int round = 0; round < 20'000; ++round)
                {
                    const CriticalSection guard(lock);
                    ++counter;
                }
            });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    EXPECT_EQ(counter, 80'000);
}

TEST(SemaphoreDeathTest, AbortsWhenItsHolderTakesItAgain)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    Semaphore lock(1, 1, false);
    const CriticalSection guard(lock);
    EXPECT_DEATH({ const CriticalSection again(lock); }, "the thread that holds it takes it again");
}
} // namespace
