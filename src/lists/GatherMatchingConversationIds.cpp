#include "ConversationAPI/GatherMatchingConversationIds.h"

#include "ConversationAPI/Conversation.h"

namespace ConversationAPI
{
GatherMatchingConversationIds::GatherMatchingConversationIds(const std::string& searchString)
    : searchString_(searchString)
{
}

void GatherMatchingConversationIds::operator()(Conversation* conversation)
{
    if (matcher_.matches(conversation, searchString_))
    {
        ids.push_back(conversation->getConversationId());
    }
}
} // namespace ConversationAPI
