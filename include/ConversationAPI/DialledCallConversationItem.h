/**
 * A dialled call of the history.
 *
 * Times given as text are the journal's ISO 8601 texts. See ConversationItem for who owns items.
 */
#pragma once

#include "ConversationAPI/ConversationItem.h"

namespace ConversationAPI
{
class DialledCallConversationItem : public ConversationItem
{
  public:
    DialledCallConversationItem(const std::string& timeAndDate, const std::string& number, const std::string& firstName,
                                const std::string& lastName, ConversationParticipantFactory* factory);
    DialledCallConversationItem(long time, const std::string& number, const std::string& firstName,
                                const std::string& lastName, ConversationParticipantFactory* factory);

    ConversationItemState getState() const override { return ConversationItemState::DIALLED; }
    ConversationItem* clone() override;
    std::string toDetailsString() const override { return formatLocalTime(); }
    std::string toTimeString() const override { return formatLocalTime(); }

    /** How long the call lasted, as it is shown: "(05:03)". */
    std::string getItemText() const override { return duration_.str(); }

    /** The same in whole minutes. */
    std::string getHistoryDuration() const override { return historyDuration_.str(); }
    const CallPartyIdentifier* getForwardedCallParty() const override { return &*forwardedCallParty_; }

    /** Also makes a timed item one second older. */
    void setForwardedCallParty(const CallPartyIdentifier& party) override;

    void setDuration(const std::string& duration) { duration_.assign(duration); }
    void setHistoryDuration(const std::string& minutes) { historyDuration_.assign(minutes); }

  private:
    void decrementSoForwardedItemIsOlderThanDialledItem();

    SharedText duration_;
    SharedText historyDuration_;
    CopyOnWrite<CallPartyIdentifier> forwardedCallParty_;
};
} // namespace ConversationAPI
