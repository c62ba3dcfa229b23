#include "ConversationAPI/GatherTemporaryConversationIds.h"

#include "ConversationAPI/Conversation.h"

#include <algorithm>

namespace ConversationAPI
{
namespace ConversationListExecutors
{
void GatherTemporaryConversationIds::operator()(Conversation* conversation)
{
    const std::string& id = conversation->getConversationId();
    if (conversation->isTemporary() && notAlreadyInContainer(id))
    {
        ids.push_back(id);
    }
}

bool GatherTemporaryConversationIds::notAlreadyInContainer(const std::string& id)
{
    return std::find(ids.begin(), ids.end(), id) == ids.end();
}
} // namespace ConversationListExecutors
} // namespace ConversationAPI
