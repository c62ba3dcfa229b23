/**
 * The telephone's locks: a counting semaphore and its scoped guard.
 *
 * The library builds every semaphore as Semaphore(1, 1, false) and uses it as a mutex. It is not recursive:
 * a thread that takes it twice waits for itself.
 */
#pragma once

#include <atomic>

class Semaphore
{
  public:
    /** `count` units are free at first, at most `max` ever; the meaning of `flag` belongs to the platform. */
    Semaphore(int count, int max, bool flag);
    ~Semaphore();

    Semaphore(const Semaphore&) = delete;
    Semaphore& operator=(const Semaphore&) = delete;

    /** Takes one unit; waits until there is one. */
    void acquire();

    /** Gives one unit back; more than `max` units never become free. */
    void release();

  private:
    bool tryTake();

    std::atomic<int> units_;
    const int max_;
    std::atomic<unsigned long> holder_{0}; ///< thread that holds the only unit, 0 when free or max is not 1
};

/** Holds one unit of a semaphore for the length of its scope. */
class CriticalSection
{
  public:
    explicit CriticalSection(Semaphore& semaphore);
    ~CriticalSection();

    CriticalSection(const CriticalSection&) = delete;
    CriticalSection& operator=(const CriticalSection&) = delete;

  private:
    Semaphore& semaphore_;
};
