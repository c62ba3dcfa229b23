/** Memory for several slabs. A heap that aligned each by itself would lose as much again as they take. */
#pragma once

#include "model/Slab.h"

#include <cstddef>
#include <cstdint>
#include <new>

namespace ConversationAPI
{
class SlabRegion : public boost::intrusive::list_base_hook<>
{
  public:
    static constexpr std::size_t SLABS = 16;
    static constexpr std::size_t SIZE = SLABS * Slab::SIZE;

    SlabRegion() : memory_(static_cast<std::byte*>(::operator new(SIZE, ALIGNMENT))) {}
    SlabRegion(const SlabRegion&) = delete;
    SlabRegion& operator=(const SlabRegion&) = delete;
    ~SlabRegion() { ::operator delete(memory_, ALIGNMENT); }

    bool isFull() const { return free_ == 0; }
    bool isUnused() const { return free_ == ALL; }

    /** Of a region that is not full. */
    Slab& makeSlab(std::size_t blockSize)
    {
        const auto place = static_cast<std::size_t>(__builtin_ctz(free_));
        free_ &= free_ - 1;
        return *new (memory_ + place * Slab::SIZE) Slab(*this, blockSize);
    }

    void removeSlab(Slab& slab)
    {
        const auto place = static_cast<std::size_t>(reinterpret_cast<std::byte*>(&slab) - memory_) / Slab::SIZE;
        slab.~Slab();
        free_ |= 1U << place;
    }

  private:
    static constexpr std::align_val_t ALIGNMENT{Slab::SIZE};
    static constexpr std::uint32_t ALL = (1U << SLABS) - 1;

    std::byte* memory_;
    std::uint32_t free_ = ALL; ///< a bit for each slab
};
} // namespace ConversationAPI
