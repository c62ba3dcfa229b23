/**
 * Changes that observers are still to be told. What is changed while one is told is told after that, so that all
 * observers are told in one order.
 */
#pragma once

#include <list>
#include <utility>
#include <vector>

namespace Host
{
template <typename Change>
class ReportQueue
{
  public:
    /** Has all told, unless that is going on already further up the stack; the changes then come last there. */
    template <typename Tell>
    void report(std::vector<Change> changes, Tell tell)
    {
        for (Change& change : changes)
        {
            waiting_.push_back(std::move(change));
        }
        if (std::exchange(isTelling_, true))
        {
            return;
        }
        while (!waiting_.empty())
        {
            const Change change = std::move(waiting_.front());
            waiting_.pop_front();
            tell(change);
        }
        isTelling_ = false;
    }

  private:
    std::list<Change> waiting_;
    bool isTelling_ = false;
};
} // namespace Host
