#include "ConversationAPI/ConversationItemMatcher.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationCandidates.h"
#include "ConversationAPI/WellKnownNames.h"

namespace ConversationAPI
{
namespace ConversationListConditions
{
ConversationItemMatcher::ConversationItemMatcher(const ConversationItem* item) : item_(item) {}

bool ConversationItemMatcher::operator()(Conversation* conversation) const
{
    if (conversation->isGroupCall() || item_->isGroupCall())
    {
        return conversation->isGroupCall() && item_->isGroupCall() &&
               conversation->getGroupName() == item_->getGroupName() &&
               conversation->getGroupNumber() == item_->getGroupNumber() &&
               compareIgnoringConversationId(conversation, item_);
    }
    if (!conversation->exchangeContactIdText().empty() && item_->hasExchangeContactId())
    {
        return conversation->exchangeContactIdText() == item_->exchangeContactIdText();
    }
    if (conversation->isPhantomConversation() ||
        (conversation->extraActiveConversation() && !item_->isActiveOrProgressingOrClearing()))
    {
        return false;
    }
    if (conversation->getConversationId().empty() || !item_->hasConversationId())
    {
        return compareIgnoringConversationId(conversation, item_);
    }
    return conversation->getConversationId() == item_->conversationIdText().view();
}

bool ConversationItemMatcher::gatherCandidates(ConversationCandidates& candidates) const
{
    if (item_->hasExchangeContactId())
    {
        candidates.withExchangeContactId(item_->exchangeContactIdText());
    }
    if (item_->hasConversationId())
    {
        candidates.withConversationId(item_->conversationIdText());
    }
    if (item_->isActiveOrProgressingOrClearing())
    {
        candidates.withCallId(item_->getCallId());
        candidates.withCallId(std::string(GROUP_PICKUP_CALL_ID));
    }
    if (!item_->participants().empty())
    {
        const ConversationParticipant& party = item_->participants().front();
        candidates.withNumber(party.comparableNumberText());
        if (party.surnameText() == ANONYMOUS_NAME)
        {
            candidates.thatAreAnonymous();
        }
    }
    return true;
}

bool ConversationItemMatcher::compareIgnoringConversationId(const Conversation* conversation,
                                                            const ConversationItem* item)
{
    return conversation->claims(*item);
}
} // namespace ConversationListConditions
} // namespace ConversationAPI
