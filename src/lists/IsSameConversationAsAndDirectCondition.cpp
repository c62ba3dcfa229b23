#include "ConversationAPI/IsSameConversationAsAndDirectCondition.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationCandidates.h"

namespace ConversationAPI
{
namespace ConversationListConditions
{
IsSameConversationAsAndDirectCondition::IsSameConversationAsAndDirectCondition(const ConversationItem* item)
    : matcher_(item)
{
}

bool IsSameConversationAsAndDirectCondition::operator()(Conversation* conversation) const
{
    return matcher_(conversation) && conversation->getType() == Conversation::DIRECT;
}

bool IsSameConversationAsAndDirectCondition::gatherCandidates(ConversationCandidates& candidates) const
{
    return matcher_.gatherCandidates(candidates);
}
} // namespace ConversationListConditions
} // namespace ConversationAPI
