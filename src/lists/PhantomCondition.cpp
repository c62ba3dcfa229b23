#include "ConversationAPI/PhantomCondition.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationCandidates.h"
#include "ConversationAPI/WellKnownNames.h"

namespace ConversationAPI
{
namespace ConversationListConditions
{
PhantomCondition::PhantomCondition(Conversation* phantom) : phantom_(phantom) {}

bool PhantomCondition::operator()(Conversation* conversation) const
{
    return phantom_ && conversation->isPhantomConversation() && phantom_->isPhantomConversation();
}

/** All phantoms show the same id. */
bool PhantomCondition::gatherCandidates(ConversationCandidates& candidates) const
{
    candidates.withConversationId(SharedText(std::string(PHANTOM_CONVERSATION_ID)));
    return true;
}
} // namespace ConversationListConditions
} // namespace ConversationAPI
