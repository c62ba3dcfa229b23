/** Holds for conversations of one id; a phantom's is the one it shows. */
#pragma once

#include "ConversationAPI/ConversationUnaryCondition.h"
#include "ConversationAPI/SharedText.h"

#include <string>

namespace ConversationAPI
{
namespace ConversationListConditions
{
class ConversationIDCondition : public ConversationUnaryCondition
{
  public:
    explicit ConversationIDCondition(SharedText id);
    explicit ConversationIDCondition(const std::string& id);

    bool operator()(Conversation* conversation) const override;
    bool gatherCandidates(ConversationCandidates& candidates) const override;

  private:
    SharedText id_;
};
} // namespace ConversationListConditions
} // namespace ConversationAPI
