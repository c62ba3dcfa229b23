#include "ConversationAPI/GatherConversationIds.h"

#include "ConversationAPI/Conversation.h"

namespace ConversationAPI
{
namespace ConversationListExecutors
{
void GatherConversationIds::operator()(Conversation* conversation)
{
    ids.push_back(conversation->getConversationId());
}
} // namespace ConversationListExecutors
} // namespace ConversationAPI
