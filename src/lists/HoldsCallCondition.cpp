#include "ConversationAPI/HoldsCallCondition.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationCandidates.h"

#include <algorithm>

namespace ConversationAPI
{
namespace ConversationListConditions
{
HoldsCallCondition::HoldsCallCondition(const std::string& callId) : callId_(callId) {}

bool HoldsCallCondition::operator()(Conversation* conversation) const
{
    const auto& items = conversation->items();
    return !callId_.empty() && std::any_of(items.begin(), items.end(),
                                           [this](const auto& item) { return item->callIdText().view() == callId_; });
}

bool HoldsCallCondition::gatherCandidates(ConversationCandidates& candidates) const
{
    if (!callId_.empty())
    {
        candidates.withCallId(callId_);
    }
    return true;
}
} // namespace ConversationListConditions
} // namespace ConversationAPI
