/** What the host's call journal is told and keeps. All are values. */
#pragma once

#include "platform/CallJournal.h"
#include "platform/CallPartyIdentifier.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace Host
{
/** One call that has ended. */
struct JournalCall
{
    /** In the order in which the history tells its calls. */
    enum Kind
    {
        DIALLED,
        RECEIVED,
        MISSED,
        FORWARDED
    };

    Kind kind = MISSED;
    std::string firstName; ///< of the remote party
    std::string surname;

    /** Number, type, time, redirecting party and duration; what is beyond that concerns missed calls. */
    MissedCallItem::MissedCallInfo info;

    /** The remote party's names, number and type of number. */
    void setParty(const CallPartyIdentifier& party);

    /** Who redirected the call, or for a dialled or forwarded one, to whom it went. */
    void setRedirectingParty(const CallPartyIdentifier& party);

    /** Less than a second says nothing. */
    void setDuration(long seconds);
};

/** How much a journal keeps; where it has a limit of calls or entries, 0 counts as 1. */
struct JournalLimits
{
    std::size_t callsPerEntry = 20;
    std::size_t entriesPerKind = 500;

    /** Bytes that the file may grow to, its write-ahead log apart; 0 for no limit. Should hold what the other two
     *  let in: what does not fit is kept in memory alone. */
    std::uint64_t fileSize = 0;
};
} // namespace Host
