/** Holds for live conversations with the party of an item, whichever call it is. The item is not owned and outlives the
 * condition. */
#pragma once

#include "ConversationAPI/ConversationUnaryCondition.h"

namespace ConversationAPI
{
class ConversationItem;

namespace ConversationListConditions
{
class ActiveCallMatcherIgnoringCallID : public ConversationUnaryCondition
{
  public:
    explicit ActiveCallMatcherIgnoringCallID(const ConversationItem* item);

    bool operator()(Conversation* conversation) const override;
    bool gatherCandidates(ConversationCandidates& candidates) const override;

  private:
    const ConversationItem* item_;
};
} // namespace ConversationListConditions
} // namespace ConversationAPI
