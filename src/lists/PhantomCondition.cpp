#include "ConversationAPI/PhantomCondition.h"

#include "ConversationAPI/Conversation.h"

namespace ConversationAPI
{
namespace ConversationListConditions
{
PhantomCondition::PhantomCondition(Conversation* phantom) : phantom_(phantom) {}

bool PhantomCondition::operator()(Conversation* conversation) const
{
    return phantom_ && conversation->isPhantomConversation() && phantom_->isPhantomConversation();
}
} // namespace ConversationListConditions
} // namespace ConversationAPI
