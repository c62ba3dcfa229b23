/**
 * A missed call of the history.
 *
 * Viewed at first: its source calls setViewed(false) for a call that the user has not seen. Times given as text
 * are the journal's ISO 8601 texts. The item source is not owned. See ConversationItem for who owns items.
 */
#pragma once

#include "ConversationAPI/ConversationItem.h"

namespace ConversationAPI
{
class JournalServiceConversationItemSource;

class MissedCallConversationItem : public ConversationItem
{
  public:
    MissedCallConversationItem(const std::string& timeAndDate, const std::string& number, const std::string& firstName,
                               const std::string& lastName, ConversationParticipantFactory* factory);
    MissedCallConversationItem(long time, const std::string& number, const std::string& firstName,
                               const std::string& lastName, ConversationParticipantFactory* factory);

    /** A group call that was missed is one, whoever answered it. */
    ConversationItemState getState() const override;
    ConversationItem* clone() override;
    std::string toDetailsString() const override { return formatLocalTime(); }
    std::string toTimeString() const override { return formatLocalTime(); }
    bool isGroupCall() const override { return groupStatus_; }
    std::string getGroupName() const override { return details_->groupName.str(); }
    std::string getGroupNumber() const override { return details_->groupNumber.str(); }
    void setViewed(bool viewed) override { viewed_ = viewed; }
    bool getViewed() const override { return viewed_; }
    int numberOfNewEvents() override { return viewed_ ? 0 : 1; }
    const CallPartyIdentifier* getForwardedCallParty() const override { return &details_->forwardedCallParty; }
    void setForwardedCallParty(const CallPartyIdentifier& party) override
    {
        details_.write().forwardedCallParty = party;
    }

    void setGroupStatus(bool groupCall) { groupStatus_ = groupCall; }
    void setGroupName(const std::string& name) { details_.write().groupName.assign(name); }
    void setGroupNumber(const std::string& number) { details_.write().groupNumber.assign(number); }

    /** Whether somebody else answered the call. */
    void setAnswerStatus(bool answered) { answerStatus_ = answered; }
    bool getAnswerStatus() const { return answerStatus_; }

    /** The source to be told when the user has seen the call; null when there is none. */
    void setCallBackForWhenViewed(JournalServiceConversationItemSource* source) { itemSource_ = source; }
    JournalServiceConversationItemSource* getItemSource() const { return itemSource_; }

  protected:
    const SharedText& groupNameText() const override { return details_->groupName; }
    const SharedText& groupNumberText() const override { return details_->groupNumber; }

  private:
    /** What few calls have. */
    struct Details
    {
        CallPartyIdentifier forwardedCallParty;
        SharedText groupName;
        SharedText groupNumber;
    };

    bool viewed_ = true;
    bool answerStatus_ = false;
    bool groupStatus_ = false;
    JournalServiceConversationItemSource* itemSource_ = nullptr;
    CopyOnWrite<Details> details_;
};
} // namespace ConversationAPI
