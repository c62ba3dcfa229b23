#include "ConversationAPI/ConversationIDCondition.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationCandidates.h"

#include <utility>

namespace ConversationAPI
{
namespace ConversationListConditions
{
ConversationIDCondition::ConversationIDCondition(SharedText id) : id_(std::move(id)) {}

ConversationIDCondition::ConversationIDCondition(const std::string& id) : id_(id) {}

bool ConversationIDCondition::operator()(Conversation* conversation) const
{
    return conversation->isPhantomConversation() ? conversation->getConversationId() == id_.str()
                                                 : conversation->storedIdText() == id_;
}

bool ConversationIDCondition::gatherCandidates(ConversationCandidates& candidates) const
{
    if (id_.empty())
    {
        return false;
    }
    candidates.withConversationId(id_);
    return true;
}
} // namespace ConversationListConditions
} // namespace ConversationAPI
