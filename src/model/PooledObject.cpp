#include "ConversationAPI/PooledObject.h"

#include "model/SlabPool.h"

#include <ext/atomicity.h>

#include <mutex>
#include <new>

namespace ConversationAPI
{
namespace
{
#ifdef CONVERSATIONAPI_PLAIN_MEMORY
constexpr std::size_t LARGEST_IN_POOL = 0;
#else
constexpr std::size_t LARGEST_IN_POOL = SlabPool::LARGEST;
#endif

struct SharedPool
{
    SlabPool pool;
    std::mutex mutex;
};

/** Holds the mutex in a process of several threads; in one of a single thread, that would be half of the work. */
class Guard
{
  public:
    explicit Guard(std::mutex& mutex) : lock_(mutex, std::defer_lock)
    {
        if (!__gnu_cxx::__is_single_threaded())
        {
            lock_.lock();
        }
    }

  private:
    std::unique_lock<std::mutex> lock_;
};

SharedPool& sharedPool()
{
    static SharedPool& shared = *new SharedPool; // still needed by statics that are destroyed late
    return shared;
}
} // namespace

// Neither is inlined: where only one of them was, compilers would take them for no pair.
[[gnu::noinline]] void* PooledObject::operator new(std::size_t size)
{
    if (size > LARGEST_IN_POOL)
    {
        return ::operator new(size);
    }
    SharedPool& shared = sharedPool();
    const Guard guard(shared.mutex);
    return shared.pool.allocate(size);
}

[[gnu::noinline]] void PooledObject::operator delete(void* object, std::size_t size) noexcept
{
    if (!object || size > LARGEST_IN_POOL)
    {
        ::operator delete(object);
        return;
    }
    SharedPool& shared = sharedPool();
    const Guard guard(shared.mutex);
    shared.pool.release(object);
}
} // namespace ConversationAPI
