/**
 * Blocks of one size, side by side in a piece of memory that is aligned to its own size, so that a block finds it.
 *
 * Blocks are taken in the order of their places. Owns no memory; lies at the start of what it hands out.
 */
#pragma once

#include <boost/intrusive/list_hook.hpp>

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <new>

namespace ConversationAPI
{
class SlabRegion;

/** A slab leaves the list that it stands in without knowing which it is. */
using SlabHook = boost::intrusive::list_base_hook<boost::intrusive::link_mode<boost::intrusive::auto_unlink>>;

class Slab : public SlabHook
{
  public:
    /** In bytes, the head included. */
    static constexpr std::size_t SIZE = 16 * 1024;
    static constexpr std::size_t SMALLEST_BLOCK = 32; ///< smaller ones would need more marks than there are

    Slab(SlabRegion& region, std::size_t blockSize)
        : region_(region), blockSize_(static_cast<std::uint32_t>(blockSize)),
          capacity_(static_cast<std::uint32_t>((SIZE - HEAD_SIZE) / blockSize))
    {
        std::fill_n(free_.begin(), capacity_ / BITS, ~Marks(0));
        if (capacity_ % BITS != 0)
        {
            free_.at(capacity_ / BITS) = (Marks(1) << capacity_ % BITS) - 1;
        }
    }
    Slab(const Slab&) = delete;
    Slab& operator=(const Slab&) = delete;
    ~Slab() = default;

    static Slab& of(void* block)
    {
        const std::uintptr_t offset = reinterpret_cast<std::uintptr_t>(block) % SIZE;
        return *std::launder(reinterpret_cast<Slab*>(static_cast<std::byte*>(block) - offset));
    }

    SlabRegion& region() const { return region_; }
    std::size_t blockSize() const { return blockSize_; }
    bool isEmpty() const { return used_ == 0; }
    bool isSparse() const { return used_ <= capacity_ / 2; }

    /** From now on the places that were given back are taken again. */
    void startAgain() { next_ = 0; }

    /** Null when the last place has been passed. */
    void* take()
    {
        while (next_ < free_.size() && free_[next_] == 0)
        {
            ++next_;
        }
        if (next_ == free_.size())
        {
            return nullptr;
        }
        Marks& marks = free_[next_];
        const auto bit = static_cast<std::size_t>(__builtin_ctzll(marks));
        marks &= marks - 1;
        ++used_;
        return firstBlock() + (next_ * BITS + bit) * blockSize_;
    }

    void put(void* block)
    {
        const auto offset = static_cast<std::uint32_t>(static_cast<std::byte*>(block) - firstBlock());
        const std::uint32_t place = offset / blockSize_;
        const Marks mark = Marks(1) << place % BITS;
        assert(place < capacity_ && offset % blockSize_ == 0 && (free_[place / BITS] & mark) == 0);
        free_[place / BITS] |= mark;
        --used_;
    }

  private:
    using Marks = std::uint64_t;

    static constexpr std::size_t BITS = 64;
    static constexpr std::size_t HEAD_SIZE = 128; ///< a multiple of every alignment that a block may need
    static constexpr std::size_t MARKS = ((SIZE - HEAD_SIZE) / SMALLEST_BLOCK + BITS - 1) / BITS;

    std::byte* firstBlock() { return reinterpret_cast<std::byte*>(this) + HEAD_SIZE; }

    SlabRegion& region_;
    const std::uint32_t blockSize_;
    const std::uint32_t capacity_;
    std::uint32_t used_ = 0;
    std::uint32_t next_ = 0;             ///< the marks that are looked at next
    std::array<Marks, MARKS> free_ = {}; ///< a bit for each place
};
} // namespace ConversationAPI
