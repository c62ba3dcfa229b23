#include "ConversationAPI/HasAnyNumberMatchingAndIsDirectType.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationCandidates.h"

namespace ConversationAPI
{
namespace ConversationListConditions
{
HasAnyNumberMatchingAndIsDirectType::HasAnyNumberMatchingAndIsDirectType(const std::string& number) : number_(number) {}

bool HasAnyNumberMatchingAndIsDirectType::operator()(Conversation* conversation) const
{
    return conversation->hasAnyNumberMatching(number_) && conversation->getType() == Conversation::DIRECT;
}

bool HasAnyNumberMatchingAndIsDirectType::gatherCandidates(ConversationCandidates& candidates) const
{
    candidates.withNumber(number_);
    return true;
}
} // namespace ConversationListConditions
} // namespace ConversationAPI
