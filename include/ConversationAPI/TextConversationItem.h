/**
 * A text message of a cloud conversation. See ConversationItem for who owns items.
 */
#pragma once

#include "ConversationAPI/ConversationItem.h"

namespace ConversationAPI
{
class TextConversationItem : public ConversationItem
{
  public:
    /** The cloud service's own numbers; 0 when nothing is to be told of the message. */
    enum ItemState : int
    {
        NO_ITEM_STATE = 0
    };

    TextConversationItem(const std::string& creatorId, long time, const std::string& number,
                         const std::string& firstName, const std::string& lastName,
                         ConversationParticipantFactory* factory);

    ConversationItemState getState() const override { return ConversationItemState::TEXT; }
    ConversationItem* clone() override;
    std::string toDetailsString() const override { return formatLocalTime(); }
    std::string toTimeString() const override { return formatLocalTime(); }
    std::string getCreatorId() const override { return creatorId_; }
    std::string getItemText() const override { return messageText_; }
    std::string getItemSubjectText() const override { return subjectText_; }

    void setMessageText(const std::string& text) { messageText_ = text; }
    void setSubjectText(const std::string& text) { subjectText_ = text; }
    void setItemState(ItemState state) { itemState_ = state; }

  private:
    std::string creatorId_;
    std::string messageText_;
    std::string subjectText_;
    ItemState itemState_ = NO_ITEM_STATE;
};
} // namespace ConversationAPI
