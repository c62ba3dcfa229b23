/** Gathers the ids of conversations that match a search text, in list order. */
#pragma once

#include "ConversationAPI/ConversationExecutor.h"
#include "ConversationAPI/ConversationMatcher.h"

#include <string>
#include <vector>

namespace ConversationAPI
{
class GatherMatchingConversationIds : public ConversationExecutor
{
  public:
    explicit GatherMatchingConversationIds(const std::string& searchString);

    void operator()(Conversation* conversation) override;

    std::vector<std::string> ids;

  private:
    ConversationMatcher matcher_;
    std::string searchString_;
};
} // namespace ConversationAPI
