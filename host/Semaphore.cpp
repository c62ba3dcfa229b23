#include "platform/Semaphore.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <pthread.h>

namespace
{
unsigned long currentThread()
{
    return static_cast<unsigned long>(pthread_self());
}

/** Two threads that give back too much at once must not both see room for one unit. */
std::mutex& releaseMutex()
{
    static std::mutex& mutex = *new std::mutex; // still needed by statics that are destroyed late
    return mutex;
}

[[noreturn]] void abortOnSecondTake(const void* semaphore)
{
    std::fprintf(stderr, "Semaphore %p: the thread that holds it takes it again; locks are not recursive\n", semaphore);
    std::fflush(stderr);
    std::abort();
}
} // namespace

Semaphore::Semaphore(int count, int max, bool /*flag*/) : max_(std::max(max, 1))
{
    sem_init(&units_, 0, static_cast<unsigned>(std::clamp(count, 0, max_)));
}

Semaphore::~Semaphore()
{
    sem_destroy(&units_);
}

void Semaphore::acquire()
{
    if (sem_trywait(&units_) != 0)
    {
        if (max_ == 1 && holder_.load(std::memory_order_relaxed) == currentThread())
        {
            abortOnSecondTake(this);
        }
        while (sem_wait(&units_) != 0 && errno == EINTR)
        {
        }
    }
    if (max_ == 1)
    {
        holder_.store(currentThread(), std::memory_order_relaxed);
    }
}

void Semaphore::release()
{
    // Cleared before the unit becomes free: afterwards the next holder has written its own name.
    if (max_ == 1 && holder_.exchange(0, std::memory_order_relaxed) != 0)
    {
        sem_post(&units_);
        return;
    }
    const std::lock_guard<std::mutex> guard(releaseMutex());
    int units = 0;
    sem_getvalue(&units_, &units);
    if (units < max_)
    {
        sem_post(&units_);
    }
}
