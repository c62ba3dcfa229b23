#include "EventCatalogue.h"
#include "FieldWriter.h"
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

class CallEvent : public Event
{
  public:
    CallEvent(EventFields& fields, long)
    {
        report_.callId = fields.requiredText("callId");
        report_.state = fields.requiredChoice("state", states());
        report_.direction = fields.choice("direction", directions(), ActiveCall::NO_DIRECTION);
        report_.party = fields.party("party");
        report_.hasSecondParty = fields.has("secondParty");
        report_.secondParty = fields.party("secondParty");
        report_.conference = fields.choice("conference", conferences(), ActiveCall::NO_CONFERENCE);
        report_.forwardType = fields.choice("forwardType", forwardTypes(), DisplayAPI::NOT_FORWARDED);
        report_.forwardParty = fields.party("forwardParty");
        report_.hd = fields.flag("hd");
        report_.dss = fields.flag("dss");
    }

    void apply(Telephone& telephone) const override { telephone.callControl().callReported(report_.makeCall()); }

    void write(FieldWriter& fields) const override
    {
        fields.text("callId", report_.callId);
        fields.choice("state", states(), report_.state);
        fields.choice("direction", directions(), report_.direction);
        fields.party("party", report_.party);
        if (report_.hasSecondParty)
        {
            fields.partyEvenIfUnknown("secondParty", report_.secondParty);
        }
        fields.choice("conference", conferences(), report_.conference);
        fields.choice("forwardType", forwardTypes(), report_.forwardType);
        fields.party("forwardParty", report_.forwardParty);
        fields.flag("hd", report_.hd);
        fields.flag("dss", report_.dss);
    }

  private:
    CallReport report_;
};

class CallEnded : public Event
{
  public:
    CallEnded(EventFields& fields, long) : callId_(fields.requiredText("callId"))
    {
        end_.answeredElsewhere = fields.flag("answeredElsewhere");
        end_.forwardedTo = fields.party("forwardedTo");
        end_.groupName = fields.text("groupName");
        end_.groupNumber = fields.text("groupNumber");
    }

    void apply(Telephone& telephone) const override { telephone.callControl().callEnded(callId_, end_); }

    void write(FieldWriter& fields) const override
    {
        fields.text("callId", callId_);
        fields.flag("answeredElsewhere", end_.answeredElsewhere);
        fields.party("forwardedTo", end_.forwardedTo);
        fields.text("groupName", end_.groupName);
        fields.text("groupNumber", end_.groupNumber);
    }

  private:
    const std::string callId_;
    Host::CallEnd end_;
};

class CallCleared : public Event
{
  public:
    CallCleared(EventFields& fields, long) : callId_(fields.requiredText("callId")) {}

    void apply(Telephone& telephone) const override { telephone.callControl().callCleared(callId_); }
    void write(FieldWriter& fields) const override { fields.text("callId", callId_); }

  private:
    const std::string callId_;
};
} // namespace

void addCallEvents(EventCatalogue& catalogue)
{
    catalogue.add<CallEvent>("call");
    catalogue.add<CallCleared>("call-cleared");
    catalogue.add<CallEnded>("call-ended");
}
} // namespace Deskphone
