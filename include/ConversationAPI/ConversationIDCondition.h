/** Holds for conversations of one id; a phantom's is the one it shows. */
#pragma once

#include "ConversationAPI/ConversationUnaryCondition.h"

#include <string>

namespace ConversationAPI
{
namespace ConversationListConditions
{
class ConversationIDCondition : public ConversationUnaryCondition
{
  public:
    explicit ConversationIDCondition(const std::string& id);

    bool operator()(Conversation* conversation) const override;
    bool gatherCandidates(ConversationCandidates& candidates) const override;

  private:
    std::string id_;
};
} // namespace ConversationListConditions
} // namespace ConversationAPI
