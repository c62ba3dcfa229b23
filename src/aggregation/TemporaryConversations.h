/**
 * What an aggregator gave out without listing it, and what it keeps only because somebody may still hold it.
 *
 * It owns both: copies of conversations that were looked up, and what was retired, until it is told to release it.
 */
#pragma once

#include "ConversationAPI/ConversationList.h"

#include <memory>
#include <string>

namespace ConversationAPI
{
class NotificationRound;

class TemporaryConversations
{
  public:
    TemporaryConversations();
    ~TemporaryConversations();

    /** Null for "" and when there is none of this id. */
    Conversation* find(const std::string& conversationId) const;

    /** In the place of the one of its id, which is retired; but that one stays when both tell the same. */
    Conversation* add(std::unique_ptr<Conversation> conversation);

    /** Hands one over that is kept here; null when it is not. */
    std::unique_ptr<Conversation> take(Conversation* conversation);

    /** The call has ended. */
    void removeCall(const std::string& callId);

    /** Retires those of this id. */
    void retire(const std::string& conversationId);
    void retire(std::unique_ptr<Conversation> conversation);

    /** Deletes what was retired. */
    void release();

    /** Deletes everything, as soon as nobody is being told anything. */
    void clear(NotificationRound& round);

  private:
    ConversationList temporary_;
    ConversationList retired_;
};
} // namespace ConversationAPI
