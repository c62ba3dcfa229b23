#include "ConversationAPI/HasConversationAnyNumberMatchingCondition.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationCandidates.h"

namespace ConversationAPI
{
namespace ConversationListConditions
{
HasConversationAnyNumberMatchingCondition::HasConversationAnyNumberMatchingCondition(const std::string& number)
    : number_(number)
{
}

bool HasConversationAnyNumberMatchingCondition::operator()(Conversation* conversation) const
{
    return conversation->hasAnyNumberMatching(number_);
}

bool HasConversationAnyNumberMatchingCondition::gatherCandidates(ConversationCandidates& candidates) const
{
    candidates.withNumber(number_);
    return true;
}
} // namespace ConversationListConditions
} // namespace ConversationAPI
