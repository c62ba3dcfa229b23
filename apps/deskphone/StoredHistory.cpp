#include "StoredHistory.h"

#include "PrintList.h"
#include "StorageProblem.h"
#include "Telephone.h"
#include "TelephoneSetup.h"
#include "Trace.h"
#include "UserActions.h"
#include "host/SimulatedEventLoop.h"

#include <ctime>

namespace Deskphone
{
namespace
{
bool namesRow(const Options& options)
{
    return options.row != 0 || options.number;
}

const ConversationAPI::Conversation& namedRow(Telephone& telephone, const Options& options)
{
    return options.row != 0 ? rowAtPlace(telephone, options.row) : rowWithNumber(telephone, *options.number);
}

void markRead(Telephone& telephone, const Options& options)
{
    if (namesRow(options))
    {
        telephone.markMissedRead(namedRow(telephone, options));
    }
    else
    {
        telephone.markAllMissedRead();
    }
}

void deleteRows(Telephone& telephone, const Options& options)
{
    if (options.all)
    {
        telephone.deleteAllRows();
    }
    else
    {
        deleteRow(telephone, namedRow(telephone, options));
    }
}

/** Whether that was possible. What is stored is changed only when all of it could be read: the rows, and who stands in
 *  which, would be others than those that the user saw. */
bool act(Telephone& telephone, const Options& options, std::ostream& errors)
{
    if (options.command != Options::HISTORY && !telephone.isStored())
    {
        return false;
    }
    try
    {
        if (options.command == Options::MARK_READ)
        {
            markRead(telephone, options);
        }
        else if (options.command == Options::DELETE)
        {
            deleteRows(telephone, options);
        }
        return true;
    }
    catch (const NotPossible& notPossible)
    {
        errors << "deskphone: " << notPossible.what() << '\n';
        return false;
    }
}
} // namespace

bool showHistory(const Options& options, std::ostream& screen, std::ostream& errors)
{
    const TelephoneSettings settings = setUp(options);
    Host::SimulatedEventLoop loop(options.at.value_or(std::time(nullptr)));
    const Host::EventLoop::Scope scope(loop);
    const std::filesystem::path folder = folderToLookInto(options);
    if (folder.empty())
    {
        errors << "deskphone: there is no stored history: " << Telephone::journalFile(options.dataFolder()).string()
               << '\n';
    }
    Telephone telephone(settings, folder);
    StorageProblem problem(telephone, errors);
    const bool isRead = telephone.isStored();
    const bool wasPossible = act(telephone, options, errors);
    loop.runUntilIdle();
    problem.tellWhenNew();
    if (!wasPossible)
    {
        return false;
    }
    if (isRead && !telephone.storeOrAbandon())
    {
        errors << "deskphone: the change was not stored\n";
        return false;
    }
    printList(screen, telephone, options);
    return isRead;
}
} // namespace Deskphone
