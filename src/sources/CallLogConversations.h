/**
 * The conversations of the network's call logs, and which of them are shown.
 *
 * A list deletes what is in it, and no conversation may be in two that do: all() owns them, shown() is a view which is
 * emptied before anything is deleted.
 */
#pragma once

#include "ConversationAPI/ConversationList.h"

#include <string>

namespace ConversationAPI
{
class NotificationRound;

class CallLogConversations
{
  public:
    CallLogConversations() = default;
    ~CallLogConversations();

    CallLogConversations(const CallLogConversations&) = delete;
    CallLogConversations& operator=(const CallLogConversations&) = delete;

    const ConversationList& all() const { return all_; }
    ConversationList& shown() { return shown_; }

    /** Empties both lists. The conversations are deleted as soon as nobody is being told anything. */
    void retireAll(NotificationRound& round);

    /** Takes a conversation over; it is not shown yet. */
    void add(Conversation* conversation) { all_.push_back(conversation); }

    /** Shows, in the order of all(), the calls of the kind that the filter names, or everything. */
    void show(const std::string& filter);

  private:
    ConversationList all_;
    ConversationList shown_;
};
} // namespace ConversationAPI
