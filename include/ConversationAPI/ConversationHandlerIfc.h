/**
 * The query face that the conversation aggregator and the list provider share.
 *
 * Conversations stay the handler's; look-ups give null when nothing is found, and pointers are valid until
 * the handler reports a change. UI thread only.
 */
#pragma once

#include <string>

namespace ConversationAPI
{
class Conversation;
class ConversationList;

class ConversationHandlerIfc
{
  public:
    virtual ~ConversationHandlerIfc() = default;

    virtual ConversationList* getConversations() const = 0;
    virtual Conversation* getConversation(unsigned int index) const = 0;

    /** By call control's id of a live call. */
    virtual Conversation* getConversation(std::string callId) const = 0;
    virtual Conversation* getConversationByConversationID(const std::string& conversationId) = 0;

    /** By first name, last name and number of the contact. */
    virtual Conversation* getConversationByContact(const std::string& firstName, const std::string& lastName,
                                                   const std::string& number) const = 0;
    virtual Conversation* getDirectConversationByContact(const std::string& firstName, const std::string& lastName,
                                                         const std::string& number) const = 0;
    virtual Conversation* getConversationForUser(const std::string& userId) const = 0;
    virtual void deleteConversation(const std::string& conversationId) = 0;
    virtual void deleteConversations() = 0;

    /** False when there was nothing to ask. */
    virtual bool markAllMissedCallsRead() = 0;
};
} // namespace ConversationAPI
