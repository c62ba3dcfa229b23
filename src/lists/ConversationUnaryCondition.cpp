#include "ConversationAPI/ConversationUnaryCondition.h"

namespace ConversationAPI
{
bool ConversationUnaryCondition::gatherCandidates(ConversationCandidates&) const
{
    return false;
}
} // namespace ConversationAPI
