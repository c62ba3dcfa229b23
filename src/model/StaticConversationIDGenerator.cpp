#include "ConversationAPI/StaticConversationIDGenerator.h"

namespace ConversationAPI
{
StaticConversationIDGenerator::StaticConversationIDGenerator(const std::string& id) : id_(id) {}

std::string StaticConversationIDGenerator::getConversationID(Conversation*)
{
    return id_;
}

void StaticConversationIDGenerator::updateCache(const std::string&, ConversationItem*) {}

void StaticConversationIDGenerator::garbageCollect() {}
} // namespace ConversationAPI
