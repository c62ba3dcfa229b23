/**
 * What delivers conversations: the item aggregator, the directory, the cloud, the network's call log.
 *
 * A source owns its conversations; pointers are valid until the source reports a change. Sources and
 * observers do not own each other. Observers added during a notification are told from the next one on. UI
 * thread only.
 */
#pragma once

#include <string>
#include <vector>

namespace ConversationAPI
{
class Conversation;
class ConversationList;
class ConversationSourceObserverIfc;

class ConversationSourceIfc
{
  public:
    virtual ~ConversationSourceIfc() = default;

    /** The source's own list, never null. */
    virtual ConversationList* getConversations() const = 0;

    /** Null when there is none. */
    virtual Conversation* getConversation(const std::string& conversationId) = 0;
    virtual void addObserver(ConversationSourceObserverIfc* observer) = 0;
    virtual void removeObserver(ConversationSourceObserverIfc* observer) = 0;

    /** The direct conversation with a user of a directory or cloud service; null when there is none. */
    virtual Conversation* getConversationForUser(const std::string& user) = 0;

    /** The ids that must not be given to anybody else yet. */
    virtual std::vector<std::string> getInUseConversationIds() = 0;
    virtual void clearSearchResults() = 0;
    virtual void voiceMailChanged(const std::string& oldNumber, const std::string& newNumber) = 0;
    virtual void deleteConversation(const std::string& conversationId) = 0;
    virtual void deleteConversations() = 0;

    /** 1 call history, the telephone's or the network's, or a combined list; 2 directory, 3 cloud. */
    virtual int getSourceType() = 0;

    /** A conversation elsewhere (a contact) changed. */
    virtual void conversationUpdated(Conversation* conversation) = 0;
    virtual void markAllMissedCallsRead() = 0;
};
} // namespace ConversationAPI
