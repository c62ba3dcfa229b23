#include "host/CallControl.h"

#include "ConversationAPI/ActiveCallConversationItemSource.h"
#include "host/Clock.h"
#include "host/Journal.h"
#include "platform/Logging.h"

#include <utility>

namespace Host
{
using ConversationAPI::ActiveCall;

namespace
{
constexpr const char* CALL_CONTROL_LOG_FILE = "./host/CallControl";

bool isSpoken(ActiveCall::activeCallState state)
{
    switch (state)
    {
    case ActiveCall::CONNECTED:
    case ActiveCall::LOCAL_ON_HOLD:
    case ActiveCall::REMOTE_ON_HOLD:
    case ActiveCall::CONFERENCE:
    case ActiveCall::GROUP_PICKUP_CONNECTED:
        return true;
    default:
        return false;
    }
}

/** The other states are those of calls that others have, and of the end of a call. */
bool ringsHere(ActiveCall::activeCallState state)
{
    switch (state)
    {
    case ActiveCall::INCOMING_CALL:
    case ActiveCall::OUTGOING_CALL:
    case ActiveCall::CALL_WAITING:
    case ActiveCall::CALL_WAITING_IGNORED:
    case ActiveCall::CALL_WAITING_ISOLATED:
        return true;
    default:
        return false;
    }
}
} // namespace

CallControl::CallControl(ConversationAPI::ActiveCallConversationItemSource& liveCalls, Journal& journal)
    : liveCalls_(liveCalls), journal_(journal)
{
}

void CallControl::callReported(const ActiveCall& call)
{
    if (call.getCallId().empty())
    {
        logAppOrv("Host", CALL_CONTROL_LOG_FILE, 2, __LINE__, "A call without an id was reported");
        return;
    }
    const auto added = calls_.emplace(call.getCallId(), Call{call, call.getState(), false, currentTime(nullptr), 0});
    Call& known = added.first->second;
    if (!added.second)
    {
        known.record.updateFrom(call);
    }
    note(known, call.getState());
    liveCalls_.activeCallEvent(call);
}

void CallControl::note(Call& call, ActiveCall::activeCallState state)
{
    call.isOurs = call.isOurs || ringsHere(state) || isSpoken(state);
    if (call.answeredAt == 0 && isSpoken(state))
    {
        call.answeredAt = currentTime(nullptr);
    }
}

void CallControl::callEnded(const std::string& callId, const CallEnd& end)
{
    const std::string id = callId; // who is told of the entry may be who owns the text
    const auto found = calls_.find(id);
    if (found != calls_.end() && found->second.isOurs)
    {
        const Call ended = std::move(found->second);
        calls_.erase(found);
        journal_.addCall(entryOf(ended, end));
    }
    callCleared(id);
}

void CallControl::callCleared(const std::string& callId)
{
    const std::string id = callId;
    calls_.erase(id);
    liveCalls_.clearActiveCallEvent(id);
}

bool CallControl::isOutgoing(const Call& call)
{
    const ActiveCall::callDirection direction = call.record.getCallDirection();
    return direction == ActiveCall::OUTGOING ||
           (direction != ActiveCall::INCOMING && call.firstState == ActiveCall::OUTGOING_CALL);
}

bool CallControl::isReceived(const Call& call)
{
    return !isOutgoing(call) && call.answeredAt != 0;
}

/** Who came to a conference has an entry of the call with which he came. */
JournalCall CallControl::entryOf(const Call& call, const CallEnd& end)
{
    JournalCall entry;
    entry.setParty(call.record.participants().front());
    entry.info.setCallTime(localIso8601(isReceived(call) ? call.answeredAt : call.beganAt));
    entry.setRedirectingParty(call.record.getForwardParty());
    if (call.answeredAt != 0)
    {
        entry.setDuration(currentTime(nullptr) - call.answeredAt);
    }
    if (isOutgoing(call))
    {
        entry.kind = JournalCall::DIALLED;
    }
    else if (isReceived(call))
    {
        entry.kind = JournalCall::RECEIVED;
    }
    else if (!end.forwardedTo.getNumber().empty())
    {
        entry.kind = JournalCall::FORWARDED;
        entry.setRedirectingParty(end.forwardedTo);
    }
    else
    {
        entry.kind = JournalCall::MISSED;
        entry.info.setAnswered(end.answeredElsewhere);
        entry.info.setGroupName(end.groupName);
        entry.info.setGroupNumber(end.groupNumber);
    }
    return entry;
}
} // namespace Host
