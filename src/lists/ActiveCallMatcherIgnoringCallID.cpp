#include "ConversationAPI/ActiveCallMatcherIgnoringCallID.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationCandidates.h"

namespace ConversationAPI
{
namespace ConversationListConditions
{
ActiveCallMatcherIgnoringCallID::ActiveCallMatcherIgnoringCallID(const ConversationItem* item) : item_(item) {}

bool ActiveCallMatcherIgnoringCallID::operator()(Conversation* conversation) const
{
    const ConversationItem* initial = conversation->shownItem();
    return initial && initial->isActiveOrProgressingOrClearing() && initial->isSameConversationIgnoringCallID(*item_);
}

bool ActiveCallMatcherIgnoringCallID::gatherCandidates(ConversationCandidates& candidates) const
{
    candidates.thatAreLive();
    return true;
}
} // namespace ConversationListConditions
} // namespace ConversationAPI
