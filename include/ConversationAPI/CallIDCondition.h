/** Holds for the conversation of a live call; a group pickup is found behind other items, too. */
#pragma once

#include "ConversationAPI/ConversationUnaryCondition.h"

#include <string>

namespace ConversationAPI
{
namespace ConversationListConditions
{
class CallIDCondition : public ConversationUnaryCondition
{
  public:
    explicit CallIDCondition(const std::string& callId);

    bool operator()(Conversation* conversation) const override;
    bool gatherCandidates(ConversationCandidates& candidates) const override;

  private:
    std::string callId_;
};
} // namespace ConversationListConditions
} // namespace ConversationAPI
