#include "ConversationAPI/ConversationIDGenerator.h"

namespace ConversationAPI
{
void ConversationIDGenerator::remember(const std::string& id, ConversationItem* item)
{
    updateCache(id, item);
}

void ConversationIDGenerator::callEnded(const std::string&, const std::string&, ConversationItem*) {}

void ConversationIDGenerator::callJoinedOther(const std::string&) {}

std::string ConversationIDGenerator::knownConversationID(Conversation*)
{
    return {};
}

SharedText ConversationIDGenerator::getSharedConversationID(Conversation* conversation)
{
    return SharedText(getConversationID(conversation));
}
} // namespace ConversationAPI
