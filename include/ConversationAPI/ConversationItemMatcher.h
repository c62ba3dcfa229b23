/** Holds for the conversations that an item belongs to. The item is not owned and outlives the condition. */
#pragma once

#include "ConversationAPI/ConversationUnaryCondition.h"

namespace ConversationAPI
{
class ConversationItem;

namespace ConversationListConditions
{
class ConversationItemMatcher : public ConversationUnaryCondition
{
  public:
    explicit ConversationItemMatcher(const ConversationItem* item);

    bool operator()(Conversation* conversation) const override;
    bool gatherCandidates(ConversationCandidates& candidates) const override;

    /** The same without exchange and conversation ids: by call for live calls, else by the first party. */
    static bool compareIgnoringConversationId(const Conversation* conversation, const ConversationItem* item);

  private:
    const ConversationItem* item_;
};
} // namespace ConversationListConditions
} // namespace ConversationAPI
