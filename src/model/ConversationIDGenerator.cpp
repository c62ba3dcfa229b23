#include "ConversationAPI/ConversationIDGenerator.h"

namespace ConversationAPI
{
void ConversationIDGenerator::remember(const std::string& id, ConversationItem* item)
{
    updateCache(id, item);
}

void ConversationIDGenerator::callEnded(const std::string&, const std::string&, ConversationItem*) {}

SharedText ConversationIDGenerator::getSharedConversationID(Conversation* conversation)
{
    return SharedText(getConversationID(conversation));
}
} // namespace ConversationAPI
