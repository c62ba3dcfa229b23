/**
 * Memory for small objects that are made by the thousand, one after the other, and given up by the thousand.
 *
 * Blocks of one size stand side by side in a slab, in the order in which they were asked for. A place that was given
 * back is taken again when half of its slab is free, so what is made together lies together, however often lists were
 * made anew and thrown away. A heap, or a pool that keeps lists of free blocks, hands out the places of what was freed
 * last: after a while they are in no order, and a walk over a list waits for memory at every object.
 *
 * At least half of each full slab stays in use or is used again, and memory of a list that is gone is given back when
 * there is more of it than in use. Not for several threads at once.
 */
#pragma once

#include "model/SlabRegion.h"

#include <boost/intrusive/list.hpp>

#include <array>
#include <cstddef>

namespace ConversationAPI
{
class SlabPool
{
  public:
    /** The size of the largest block, in bytes. */
    static constexpr std::size_t LARGEST = 512;

    SlabPool() = default;
    SlabPool(const SlabPool&) = delete;
    SlabPool& operator=(const SlabPool&) = delete;

    /** All blocks have to be given back by then. */
    ~SlabPool();

    /** A block for an object of `size` bytes, at most LARGEST, aligned as an object of that size may have to be. */
    void* allocate(std::size_t size);

    /** Of a block of this pool. */
    void release(void* block) noexcept;

    /** What the pool has taken from the heap. */
    std::size_t bytesHeld() const { return regions_ * SlabRegion::SIZE; }

  private:
    static constexpr std::size_t SIZE_STEP = 8;

    /** The slabs of one size of block. Those that are full, or nearly, are in no list. */
    struct Size
    {
        Slab* filling = nullptr; ///< the one that blocks are taken from, if any
        boost::intrusive::list<Slab, boost::intrusive::base_hook<SlabHook>,
                               boost::intrusive::constant_time_size<false>>
            sparse; ///< others, of which at least half is free
    };

    Size& sizeOf(std::size_t blockSize) { return sizes_.at(blockSize / SIZE_STEP); }
    Slab& nextToFill(std::size_t blockSize);
    Slab& makeSlab(std::size_t blockSize);
    void giveBack(Slab& slab) noexcept;
    void freeRegions() noexcept;

    std::array<Size, LARGEST / SIZE_STEP + 1> sizes_;
    boost::intrusive::list<SlabRegion> regionsWithRoom_; ///< the wholly unused ones stand last
    std::size_t regions_ = 0;
    std::size_t unusedRegions_ = 0;
};
} // namespace ConversationAPI
