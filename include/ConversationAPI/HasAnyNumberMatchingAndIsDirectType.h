/** Holds for direct conversations that have a number. */
#pragma once

#include "ConversationAPI/ConversationUnaryCondition.h"

#include <string>

namespace ConversationAPI
{
namespace ConversationListConditions
{
class HasAnyNumberMatchingAndIsDirectType : public ConversationUnaryCondition
{
  public:
    explicit HasAnyNumberMatchingAndIsDirectType(const std::string& number);

    bool operator()(Conversation* conversation) const override;
    bool gatherCandidates(ConversationCandidates& candidates) const override;

  private:
    std::string number_;
};
} // namespace ConversationListConditions
} // namespace ConversationAPI
