/**
 * A call of the history that was forwarded.
 *
 * The time is the journal's ISO 8601 text. See ConversationItem for who owns items.
 */
#pragma once

#include "ConversationAPI/ConversationItem.h"

namespace ConversationAPI
{
class ForwardedCallConversationItem : public ConversationItem
{
  public:
    ForwardedCallConversationItem(const std::string& timeAndDate, const std::string& number,
                                  const std::string& firstName, const std::string& lastName,
                                  ConversationParticipantFactory* factory);

    ConversationItemState getState() const override { return ConversationItemState::FORWARDED; }
    ConversationItem* clone() override;
    std::string toDetailsString() const override { return formatLocalTime(); }
    std::string toTimeString() const override { return formatLocalTime(); }

    /** How long the call lasted, as it is shown: "(05:03)". */
    std::string getItemText() const override { return duration_.str(); }
    const CallPartyIdentifier* getForwardedCallParty() const override { return &*forwardedCallParty_; }
    void setForwardedCallParty(const CallPartyIdentifier& party) override { forwardedCallParty_.write() = party; }

    void setDuration(const std::string& duration) { duration_.assign(duration); }

  private:
    SharedText duration_;
    CopyOnWrite<CallPartyIdentifier> forwardedCallParty_;
};
} // namespace ConversationAPI
