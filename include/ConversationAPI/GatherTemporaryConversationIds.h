/** Gathers the ids of temporary conversations, each once, in list order. */
#pragma once

#include "ConversationAPI/ConversationExecutor.h"

#include <string>
#include <vector>

namespace ConversationAPI
{
namespace ConversationListExecutors
{
class GatherTemporaryConversationIds : public ConversationExecutor
{
  public:
    void operator()(Conversation* conversation) override;
    virtual bool notAlreadyInContainer(const std::string& id);

    std::vector<std::string> ids;
};
} // namespace ConversationListExecutors
} // namespace ConversationAPI
