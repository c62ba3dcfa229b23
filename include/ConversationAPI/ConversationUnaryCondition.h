/**
 * A question that a list asks of its conversations.
 *
 * Asked under the list's lock: a condition never touches the list that runs it.
 */
#pragma once

namespace ConversationAPI
{
class Conversation;
class ConversationCandidates;

class ConversationUnaryCondition
{
  public:
    virtual ~ConversationUnaryCondition() = default;

    virtual bool operator()(Conversation* conversation) const = 0;

    /** Names the conversations that come into question; false when that cannot be told and all do. */
    virtual bool gatherCandidates(ConversationCandidates& candidates) const;
};
} // namespace ConversationAPI
