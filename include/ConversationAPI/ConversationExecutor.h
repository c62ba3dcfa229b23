/**
 * Something to be done with every conversation of a list.
 *
 * Runs under the list's lock: an executor never touches the list that runs it.
 */
#pragma once

namespace ConversationAPI
{
class Conversation;

class ConversationExecutor
{
  public:
    virtual ~ConversationExecutor() = default;

    virtual void operator()(Conversation* conversation) = 0;
};
} // namespace ConversationAPI
