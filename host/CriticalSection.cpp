#include "platform/Semaphore.h"

CriticalSection::CriticalSection(Semaphore& semaphore) : semaphore_(semaphore)
{
    semaphore_.acquire();
}

CriticalSection::~CriticalSection()
{
    semaphore_.release();
}
