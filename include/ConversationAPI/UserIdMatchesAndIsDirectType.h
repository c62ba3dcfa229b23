/** Holds for the direct conversation with a user. */
#pragma once

#include "ConversationAPI/ConversationUnaryCondition.h"

#include <string>

namespace ConversationAPI
{
namespace ConversationListConditions
{
class UserIdMatchesAndIsDirectType : public ConversationUnaryCondition
{
  public:
    explicit UserIdMatchesAndIsDirectType(const std::string& userId);

    bool operator()(Conversation* conversation) const override;

  private:
    std::string userId_;
};
} // namespace ConversationListConditions
} // namespace ConversationAPI
