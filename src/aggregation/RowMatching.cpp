#include "aggregation/RowMatching.h"

#include "ConversationAPI/CallIDCondition.h"
#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationCandidates.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/ConversationItemMatcher.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/HasConversationAnyNumberMatchingCondition.h"
#include "ConversationAPI/HoldsCallCondition.h"
#include "ConversationAPI/WellKnownNames.h"

namespace ConversationAPI
{
using namespace ConversationListConditions;

namespace
{
/**
 * Holds for rows that an item belongs to, but not for the row of an additional call of the same exchange contact:
 * that one shows its call and nothing else.
 */
class IsRowOfItem : public ConversationUnaryCondition
{
  public:
    explicit IsRowOfItem(ConversationItem* item) : item_(*item), matcher_(item) {}

    bool operator()(Conversation* row) const override
    {
        const bool isAdditionalCall =
            row->isPhantomConversation() ||
            (row->extraActiveConversation() && (!item_.isActiveOrProgressingOrClearing() ||
                                                row->getConversationId() != item_.conversationIdText().view()));
        return !isAdditionalCall && matcher_(row);
    }

    bool gatherCandidates(ConversationCandidates& candidates) const override
    {
        return matcher_.gatherCandidates(candidates);
    }

  private:
    const ConversationItem& item_;
    const ConversationItemMatcher matcher_;
};

class IsRowOfNumber : public HasConversationAnyNumberMatchingCondition
{
  public:
    using HasConversationAnyNumberMatchingCondition::HasConversationAnyNumberMatchingCondition;

    bool operator()(Conversation* row) const override
    {
        return !row->extraActiveConversation() && HasConversationAnyNumberMatchingCondition::operator()(row);
    }
};

class IsContactWithNumber : public ConversationUnaryCondition
{
  public:
    explicit IsContactWithNumber(const std::string& number) : number_(number) {}

    bool operator()(Conversation* row) const override
    {
        return row->getContactSource() != Conversation::NO_CONTACT && row->hasAnyNumberMatching(number_);
    }

    bool gatherCandidates(ConversationCandidates& candidates) const override
    {
        candidates.withNumber(number_);
        return true;
    }

  private:
    const std::string& number_;
};
} // namespace

ListedRow findRowOf(const ConversationList& list, const Conversation& conversation)
{
    ListedRow ofCall{nullptr, 0};
    if (conversation.isActiveOrProgressingOrClearing() && conversation.getCallId() != GROUP_PICKUP_CALL_ID)
    {
        ofCall = list.findWithIndex(HoldsCallCondition(conversation.getCallId()));
    }
    if (ofCall.first && !ofCall.first->isPhantomConversation())
    {
        return ofCall;
    }
    ListedRow found{nullptr, 0};
    if (ConversationItem* item = conversation.initialItem())
    {
        found = list.findWithIndex(IsRowOfItem(item));
    }
    const std::string& id = conversation.getConversationId();
    if (conversation.getContactSource() != Conversation::NO_CONTACT && !id.empty())
    {
        const ListedRow own = list.findWithIndex(ConversationIDCondition(id));
        const bool isInCall = own.first && own.first->isActiveOrProgressingOrClearing();
        // Of two live rows the one with the contact's id keeps it: the other one would get it as well.
        found = !found.first || (isInCall && found.first->isActiveOrProgressingOrClearing()) ? own : found;
    }
    return found.first ? found : ofCall; // a phantom's call is its own when its root is gone
}

Conversation* findRowById(const ConversationList& list, const std::string& conversationId)
{
    return conversationId.empty() ? nullptr : list.find(ConversationIDCondition(conversationId));
}

Conversation* findRowOfNumber(const ConversationList& list, const std::string& number)
{
    return list.find(IsRowOfNumber(number));
}

ListedRow findRowOfCall(const ConversationList& list, const std::string& callId)
{
    if (callId.empty())
    {
        return {nullptr, 0};
    }
    const auto shown = list.findWithIndex(CallIDCondition(callId));
    return shown.first ? shown : list.findWithIndex(HoldsCallCondition(callId));
}

void takeContactOfNumber(const ConversationList& list, Conversation& created)
{
    const bool isNobodyKnown =
        created.getContactSource() == Conversation::NO_CONTACT && !created.isConferenceConversation();
    const Conversation* contact = isNobodyKnown ? list.find(IsContactWithNumber(created.getNumber())) : nullptr;
    if (contact)
    {
        created.cloneContactInfo(*contact);
    }
}
} // namespace ConversationAPI
