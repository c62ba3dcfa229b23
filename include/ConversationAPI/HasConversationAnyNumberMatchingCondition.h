/** Holds for conversations that have a number, which is in comparable form; "" is nobody's. */
#pragma once

#include "ConversationAPI/ConversationUnaryCondition.h"

#include <string>

namespace ConversationAPI
{
namespace ConversationListConditions
{
class HasConversationAnyNumberMatchingCondition : public ConversationUnaryCondition
{
  public:
    explicit HasConversationAnyNumberMatchingCondition(const std::string& number);

    bool operator()(Conversation* conversation) const override;
    bool gatherCandidates(ConversationCandidates& candidates) const override;

  private:
    std::string number_;
};
} // namespace ConversationListConditions
} // namespace ConversationAPI
