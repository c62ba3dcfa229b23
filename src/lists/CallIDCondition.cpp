#include "ConversationAPI/CallIDCondition.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationCandidates.h"
#include "ConversationAPI/WellKnownNames.h"

#include <algorithm>

namespace ConversationAPI
{
namespace ConversationListConditions
{
CallIDCondition::CallIDCondition(const std::string& callId) : callId_(callId) {}

bool CallIDCondition::operator()(Conversation* conversation) const
{
    const ConversationItem* initial = conversation->shownItem();
    if (initial ? initial->callIdText().view() == callId_ : callId_.empty())
    {
        return true;
    }
    const auto& items = conversation->items();
    return callId_ == GROUP_PICKUP_CALL_ID &&
           std::any_of(items.begin(), items.end(),
                       [](const auto& item) { return item->callIdText().view() == GROUP_PICKUP_CALL_ID; });
}

bool CallIDCondition::gatherCandidates(ConversationCandidates& candidates) const
{
    if (callId_.empty())
    {
        return false;
    }
    candidates.withCallId(callId_);
    return true;
}
} // namespace ConversationListConditions
} // namespace ConversationAPI
