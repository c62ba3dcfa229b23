/**
 * What a conversation tells the lists that hold it.
 *
 * Called after the conversation has left its lock, save conversationKeysChanged(), which must not call back.
 */
#pragma once

#include "ConversationAPI/NumberUpdateReason.h"

#include <string>

namespace ConversationAPI
{
class Conversation;

class ConversationModificationObserverIfc
{
  public:
    virtual ~ConversationModificationObserverIfc() = default;

    /** `first` is the number now, `second` the number before; "" where there is none. */
    virtual void conversationNumberUpdated(numberUpdateReason reason, Conversation* conversation, std::string first,
                                           std::string second) = 0;

    /** The observer was added or removed. */
    virtual void conversationRegistered(Conversation* conversation) = 0;
    virtual void conversationUnregistered(Conversation* conversation) = 0;

    /** Something about the conversation of this id changed. */
    virtual void conversationModified(const std::string& conversationId) = 0;

    /** Something by which the conversation is looked up or ordered may have changed; its indexes are stale. */
    virtual void conversationKeysChanged(Conversation* conversation) = 0;
};
} // namespace ConversationAPI
