/** Always gives one identifier: for contacts and cloud conversations, whose key is known beforehand. */
#pragma once

#include "ConversationAPI/ConversationIDGenerator.h"

namespace ConversationAPI
{
class StaticConversationIDGenerator : public ConversationIDGenerator
{
  public:
    explicit StaticConversationIDGenerator(const std::string& id);

    std::string getConversationID(Conversation* conversation) override;
    void updateCache(const std::string& id, ConversationItem* item) override;
    void garbageCollect() override;

  private:
    std::string id_;
};
} // namespace ConversationAPI
