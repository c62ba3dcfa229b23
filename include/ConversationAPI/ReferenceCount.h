/**
 * How often something is shared, counted with atomic operations only in a process that has several threads.
 *
 * An atomic operation waits for everything that the processor still reads and writes, which is most of its cost where
 * thousands of texts and items are copied one after the other. A counter policy for boost::intrusive_ref_counter, which
 * asks libstdc++, whose own shared pointers count in this way; with another standard library, atomic operations will
 * do.
 */
#pragma once

#include <ext/atomicity.h>

namespace ConversationAPI
{
struct ReferenceCount
{
    using type = _Atomic_word;

    static unsigned load(const type& count) noexcept
    {
        return static_cast<unsigned>(__atomic_load_n(&count, __ATOMIC_ACQUIRE));
    }
    static void increment(type& count) noexcept { __gnu_cxx::__atomic_add_dispatch(&count, 1); }

    /** How often it is shared from now on. */
    static unsigned decrement(type& count) noexcept
    {
        return static_cast<unsigned>(__gnu_cxx::__exchange_and_add_dispatch(&count, -1) - 1);
    }
};
} // namespace ConversationAPI
