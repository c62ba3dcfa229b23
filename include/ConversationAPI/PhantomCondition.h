/** Holds for any phantom conversation, provided that the given one is a phantom, too; they need not be the same. */
#pragma once

#include "ConversationAPI/ConversationUnaryCondition.h"

namespace ConversationAPI
{
namespace ConversationListConditions
{
class PhantomCondition : public ConversationUnaryCondition
{
  public:
    explicit PhantomCondition(Conversation* phantom);

    bool operator()(Conversation* conversation) const override;
    bool gatherCandidates(ConversationCandidates& candidates) const override;

  private:
    Conversation* phantom_;
};
} // namespace ConversationListConditions
} // namespace ConversationAPI
