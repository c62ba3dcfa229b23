/**
 * Base of what lists have thousands of: its objects get their memory from a pool (SlabPool) in which those that are
 * made one after the other lie side by side.
 *
 * `new` and `delete` are used as ever, on any thread, for objects of derived classes, too; one with a virtual
 * destructor may be deleted through a pointer to a base. An object beyond 512 bytes comes from the heap, as do all when
 * the library is built with CONVERSATIONAPI_SANITIZE: sanitizers look after objects of the heap alone.
 */
#pragma once

#include <cstddef>
#include <new>

namespace ConversationAPI
{
class PooledObject
{
  public:
    static void* operator new(std::size_t size);
    static void operator delete(void* object, std::size_t size) noexcept;

    /** Of a derived class that asks for a larger alignment than the pool's: from the heap. */
    static void* operator new(std::size_t size, std::align_val_t alignment) { return ::operator new(size, alignment); }
    static void operator delete(void* object, std::align_val_t alignment) noexcept
    {
        ::operator delete(object, alignment);
    }

    /** Where the memory is somebody else's. */
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void*, void*) noexcept {}
};
} // namespace ConversationAPI
