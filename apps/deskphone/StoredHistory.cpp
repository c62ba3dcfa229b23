#include "StoredHistory.h"

#include "ConversationAPI/AggregatorSwitchIfc.h"
#include "JournalProblem.h"
#include "PrintList.h"
#include "Telephone.h"
#include "TimeZone.h"
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
    return options.row != 0 || !options.number.empty();
}

const ConversationAPI::Conversation& namedRow(Telephone& telephone, const Options& options)
{
    return options.row != 0 ? rowAtPlace(telephone, options.row) : rowWithNumber(telephone, options.number);
}

void markRead(Telephone& telephone, const Options& options)
{
    if (namesRow(options))
    {
        telephone.markMissedRead(namedRow(telephone, options));
    }
    else
    {
        telephone.conversations().markAllMissedCallsRead();
    }
}

void deleteRows(Telephone& telephone, const Options& options)
{
    if (options.all)
    {
        telephone.conversations().deleteConversations();
    }
    else
    {
        deleteRow(telephone, namedRow(telephone, options));
    }
}

void act(Telephone& telephone, const Options& options)
{
    if (options.command == Options::MARK_READ)
    {
        markRead(telephone, options);
    }
    else if (options.command == Options::DELETE)
    {
        deleteRows(telephone, options);
    }
}
} // namespace

bool showHistory(const Options& options, std::ostream& screen, std::ostream& errors)
{
    const TelephoneSettings settings = options.over({});
    if (!settings.timeZone.empty())
    {
        setTimeZone(settings.timeZone);
    }
    Host::SimulatedEventLoop loop(options.at.value_or(std::time(nullptr)));
    const Host::EventLoop::Scope scope(loop);
    Telephone telephone(settings, options.journalFile());
    JournalProblem problem(telephone.journal(), errors);
    loop.runUntilIdle();
    try
    {
        act(telephone, options);
    }
    catch (const NotPossible& notPossible)
    {
        errors << "deskphone: " << notPossible.what() << '\n';
        return false;
    }
    loop.runUntilIdle();
    problem.tellWhenNew();
    printList(screen, telephone, options);
    return telephone.journal().isStored();
}
} // namespace Deskphone
