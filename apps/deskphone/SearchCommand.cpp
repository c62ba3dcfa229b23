#include "SearchCommand.h"

#include "PrintList.h"
#include "StorageProblem.h"
#include "Telephone.h"
#include "TelephoneSetup.h"
#include "Trace.h"
#include "UserActions.h"
#include "host/LdapDirectory.h"
#include "host/RealTimeEventLoop.h"

#include <functional>
#include <memory>

namespace Deskphone
{
namespace
{
constexpr std::int64_t LOOK_EVERY_MS = 20;

/** Each directory ends its searches, if only by its time-out. */
void waitForEnd(Host::RealTimeEventLoop& loop, const SearchField& field)
{
    Host::TimerHandle timer;
    const std::function<void()> look = [&]
    {
        if (field.isSearching())
        {
            timer = loop.startTimer(LOOK_EVERY_MS, look);
        }
        else
        {
            loop.stop();
        }
    };
    look();
    loop.run();
}

/** Null without one; false when it cannot be used. */
bool makeDirectory(const Options& options, Host::EventLoop& loop, std::unique_ptr<Host::LdapDirectory>& directory,
                   std::ostream& errors)
{
    if (!options.ldap)
    {
        return true;
    }
    std::string problem;
    const auto settings = Host::LdapSettings::read(*options.ldap, problem);
    if (!settings)
    {
        errors << "deskphone: " << problem << '\n';
        return false;
    }
    directory = std::make_unique<Host::LdapDirectory>(*settings, loop);
    return true;
}

/** Whether that was possible, and is stored. Nothing is to do for place 0. */
bool save(Telephone& telephone, long place, std::ostream& errors)
{
    if (place == 0)
    {
        return true;
    }
    try
    {
        saveFound(telephone, place);
    }
    catch (const NotPossible& notPossible)
    {
        errors << "deskphone: " << notPossible.what() << '\n';
        return false;
    }
    return telephone.storeOrAbandon();
}
} // namespace

bool searchPeople(const Options& options, std::ostream& screen, std::ostream& errors)
{
    const TelephoneSettings settings = setUp(options);
    Host::RealTimeEventLoop loop;
    const Host::EventLoop::Scope scope(loop);
    std::unique_ptr<Host::LdapDirectory> directory; // outlives the telephone
    if (!makeDirectory(options, loop, directory, errors))
    {
        return false;
    }
    const bool saves = options.resultToSave != 0;
    Telephone telephone(settings, saves ? options.dataFolder() : folderToLookInto(options));
    StorageProblem problem(telephone, errors);
    if (directory)
    {
        telephone.setDirectory(*directory);
    }
    telephone.search(options.text);
    waitForEnd(loop, telephone.searchField());
    printFound(screen, telephone, options);
    const bool wasPossible = save(telephone, options.resultToSave, errors);
    problem.tellWhenNew();
    const bool wasAsked = !directory || directory->problem().empty();
    if (!wasAsked)
    {
        errors << "deskphone: " << directory->problem() << '\n';
    }
    return telephone.isStored() && wasPossible && wasAsked;
}
} // namespace Deskphone
