/**
 * What a display implements to keep its rows like those of a conversation aggregator.
 *
 * docs/observers.md says when each operation comes and what may be done inside it. Conversations and lists stay
 * the aggregator's; a conversation is valid until conversationDeleted() came back or conversationListChanged() is
 * called: then those of before are gone already. Before the sources are ready they also go without a word.
 * Indexes are places in the aggregator's list, from 0. UI thread only.
 */
#pragma once

namespace ConversationAPI
{
class Conversation;
class ConversationList;

class ConversationObserver
{
  public:
    virtual ~ConversationObserver() = default;

    /**
     * The list is to be read anew as a whole; what was told of single conversations before no longer counts. Null
     * from a list provider that never had a source; one whose source was taken off still gives out the last list.
     */
    virtual void conversationListChanged(ConversationList* list) = 0;

    /** Neither the conversation's place nor anything but its presence changed. */
    virtual void conversationPresenceUpdated(Conversation* conversation) = 0;

    /** The conversation changed and stands at this index now, which may be where it stood before. */
    virtual void conversationUpdatedAndMoved(Conversation* conversation, int index) = 0;
    virtual void newConversation(Conversation* conversation, int index) = 0;

    /** The conversation is about to go. */
    virtual void conversationDeleted(Conversation* conversation) = 0;
};
} // namespace ConversationAPI
