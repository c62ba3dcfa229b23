// A telephone in a storm of calls, made to be killed at any moment, and what its journal must hold after that.
//
//   call_storm run DATA ROUND          calls, and writes a line for each call whose end is in the journal
//   call_storm check DATA CONFIRMED    every line of the file CONFIRMED is a call of the journal, none is there twice

#include "Telephone.h"
#include "host/Clock.h"
#include "host/SimulatedEventLoop.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <random>
#include <string>

namespace
{
using ConversationAPI::ActiveCall;

constexpr long START = 1772700000;
constexpr long ROUND_SECONDS = 100000;
constexpr int MOST_CALLS = 20000; // should nobody kill it

Deskphone::TelephoneSettings boundless()
{
    Deskphone::TelephoneSettings settings;
    settings.history.callsPerEntry = settings.history.entriesPerKind = 10'000'000;
    return settings;
}

/** Number and time tell one call of a storm from all others. */
std::string nameOf(const Host::JournalCall& call)
{
    return call.info.getRemoteNumber() + ' ' + call.info.getCallTime();
}

class Storm
{
  public:
    Storm(const char* folder, unsigned round)
        : loop_(START + round * ROUND_SECONDS), scope_(loop_), telephone_(boundless(), folder), random_(round)
    {
    }

    /** Some only ring, some are answered; now and then the user looks at the missed ones. */
    void call()
    {
        loop_.advanceBy(1000);
        const std::string id = std::to_string(++calls_);
        const std::string number = "030 2312" + std::to_string(10000 + random_() % 200);
        ActiveCall report(&Host::currentTime, id, {"", "Berg", number, CallPartyIdentifier::NO_ICON, "", false},
                          ActiveCall::NO_CONFERENCE);
        report.setCallDirection(random_() % 2 == 0 ? ActiveCall::INCOMING : ActiveCall::OUTGOING);
        report.setState(random_() % 2 == 0 ? ActiveCall::CONNECTED : ActiveCall::INCOMING_CALL);
        const std::string began = Host::localIso8601(loop_.now());
        telephone_.callControl().callReported(report);
        telephone_.callControl().callEnded(id);
        if (random_() % 10 == 0)
        {
            telephone_.conversations().markAllMissedCallsRead();
        }
        loop_.runUntilIdle();
        if (telephone_.journal().isStored())
        {
            std::cout << number << ' ' << began << std::endl;
        }
    }

  private:
    Host::SimulatedEventLoop loop_;
    const Host::EventLoop::Scope scope_;
    Deskphone::Telephone telephone_;
    std::mt19937 random_;
    unsigned calls_ = 0;
};

int check(const char* folder, const char* confirmed)
{
    Host::SimulatedEventLoop loop(START);
    const Host::EventLoop::Scope scope(loop);
    Deskphone::Telephone telephone(boundless(), folder);
    int faults = telephone.journal().problem().empty() ? 0 : 1;
    std::cerr << telephone.journal().problem();
    std::map<std::string, int> stored;
    for (const Host::JournalCall& call : telephone.journal().calls())
    {
        if (++stored[nameOf(call)] == 2)
        {
            std::cerr << nameOf(call) << " is there twice\n";
            ++faults;
        }
    }
    std::ifstream lines(confirmed);
    long count = 0;
    for (std::string line; std::getline(lines, line) && !lines.eof(); ++count) // a line without its end was not told
    {
        if (stored.count(line) == 0)
        {
            std::cerr << line << " is not there\n";
            ++faults;
        }
    }
    std::cout << count << " confirmed, " << stored.size() << " stored\n";
    return std::min(faults, 1);
}
} // namespace

int main(int argc, char** argv)
{
    const std::string command = argc == 4 ? argv[1] : "";
    if (command == "check")
    {
        return check(argv[2], argv[3]);
    }
    if (command != "run")
    {
        std::cerr << "usage: call_storm run DATA ROUND | check DATA CONFIRMED\n";
        return 2;
    }
    Storm storm(argv[2], static_cast<unsigned>(std::stoul(argv[3])));
    for (int calls = 0; calls < MOST_CALLS; ++calls)
    {
        storm.call();
    }
    return 0;
}
