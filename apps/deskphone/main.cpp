#include "Explain.h"
#include "Options.h"
#include "Replay.h"
#include "TextColumn.h"
#include "TraceReader.h"
#include "host/LogSink.h"

#include <exception>
#include <iostream>

namespace
{
constexpr int FAILED = 1;
constexpr int BROKEN_TRACE = 2;
constexpr int NOT_ALL_POSSIBLE = 3;

void setUpLog(const Deskphone::Options& options)
{
    Host::LogSink& sink = Host::LogSink::instance();
    if (options.logLevel)
    {
        sink.setLevel(*options.logLevel);
    }
    sink.setPlainText(options.logPlain);
}

int run(const Deskphone::Options& options)
{
    const Deskphone::Trace trace = Deskphone::readTrace(options.trace);
    const bool isReplay = options.command == Deskphone::Options::REPLAY;
    const bool wasAllPossible = isReplay ? Deskphone::replay(trace, options, std::cout, std::cerr)
                                         : Deskphone::explain(trace, options, std::cout, std::cerr);
    std::cout.flush();
    if (!std::cout)
    {
        std::cerr << "deskphone: cannot write the list\n";
        return FAILED;
    }
    return wasAllPossible ? 0 : NOT_ALL_POSSIBLE;
}
} // namespace

int main(int argc, char** argv)
{
    try
    {
        int exitCode = 0;
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
        return BROKEN_TRACE;
    }
    catch (const std::exception& error)
    {
        std::cerr << "deskphone: " << error.what() << '\n';
        return FAILED;
    }
}
