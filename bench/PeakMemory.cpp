#include "PeakMemory.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace
{
bool isCounting = false;
std::ptrdiff_t held = 0;
std::ptrdiff_t most = 0;

void count(void* block, int sign)
{
    held += sign * static_cast<std::ptrdiff_t>(malloc_usable_size(block) + sizeof(std::size_t));
    most = std::max(most, held);
}

void* counted(void* block)
{
    if (!block)
    {
        throw std::bad_alloc();
    }
    if (isCounting)
    {
        count(block, 1);
    }
    return block;
}
} // namespace

void* operator new(std::size_t size)
{
    return counted(std::malloc(size));
}

// Memory resources take theirs in this way.
void* operator new(std::size_t size, std::align_val_t alignment)
{
    const auto bytes = static_cast<std::size_t>(alignment);
    return counted(std::aligned_alloc(bytes, (size + bytes - 1) / bytes * bytes));
}

void operator delete(void* block) noexcept
{
    if (isCounting && block)
    {
        count(block, -1);
    }
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    operator delete(block);
}

void operator delete(void* block, std::align_val_t) noexcept
{
    operator delete(block);
}

void operator delete(void* block, std::size_t, std::align_val_t) noexcept
{
    operator delete(block);
}

namespace Bench
{
PeakMemory::PeakMemory()
{
    held = 0;
    most = 0;
    isCounting = true;
}

PeakMemory::~PeakMemory()
{
    isCounting = false;
}

std::size_t PeakMemory::bytes()
{
    return static_cast<std::size_t>(most);
}
} // namespace Bench
