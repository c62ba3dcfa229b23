#include "ConversationAPI/ConversationIDGenerator.h"

namespace ConversationAPI
{
/** updateCache() copies the item and changes nothing of it. */
void ConversationIDGenerator::remember(const std::string& id, const ConversationItem* item)
{
    updateCache(id, const_cast<ConversationItem*>(item));
}

bool ConversationIDGenerator::remembersContact(const SharedText&, const ConversationContact&) const
{
    return false;
}

void ConversationIDGenerator::callEnded(const std::string&, const std::string&, const ConversationItem*) {}

void ConversationIDGenerator::callJoinedOther(const std::string&) {}

bool ConversationIDGenerator::isRememberedAs(const std::string&, const ConversationItem&) const
{
    return false;
}

std::string ConversationIDGenerator::knownConversationID(Conversation*)
{
    return {};
}

void ConversationIDGenerator::expect(const std::vector<const ConversationItem*>&, std::vector<std::uint32_t>&) const {}
void ConversationIDGenerator::expectIds(const std::vector<std::uint32_t>&) const {}

SharedText ConversationIDGenerator::getSharedConversationID(Conversation* conversation)
{
    return SharedText(getConversationID(conversation));
}
} // namespace ConversationAPI
