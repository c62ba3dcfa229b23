/** Gathers the ids of all conversations, in list order. */
#pragma once

#include "ConversationAPI/ConversationExecutor.h"

#include <string>
#include <vector>

namespace ConversationAPI
{
namespace ConversationListExecutors
{
class GatherConversationIds : public ConversationExecutor
{
  public:
    void operator()(Conversation* conversation) override;

    std::vector<std::string> ids;
};
} // namespace ConversationListExecutors
} // namespace ConversationAPI
