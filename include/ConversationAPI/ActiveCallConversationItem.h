/**
 * A live call.
 *
 * A snapshot: it holds a copy of call control's record, and a change of the call makes a new item. Its time is
 * when the call began or was answered. See ConversationItem for who owns items.
 */
#pragma once

#include "ConversationAPI/ConversationItem.h"

namespace ConversationAPI
{
class ActiveCallConversationItem : public ConversationItem
{
  public:
    ActiveCallConversationItem(const ActiveCall& call, ConversationParticipantFactory* factory);

    /** A live call has no history text. */
    std::string toDetailsString() const override { return {}; }
    std::string toTimeString() const override { return {}; }
    ConversationItemState getState() const override { return state_; }
    ConversationItem* clone() override;
    ActiveCall::callDirection activeCallDirection() const override;
    bool isDSSCall() const override { return dssCall_; }
    bool getHDAudioIconStatus() const override { return hdAudioIconStatus_; }
    DisplayAPI::ForwardedCallType getForwardedCallType() const override { return forwardedCallType_; }
    const CallPartyIdentifier* getForwardedCallParty() const override { return &forwardedCallParty_; }

    /** Takes the state that stands for call control's; what has none of its own is outgoing. */
    void setConversationState(ActiveCall::activeCallState callState);

  private:
    ActiveCall call_;
    ConversationItemState state_ = ConversationItemState::PROGRESSING_OUTGOING;
    DisplayAPI::ForwardedCallType forwardedCallType_;
    CallPartyIdentifier forwardedCallParty_;
    bool hdAudioIconStatus_;
    bool dssCall_;
};
} // namespace ConversationAPI
