/**
 * A received call of the history.
 *
 * Times given as text are the journal's ISO 8601 texts. See ConversationItem for who owns items.
 */
#pragma once

#include "ConversationAPI/ConversationItem.h"

namespace ConversationAPI
{
class ReceivedCallConversationItem : public ConversationItem
{
  public:
    ReceivedCallConversationItem(const std::string& timeAndDate, const std::string& number,
                                 const std::string& firstName, const std::string& lastName,
                                 ConversationParticipantFactory* factory);
    ReceivedCallConversationItem(long time, const std::string& number, const std::string& firstName,
                                 const std::string& lastName, ConversationParticipantFactory* factory);

    ConversationItemState getState() const override { return ConversationItemState::RECEIVED; }
    ConversationItem* clone() override;
    std::string toDetailsString() const override { return formatLocalTime(); }
    std::string toTimeString() const override { return formatLocalTime(); }

    /** How long the call lasted, as it is shown: "(05:03)". */
    std::string getItemText() const override { return duration_.str(); }

    /** The same in whole minutes. */
    std::string getHistoryDuration() const override { return historyDuration_.str(); }
    const CallPartyIdentifier* getForwardedCallParty() const override { return &*forwardedCallParty_; }
    void setForwardedCallParty(const CallPartyIdentifier& party) override { forwardedCallParty_.write() = party; }

    void setDuration(const std::string& duration) { duration_.assign(duration); }
    void setHistoryDuration(const std::string& minutes) { historyDuration_.assign(minutes); }

  private:
    SharedText duration_;
    SharedText historyDuration_;
    CopyOnWrite<CallPartyIdentifier> forwardedCallParty_;
};
} // namespace ConversationAPI
