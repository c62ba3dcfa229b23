#include "ConversationAPI/UserIdMatchesAndIsDirectType.h"

#include "ConversationAPI/Conversation.h"

namespace ConversationAPI
{
namespace ConversationListConditions
{
UserIdMatchesAndIsDirectType::UserIdMatchesAndIsDirectType(const std::string& userId) : userId_(userId) {}

bool UserIdMatchesAndIsDirectType::operator()(Conversation* conversation) const
{
    return conversation->getUserId() == userId_ && conversation->getType() == Conversation::DIRECT;
}
} // namespace ConversationListConditions
} // namespace ConversationAPI
