/**
 * The sources of conversations that an aggregator combines, in preferred order. None is owned.
 *
 * A source that is asked for something may make the application take off another one, or itself: one that was
 * taken off is not asked any more.
 */
#pragma once

#include "Observers.h"

#include <string>
#include <vector>

namespace ConversationAPI
{
class Conversation;
class ConversationSourceIfc;
class ConversationSourceObserverIfc;

class ConversationSources
{
  public:
    /** These from now on, without those that are null. */
    void set(std::vector<ConversationSourceIfc*> sources, ConversationSourceObserverIfc& observer);

    std::size_t size() const { return sources_.size(); }

    template <typename Request>
    void forEach(Request request) const
    {
        tellEach(sources_, request);
    }

    /** What the sources have under an id; the conversations stay theirs. */
    std::vector<Conversation*> conversations(const std::string& conversationId) const;

    /** The contact of this id; null when no source knows one. */
    Conversation* contact(const std::string& conversationId) const;
    Conversation* conversationForUser(const std::string& userId) const;

    /** With `historyOnly`, the contact that goes by the same id stays. */
    void deleteConversation(const std::string& conversationId, bool historyOnly);

  private:
    std::vector<ConversationSourceIfc*> sources_;
};
} // namespace ConversationAPI
