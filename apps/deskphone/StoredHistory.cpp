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
#include <filesystem>

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

/** Whether that was possible. */
bool act(Telephone& telephone, const Options& options, std::ostream& errors)
{
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
    const TelephoneSettings settings = options.over({});
    if (!settings.timeZone.empty())
    {
        setTimeZone(settings.timeZone);
    }
    Host::SimulatedEventLoop loop(options.at.value_or(std::time(nullptr)));
    const Host::EventLoop::Scope scope(loop);
    const std::filesystem::path folder = options.dataFolder();
    const std::filesystem::path file = Telephone::journalFile(folder);
    std::error_code error;
    const bool exists = std::filesystem::exists(file, error) || error; // what cannot be looked at, the journal tells
    if (!exists)
    {
        errors << "deskphone: there is no stored history: " << file.string() << '\n'; // and looking makes none
    }
    Telephone telephone(settings, exists ? folder : std::filesystem::path());
    JournalProblem problem(telephone.journal(), errors);
    const bool isRead = telephone.journal().isStored();
    const bool wasPossible = isRead && act(telephone, options, errors);
    loop.runUntilIdle();
    problem.tellWhenNew();
    if (!wasPossible)
    {
        return false;
    }
    if (!telephone.journal().isStored())
    {
        errors << "deskphone: the change was not stored\n";
        return false;
    }
    printList(screen, telephone, options);
    return true;
}
} // namespace Deskphone
