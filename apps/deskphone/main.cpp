#include "ContactCommand.h"
#include "ExitCode.h"
#include "Explain.h"
#include "Options.h"
#include "Replay.h"
#include "SearchCommand.h"
#include "StoredHistory.h"
#include "TextColumn.h"
#include "TraceReader.h"
#include "host/LogSink.h"

#include <exception>
#include <iostream>

namespace
{
void setUpLog(const Deskphone::Options& options)
{
    Host::LogSink& sink = Host::LogSink::instance();
    if (options.logLevel)
    {
        sink.setLevel(*options.logLevel);
    }
    sink.setPlainText(options.logPlain);
}

bool carryOut(const Deskphone::Options& options)
{
    switch (options.command)
    {
    case Deskphone::Options::REPLAY:
        return Deskphone::replay(Deskphone::readTrace(options.trace), options, std::cout, std::cerr);
    case Deskphone::Options::EXPLAIN:
        return Deskphone::explain(Deskphone::readTrace(options.trace), options, std::cout, std::cerr);
    case Deskphone::Options::SEARCH:
        return Deskphone::searchPeople(options, std::cout, std::cerr);
    case Deskphone::Options::CONTACT_LIST:
    case Deskphone::Options::CONTACT_ADD:
    case Deskphone::Options::CONTACT_CHANGE:
    case Deskphone::Options::CONTACT_REMOVE:
        Deskphone::manageContacts(options, std::cout, std::cerr);
        return true;
    default:
        return Deskphone::showHistory(options, std::cout, std::cerr);
    }
}

Deskphone::ExitCode run(const Deskphone::Options& options)
{
    const bool wasAllPossible = carryOut(options);
    std::cout.flush();
    if (!std::cout)
    {
        std::cerr << "deskphone: cannot write the list\n";
        return Deskphone::FAILED;
    }
    return wasAllPossible ? Deskphone::ALL_WENT_WELL : Deskphone::NOT_ALL_POSSIBLE;
}
} // namespace

int main(int argc, char** argv)
{
    try
    {
        Deskphone::ExitCode exitCode = Deskphone::ALL_WENT_WELL;
        const auto options = Deskphone::parseOptions(argc, argv, exitCode);
        if (!options)
        {
            return exitCode;
        }
        Deskphone::useUtf8();
        setUpLog(*options);
        return run(*options);
    }
    catch (const Deskphone::BrokenTrace& error)
    {
        std::cerr << error.what() << '\n';
        return Deskphone::BROKEN_INPUT;
    }
    catch (const Deskphone::ContactProblem& problem)
    {
        std::cerr << "deskphone: " << problem.what() << '\n';
        return Deskphone::BROKEN_INPUT;
    }
    catch (const std::exception& error)
    {
        std::cerr << "deskphone: " << error.what() << '\n';
        return Deskphone::FAILED;
    }
}
