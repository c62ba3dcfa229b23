/**
 * Tells the user what is wrong with the stored history, once for each problem. Journal and stream are not owned and
 * outlive it. UI thread only.
 */
#pragma once

#include "host/Journal.h"

#include <ostream>
#include <string>

namespace Deskphone
{
class JournalProblem
{
  public:
    /** Tells at once what is wrong by now. */
    JournalProblem(const Host::Journal& journal, std::ostream& errors) : journal_(journal), errors_(errors)
    {
        tellWhenNew();
    }

    void tellWhenNew()
    {
        const std::string problem = journal_.problem();
        if (problem != lastProblem_ && !problem.empty())
        {
            errors_ << "deskphone: " << problem << '\n';
        }
        lastProblem_ = problem;
    }

  private:
    const Host::Journal& journal_;
    std::ostream& errors_;
    std::string lastProblem_;
};
} // namespace Deskphone
