/**
 * Tells the user what is wrong with the stored history and with the stored contacts, once for each problem. Telephone
 * and stream are not owned and outlive it. UI thread only.
 */
#pragma once

#include "Telephone.h"

#include <ostream>
#include <string>

namespace Deskphone
{
class StorageProblem
{
  public:
    /** Tells at once what is wrong by now. */
    StorageProblem(Telephone& telephone, std::ostream& errors) : telephone_(telephone), errors_(errors)
    {
        tellWhenNew();
    }

    void tellWhenNew()
    {
        tellWhenNew(telephone_.journal().problem(), ofHistory_);
        tellWhenNew(telephone_.phonebook().problem(), ofContacts_);
    }

  private:
    void tellWhenNew(const std::string& problem, std::string& last)
    {
        if (problem != last && !problem.empty())
        {
            errors_ << "deskphone: " << problem << '\n';
        }
        last = problem;
    }

    Telephone& telephone_;
    std::ostream& errors_;
    std::string ofHistory_; ///< the problem that was told last
    std::string ofContacts_;
};
} // namespace Deskphone
