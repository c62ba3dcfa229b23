/**
 * The messages waiting in the voice mailbox.
 *
 * Its one party is the mailbox's number, without names. See ConversationItem for who owns items.
 */
#pragma once

#include "ConversationAPI/ConversationItem.h"

namespace ConversationAPI
{
class VoicemailConversationItem : public ConversationItem
{
  public:
    VoicemailConversationItem(const std::string& timeAndDate, const std::string& voicemailNumber,
                              ConversationParticipantFactory* factory);
    VoicemailConversationItem(long time, const std::string& voicemailNumber, ConversationParticipantFactory* factory);

    ConversationItemState getState() const override { return ConversationItemState::VOICEMAIL; }
    ConversationItem* clone() override;
    std::string toDetailsString() const override { return formatLocalTime(); }
    std::string toTimeString() const override { return formatLocalTime(); }

    /** The number of messages; -1 when some wait and nobody knows how many. */
    int numberOfNewEvents() override { return numberOfVoiceMessages_; }

    void setNumberOfVoiceMessages(int count) { numberOfVoiceMessages_ = count; }
    bool isVoiceMailMessageWaiting() const { return messageWaiting_; }
    void setVoiceMailMessageWaiting(bool waiting) { messageWaiting_ = waiting; }

  private:
    int numberOfVoiceMessages_ = 0;
    bool messageWaiting_ = false;
};
} // namespace ConversationAPI
