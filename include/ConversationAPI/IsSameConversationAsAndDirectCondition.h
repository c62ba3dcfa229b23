/** Holds for the direct conversations that an item belongs to. The item is not owned and outlives the condition. */
#pragma once

#include "ConversationAPI/ConversationItemMatcher.h"

namespace ConversationAPI
{
namespace ConversationListConditions
{
class IsSameConversationAsAndDirectCondition : public ConversationUnaryCondition
{
  public:
    explicit IsSameConversationAsAndDirectCondition(const ConversationItem* item);

    bool operator()(Conversation* conversation) const override;
    bool gatherCandidates(ConversationCandidates& candidates) const override;

  private:
    ConversationItemMatcher matcher_;
};
} // namespace ConversationListConditions
} // namespace ConversationAPI
