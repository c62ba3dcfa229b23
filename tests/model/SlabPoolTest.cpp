#include "model/SlabPool.h"

#include "ConversationAPI/CopyOnWrite.h"
#include "ConversationAPI/PooledObject.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <thread>
#include <vector>

namespace
{
using ConversationAPI::SlabPool;

struct Block
{
    unsigned char* memory;
    std::size_t size;
    unsigned char content;
};

/** Blocks that say what was written to them, so that one that overlaps another or is given twice shows. */
class Blocks
{
  public:
    ~Blocks()
    {
        while (!blocks.empty())
        {
            releaseAt(blocks.size() - 1);
        }
    }

    void add(std::size_t size)
    {
        auto* memory = static_cast<unsigned char*>(pool.allocate(size));
        const std::size_t alignment = size % 16 == 0 ? 16 : 8;
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory) % alignment, 0U) << size;
        blocks.push_back({memory, size, ++last_});
        std::memset(memory, last_, size);
    }

    void releaseAt(std::size_t place)
    {
        const Block block = blocks.at(place);
        blocks.erase(blocks.begin() + static_cast<std::ptrdiff_t>(place));
        const std::vector<unsigned char> expected(block.size, block.content);
        ASSERT_EQ(std::memcmp(block.memory, expected.data(), block.size), 0) << block.size;
        pool.release(block.memory);
    }

    SlabPool pool;
    std::vector<Block> blocks;

  private:
    unsigned char last_ = 0;
};

TEST(SlabPoolTest, KeepsBlocksApartWhateverTheirSizesAndTheOrderInWhichTheyGo)
{
    std::mt19937 random(7);
    Blocks some;
    for (int phase = 0; phase < 8; ++phase)
    {
        for (int step = 0; step < 4'000; ++step)
        {
            const bool shrinks = phase % 2 != 0 ? random() % 4 != 0 : random() % 4 == 0;
            if (!shrinks || some.blocks.empty())
            {
                some.add(1 + random() % SlabPool::LARGEST);
            }
            else
            {
                some.releaseAt(random() % some.blocks.size());
            }
        }
    }
    some.add(1);
    some.add(SlabPool::LARGEST);
}

TEST(SlabPoolTest, LaysOutTheNextListInOrderThoughTheLastOneWentInNone)
{
    constexpr std::size_t OBJECTS = 5'000;
    Blocks list;
    for (int round = 0; round < 3; ++round)
    {
        for (std::size_t i = 0; i < OBJECTS; ++i)
        {
            list.add(216);
        }
        std::size_t neighbours = 0;
        for (std::size_t i = 1; i < OBJECTS; ++i)
        {
            neighbours += list.blocks[i].memory - list.blocks[i - 1].memory == 216 ? 1U : 0U;
        }
        EXPECT_GT(neighbours, OBJECTS * 95 / 100) << "round " << round;
        std::mt19937 random(3);
        while (!list.blocks.empty())
        {
            list.releaseAt(random() % list.blocks.size());
        }
    }
}

TEST(SlabPoolTest, HoldsLittleMoreThanIsUsedHoweverLongItRuns)
{
    constexpr std::size_t SIZE = 208;
    std::mt19937 random(11);
    Blocks lasting;
    for (int i = 0; i < 10'000; ++i)
    {
        lasting.add(SIZE);
    }
    const std::size_t atFirst = lasting.pool.bytesHeld();
    EXPECT_LT(atFirst, 10'000 * SIZE * 11 / 10 + 512 * 1024);
    for (int i = 0; i < 60'000; ++i)
    {
        lasting.add(SIZE); // many that come and go at once for each that lasts
        lasting.releaseAt(i % 6 == 0 ? random() % lasting.blocks.size() : lasting.blocks.size() - 1);
    }
    EXPECT_LE(lasting.pool.bytesHeld(), 2 * atFirst);
    while (!lasting.blocks.empty())
    {
        lasting.releaseAt(lasting.blocks.size() - 1);
    }
    EXPECT_LE(lasting.pool.bytesHeld(), 256U * 1024U) << "the memory of a list that is gone goes back";
}

TEST(PooledObjectTest, HasTheAlignmentThatItsClassAsksFor)
{
    struct alignas(256) Line : ConversationAPI::PooledObject
    {
        char bytes[256] = {};
    };
    std::vector<std::unique_ptr<Line>> lines;
    for (int i = 0; i < 5; ++i)
    {
        lines.push_back(std::make_unique<Line>());
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(lines.back().get()) % 256, 0U) << i;
    }
}

TEST(PooledObjectTest, IsMadeOnOneThreadAndDeletedOnAnother)
{
    using Record = ConversationAPI::CopyOnWrite<std::array<long, 6>>;
    std::vector<std::vector<Record>> handedOver(4);
    const auto fill = [&handedOver](std::size_t lane)
    {
        for (long i = 0; i < 5'000; ++i)
        {
            handedOver[lane].emplace_back().write()[0] = i;
            if (i % 3 == 0)
            {
                Record().write()[0] = -1;
            }
        }
    };
    const auto drain = [&handedOver](std::size_t lane)
    {
        std::vector<Record>& records = handedOver[lane];
        for (std::size_t i = 0; i < records.size(); ++i)
        {
            ASSERT_EQ((*records[i])[0], static_cast<long>(i));
        }
        records.clear();
        for (int i = 0; i < 1'000; ++i)
        {
            Record().write()[0] = -1;
        }
    };
    std::thread first(fill, 0);
    std::thread second(fill, 1);
    first.join();
    second.join();
    std::thread third(fill, 2);
    std::thread fourth(drain, 0);
    drain(1);
    third.join();
    fourth.join();
    drain(2);
}
} // namespace
