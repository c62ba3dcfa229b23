#include "EventCatalogue.h"
#include "Telephone.h"
#include "host/Clock.h"

namespace Deskphone
{
using ConversationAPI::ActiveCall;

namespace
{
/** The names are those under which the library logs the states. */
EventFields::Choices<ActiveCall::activeCallState> makeStates()
{
    EventFields::Choices<ActiveCall::activeCallState> states;
    for (int value = ActiveCall::CONNECTED; value <= ActiveCall::BLINDTRANSFERRING; ++value)
    {
        const auto state = static_cast<ActiveCall::activeCallState>(value);
        states.emplace_back(ConversationAPI::activeCallStateToString(state), state);
    }
    return states;
}

const EventFields::Choices<ActiveCall::activeCallState>& states()
{
    static const auto all = makeStates();
    return all;
}

const EventFields::Choices<ActiveCall::callDirection>& directions()
{
    static const EventFields::Choices<ActiveCall::callDirection> all = {
        {"incoming", ActiveCall::INCOMING},
        {"outgoing", ActiveCall::OUTGOING},
    };
    return all;
}

const EventFields::Choices<ActiveCall::conferenceState>& conferences()
{
    static const EventFields::Choices<ActiveCall::conferenceState> all = {
        {"large", ActiveCall::LARGE_CONFERENCE},
        {"small", ActiveCall::SMALL_CONFERENCE},
    };
    return all;
}

const EventFields::Choices<DisplayAPI::ForwardedCallType>& forwardTypes()
{
    static const EventFields::Choices<DisplayAPI::ForwardedCallType> all = {
        {"unconditional", DisplayAPI::FORWARDED_UNCONDITIONALLY},
        {"busy", DisplayAPI::FORWARDED_ON_BUSY},
        {"no-reply", DisplayAPI::FORWARDED_ON_NO_REPLY},
    };
    return all;
}

/** What call control tells of a call; its time is stamped when it is made. */
struct CallReport
{
    std::string callId;
    ActiveCall::activeCallState state = ActiveCall::CONNECTED;
    ActiveCall::callDirection direction = ActiveCall::NO_DIRECTION;
    ActiveCall::conferenceState conference = ActiveCall::NO_CONFERENCE;
    DisplayAPI::ForwardedCallType forwardType = DisplayAPI::NOT_FORWARDED;
    CallPartyIdentifier party;
    CallPartyIdentifier secondParty;
    CallPartyIdentifier forwardParty;
    bool hasSecondParty = false;
    bool hd = false;
    bool dss = false;

    ActiveCall makeCall() const
    {
        ActiveCall call = hasSecondParty ? ActiveCall(&Host::currentTime, callId, party, secondParty, conference)
                                         : ActiveCall(&Host::currentTime, callId, party, conference);
        call.setState(state);
        call.setCallDirection(direction);
        call.setForwardType(forwardType);
        call.setForwardParty(&forwardParty);
        call.setHDAudioIconStatus(hd);
        call.setDSSCall(dss);
        return call;
    }
};

Action readCall(EventFields& fields, long)
{
    CallReport report;
    report.callId = fields.requiredText("callId");
    report.state = fields.requiredChoice("state", states());
    report.direction = fields.choice("direction", directions(), ActiveCall::NO_DIRECTION);
    report.party = fields.party("party");
    report.hasSecondParty = fields.has("secondParty");
    report.secondParty = fields.party("secondParty");
    report.conference = fields.choice("conference", conferences(), ActiveCall::NO_CONFERENCE);
    report.forwardType = fields.choice("forwardType", forwardTypes(), DisplayAPI::NOT_FORWARDED);
    report.forwardParty = fields.party("forwardParty");
    report.hd = fields.flag("hd");
    report.dss = fields.flag("dss");
    return [report](Telephone& telephone) { telephone.liveCalls().activeCallEvent(report.makeCall()); };
}

Action readCallCleared(EventFields& fields, long)
{
    const std::string callId = fields.requiredText("callId");
    return [callId](Telephone& telephone) { telephone.liveCalls().clearActiveCallEvent(callId); };
}
} // namespace

void addCallEvents(EventCatalogue& catalogue)
{
    catalogue.add("call", readCall);
    catalogue.add("call-cleared", readCallCleared);
}
} // namespace Deskphone
