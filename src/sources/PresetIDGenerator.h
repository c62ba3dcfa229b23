/**
 * Gives the identifier that was set last: for a source that knows the identifier of each conversation before it makes
 * it. A conversation takes its identifier when it gets its first item, so one generator serves them all.
 */
#pragma once

#include "ConversationAPI/ConversationIDGenerator.h"

#include <string>

namespace ConversationAPI
{
class PresetIDGenerator : public ConversationIDGenerator
{
  public:
    void setNextID(const std::string& id) { id_ = id; }

    std::string getConversationID(Conversation*) override { return id_; }
    void updateCache(const std::string&, ConversationItem*) override {}
    void garbageCollect() override {}

  private:
    std::string id_;
};
} // namespace ConversationAPI
