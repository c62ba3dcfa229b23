/** The commands on the contacts of the phonebook: to look at them, to add one, to change and to remove one. */
#pragma once

#include "Options.h"

#include <ostream>
#include <stdexcept>

namespace Deskphone
{
/** There is no such contact, nothing is told of it, or the phonebook is broken: no contact was changed. */
class ContactProblem : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/** Does what the options ask for and prints the contacts that it is about. Throws ContactProblem. */
void manageContacts(const Options& options, std::ostream& screen, std::ostream& errors);
} // namespace Deskphone
