#include "platform/Semaphore.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <pthread.h>
#include <sys/single_threaded.h>

namespace
{
unsigned long currentThread()
{
    return static_cast<unsigned long>(pthread_self());
}

/** Where threads wait for a unit of whichever semaphore. There are thousands of semaphores, and hardly ever a wait. */
struct WaitingRoom
{
    std::mutex mutex;
    std::condition_variable unitGivenBack;
    std::atomic<int> threads{0};
};

WaitingRoom& waitingRoom()
{
    static WaitingRoom& room = *new WaitingRoom; // still needed by statics that are destroyed late
    return room;
}

[[noreturn]] void abortOnSecondTake(const void* semaphore)
{
    std::fprintf(stderr, "Semaphore %p: the thread that holds it takes it again; locks are not recursive\n", semaphore);
    std::fflush(stderr);
    std::abort();
}
} // namespace

Semaphore::Semaphore(int count, int max, bool /*flag*/)
    : units_(std::clamp(count, 0, std::max(max, 1))), max_(std::max(max, 1))
{
}

Semaphore::~Semaphore() = default;

bool Semaphore::tryTake()
{
    int units = units_.load(); // in one order with the count of those who wait: see acquire() and release()
    if (__libc_single_threaded)
    {
        units_.store(std::max(units - 1, 0), std::memory_order_relaxed);
        return units > 0;
    }
    while (units > 0 && !units_.compare_exchange_weak(units, units - 1))
    {
    }
    return units > 0;
}

void Semaphore::acquire()
{
    if (!tryTake())
    {
        if (max_ == 1 && holder_.load(std::memory_order_relaxed) == currentThread())
        {
            abortOnSecondTake(this);
        }
        WaitingRoom& room = waitingRoom();
        std::unique_lock<std::mutex> guard(room.mutex);
        ++room.threads; // before the next look: whoever gives a unit back later sees that somebody waits
        room.unitGivenBack.wait(guard, [this] { return tryTake(); });
        --room.threads;
    }
    if (max_ == 1)
    {
        holder_.store(currentThread(), std::memory_order_relaxed);
    }
}

void Semaphore::release()
{
    if (max_ == 1)
    {
        holder_.store(0, std::memory_order_relaxed); // before the next holder can write its own name
    }
    int units = units_.load(std::memory_order_relaxed);
    if (__libc_single_threaded)
    {
        units_.store(std::min(units + 1, max_), std::memory_order_relaxed);
        return;
    }
    while (units < max_ && !units_.compare_exchange_weak(units, units + 1))
    {
    }
    WaitingRoom& room = waitingRoom();
    if (room.threads != 0)
    {
        const std::lock_guard<std::mutex> guard(room.mutex);
        room.unitGivenBack.notify_all();
    }
}
