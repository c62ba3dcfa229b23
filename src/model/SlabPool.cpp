#include "model/SlabPool.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace ConversationAPI
{
SlabPool::~SlabPool()
{
    regionsWithRoom_.clear_and_dispose(std::default_delete<SlabRegion>());
}

void* SlabPool::allocate(std::size_t size)
{
    const std::size_t blockSize = std::max((size + SIZE_STEP - 1) / SIZE_STEP * SIZE_STEP, Slab::SMALLEST_BLOCK);
    Slab*& filling = sizeOf(blockSize).filling;
    void* block = filling ? filling->take() : nullptr;
    if (!block)
    {
        filling = &nextToFill(blockSize);
        block = filling->take();
    }
    return block;
}

/** The slab that was filled until now may be sparse already, as blocks of it were given back since. */
Slab& SlabPool::nextToFill(std::size_t blockSize)
{
    Size& size = sizeOf(blockSize);
    Slab* last = std::exchange(size.filling, nullptr);
    if (last && last->isSparse())
    {
        size.sparse.push_back(*last);
    }
    if (size.sparse.empty())
    {
        return makeSlab(blockSize);
    }
    Slab& slab = size.sparse.front();
    size.sparse.pop_front();
    slab.startAgain();
    return slab;
}

Slab& SlabPool::makeSlab(std::size_t blockSize)
{
    if (regionsWithRoom_.empty())
    {
        regionsWithRoom_.push_back(*std::make_unique<SlabRegion>().release());
        ++regions_;
        ++unusedRegions_;
    }
    SlabRegion& region = regionsWithRoom_.front();
    unusedRegions_ -= region.isUnused() ? 1 : 0;
    Slab& slab = region.makeSlab(blockSize);
    if (region.isFull())
    {
        regionsWithRoom_.pop_front();
    }
    return slab;
}

void SlabPool::release(void* block) noexcept
{
    Slab& slab = Slab::of(block);
    slab.put(block);
    Size& size = sizeOf(slab.blockSize());
    const bool isFilling = size.filling == &slab;
    if (slab.isEmpty())
    {
        size.filling = isFilling ? nullptr : size.filling;
        giveBack(slab);
    }
    else if (!isFilling && slab.isSparse() && !slab.is_linked())
    {
        size.sparse.push_back(slab);
    }
}

void SlabPool::giveBack(Slab& slab) noexcept
{
    SlabRegion& region = slab.region();
    if (region.isFull())
    {
        regionsWithRoom_.push_front(region);
    }
    region.removeSlab(slab);
    if (region.isUnused())
    {
        regionsWithRoom_.splice(regionsWithRoom_.end(), regionsWithRoom_, regionsWithRoom_.iterator_to(region));
        ++unusedRegions_;
        freeRegions();
    }
}

/** A list that is thrown away is made anew in most cases: as much is kept for it as is in use. */
void SlabPool::freeRegions() noexcept
{
    while (unusedRegions_ > std::max<std::size_t>(regions_ - unusedRegions_, 1))
    {
        regionsWithRoom_.pop_back_and_dispose(std::default_delete<SlabRegion>());
        --unusedRegions_;
        --regions_;
    }
}
} // namespace ConversationAPI
