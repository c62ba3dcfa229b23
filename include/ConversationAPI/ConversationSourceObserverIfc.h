/**
 * What conversation sources report to.
 *
 * Conversations passed here stay the source's, and live until every observer has come back, even if one of them has
 * them deleted. UI thread only.
 */
#pragma once

#include <string>

namespace ConversationAPI
{
class Conversation;
class ConversationSourceIfc;

class ConversationSourceObserverIfc
{
  public:
    virtual ~ConversationSourceObserverIfc() = default;

    virtual void conversationUpdated(Conversation* conversation) = 0;

    /** The source's list is another one now; pointers into the old one are gone. */
    virtual void conversationsChanged() = 0;

    /** A live call ended; `source` is null when the call belongs to no particular source. */
    virtual void removeActiveItemForCall(const std::string& callId, ConversationSourceIfc* source) = 0;
    virtual bool hasConversationWithConversationId(const std::string& conversationId) = 0;

    /** The source has subscribed to its service and has its conversations. */
    virtual void conversationSourcesReady() = 0;
};
} // namespace ConversationAPI
