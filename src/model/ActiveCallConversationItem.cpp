#include "ConversationAPI/ActiveCallConversationItem.h"

#include "model/CloneItem.h"

namespace ConversationAPI
{
ActiveCallConversationItem::ActiveCallConversationItem(const ActiveCall& call, ConversationParticipantFactory* factory)
    : call_(call), forwardedCallType_(call.getForwardType()), forwardedCallParty_(call.getForwardParty()),
      hdAudioIconStatus_(call.getHDAudioIconStatus()), dssCall_(call.isDSSCall())
{
    setTimeStampUTC(call.callInitiatedTime());
    setCallId(call.getCallId());
    setConversationState(call.getState());
    setIsConferenceConversation(call.isConferenceCall());
    ConversationItem::setLargeConference(call.isLargeConference());
    ConversationItem::setConversationParticipantFactory(factory);
    for (const CallPartyIdentifier& party : call.participants())
    {
        ConversationItem::addParticipant(party);
    }
}

ConversationItem* ActiveCallConversationItem::clone()
{
    return cloneOf(*this);
}

ActiveCall::callDirection ActiveCallConversationItem::activeCallDirection() const
{
    return call_.getCallDirection();
}

void ActiveCallConversationItem::setConversationState(ActiveCall::activeCallState callState)
{
    switch (callState)
    {
    case ActiveCall::CONNECTED:
        state_ = ConversationItemState::CONNECTED;
        break;
    case ActiveCall::LOCAL_ON_HOLD:
        state_ = ConversationItemState::LOCALLY_HELD;
        break;
    case ActiveCall::REMOTE_ON_HOLD:
        state_ = ConversationItemState::REMOTELY_HELD;
        break;
    case ActiveCall::CONFERENCE:
        state_ = ConversationItemState::CONFERENCE;
        break;
    case ActiveCall::INCOMING_CALL:
        state_ = ConversationItemState::PROGRESSING_INCOMING;
        break;
    case ActiveCall::REMOTE_CALL:
        state_ = ConversationItemState::STARTED_REMOTE_CALL;
        break;
    case ActiveCall::CLEARING:
        state_ = ConversationItemState::CLEARING;
        break;
    case ActiveCall::GROUP_PICKUP_CONNECTED:
        state_ = ConversationItemState::GROUP_PICKUP_CONNECTED;
        break;
    case ActiveCall::GROUP_PICKUP_INCOMING:
        state_ = ConversationItemState::GROUP_PICKUP_INCOMING;
        break;
    case ActiveCall::ISOLATED:
        state_ = ConversationItemState::ISOLATED;
        break;
    case ActiveCall::CALL_WAITING_ISOLATED:
        state_ = ConversationItemState::CALL_WAITING_ISOLATED;
        break;
    case ActiveCall::CALL_WAITING_IGNORED:
        state_ = ConversationItemState::CALL_WAITING_IGNORED;
        break;
    case ActiveCall::CALL_WAITING:
        state_ = ConversationItemState::CALL_WAITING;
        break;
    case ActiveCall::REPRESENT_HELD_CALL:
        state_ = ConversationItemState::REPRESENTED_HELD_CALL;
        break;
    case ActiveCall::BLINDTRANSFERRING:
        state_ = ConversationItemState::BLIND_TRANSFERRING;
        break;
    default:
        state_ = ConversationItemState::PROGRESSING_OUTGOING;
        break;
    }
}
} // namespace ConversationAPI
