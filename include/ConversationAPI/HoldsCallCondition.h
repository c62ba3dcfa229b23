/** Holds for the conversation with a call, wherever among its items the call stands; for none with the call id "". */
#pragma once

#include "ConversationAPI/ConversationUnaryCondition.h"

#include <string>

namespace ConversationAPI
{
namespace ConversationListConditions
{
class HoldsCallCondition : public ConversationUnaryCondition
{
  public:
    explicit HoldsCallCondition(const std::string& callId);

    bool operator()(Conversation* conversation) const override;
    bool gatherCandidates(ConversationCandidates& candidates) const override;

  private:
    std::string callId_;
};
} // namespace ConversationListConditions
} // namespace ConversationAPI
