/** Observers, or sources, that may come and go while they are told something. None is owned. */
#pragma once

#include <algorithm>
#include <vector>

namespace ConversationAPI
{
template <typename Observer>
bool isAmong(const std::vector<Observer*>& observers, const Observer* observer)
{
    return std::find(observers.begin(), observers.end(), observer) != observers.end();
}

/** Whether it was added: null is not, nor one that is there already. */
template <typename Observer>
bool addOnce(std::vector<Observer*>& observers, Observer* observer)
{
    if (!observer || isAmong(observers, observer))
    {
        return false;
    }
    observers.push_back(observer);
    return true;
}

/** Removes one occurrence, if there is any. */
template <typename Observer>
void removeOne(std::vector<Observer*>& observers, const Observer* observer)
{
    const auto found = std::find(observers.begin(), observers.end(), observer);
    if (found != observers.end())
    {
        observers.erase(found);
    }
}

/** In order; those that come meanwhile are told from the next time on, those that left meanwhile not any more. */
template <typename Pointers, typename Notification>
void tellEach(const Pointers& observers, Notification tell)
{
    const Pointers present = observers;
    for (auto* observer : present)
    {
        if (std::find(observers.begin(), observers.end(), observer) != observers.end())
        {
            tell(*observer);
        }
    }
}
} // namespace ConversationAPI
