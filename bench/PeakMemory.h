/** How much memory the program holds at most while it does something. */
#pragma once

#include <cstddef>

namespace Bench
{
/** Counts while it lives; one at a time. */
class PeakMemory
{
  public:
    PeakMemory();
    ~PeakMemory();

    PeakMemory(const PeakMemory&) = delete;
    PeakMemory& operator=(const PeakMemory&) = delete;

    /** Bytes beyond what was held at the beginning, with what the allocator adds to each block. */
    static std::size_t bytes();
};
} // namespace Bench
