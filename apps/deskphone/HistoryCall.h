/** One call of the history as a trace tells it. */
#pragma once

#include "EventFields.h"
#include "host/JournalCall.h"
#include "platform/CallPartyIdentifier.h"

#include <optional>
#include <string>

namespace Deskphone
{
class FieldWriter;

struct HistoryCall
{
    using Kind = Host::JournalCall::Kind;

    HistoryCall() = default;
    explicit HistoryCall(const Host::JournalCall& call);

    /** Its time is written in the zone that the program has by now. */
    Host::JournalCall forJournal() const;

    Kind kind = Host::JournalCall::MISSED;
    CallPartyIdentifier party;
    long time = 0;            ///< seconds since the epoch, UTC
    long durationSeconds = 0; ///< 0 when not known
    bool seen = false;        ///< the rest but the last concerns missed calls
    bool answeredElsewhere = false;
    std::string groupName;
    std::string groupNumber; ///< not empty for a group call

    /** Who redirected the call, or for a dialled or forwarded one, to whom it went. */
    std::optional<CallPartyIdentifier> forwardedParty;
};

const EventFields::Choices<HistoryCall::Kind>& historyKinds();

/** `time` is that of the event. */
HistoryCall readHistoryCall(EventFields& fields, long time);
void writeHistoryCall(FieldWriter& fields, const HistoryCall& call);
} // namespace Deskphone
