/**
 * A message of the cloud service itself: somebody joined, left, was added. See ConversationItem for who owns items.
 */
#pragma once

#include "ConversationAPI/ConversationItem.h"

namespace ConversationAPI
{
class SystemConversationItem : public ConversationItem
{
  public:
    SystemConversationItem(const std::string& creatorId, long time, const std::string& number,
                           const std::string& firstName, const std::string& lastName,
                           ConversationParticipantFactory* factory);

    ConversationItemState getState() const override { return ConversationItemState::SYSTEM_MESSAGE; }
    ConversationItem* clone() override;
    std::string toDetailsString() const override { return formatLocalTime(); }
    std::string toTimeString() const override { return formatLocalTime(); }
    systemMessageType getType() const override { return type_; }
    addParticipantReason getAddParticipantReason() const override { return addParticipantReason_; }
    bool getUserHasLeftOrJoined() const override { return userHasLeftOrJoined_; }
    std::vector<std::string> getAffectedParticipants() const override { return affectedParticipants_; }
    std::string getCreatorId() const override { return creatorId_; }

    void setType(systemMessageType type) { type_ = type; }
    void setAddParticipantReason(addParticipantReason reason) { addParticipantReason_ = reason; }
    void setUserHasLeftOrJoined() { userHasLeftOrJoined_ = true; }
    void addAffectedParticipant(const std::string& name) { affectedParticipants_.push_back(name); }

  private:
    systemMessageType type_ = NO_SYSTEM_MESSAGE;
    addParticipantReason addParticipantReason_ = NO_ADD_PARTICIPANT_REASON;
    bool userHasLeftOrJoined_ = false;
    std::vector<std::string> affectedParticipants_;
    std::string creatorId_;
};
} // namespace ConversationAPI
