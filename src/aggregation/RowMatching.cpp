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
    explicit IsRowOfItem(const ConversationItem* item) : item_(*item), matcher_(item) {}

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

/** Holds for nothing, and so is asked of everything that has the number. */
class CollectsRowsOfNumber : public HasConversationAnyNumberMatchingCondition
{
  public:
    CollectsRowsOfNumber(const std::string& number, std::vector<Conversation*>& rows)
        : HasConversationAnyNumberMatchingCondition(number), rows_(rows)
    {
    }

    bool operator()(Conversation* row) const override
    {
        if (HasConversationAnyNumberMatchingCondition::operator()(row))
        {
            rows_.push_back(row);
        }
        return false;
    }

  private:
    std::vector<Conversation*>& rows_;
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
/** Where several rows would do, as those of group calls to two numbers of a contact, the one with the id comes first.
 */
ListedRow findRowOfItem(const ConversationList& list, const Conversation& conversation)
{
    const ConversationItem* item = conversation.shownItem();
    if (!item)
    {
        return {nullptr, 0};
    }
    const IsRowOfItem isRow(item);
    const ListedRow found = list.findWithIndex(isRow);
    const std::string& id = conversation.getConversationId();
    if (found.first && !id.empty() && found.first->getConversationId() != id)
    {
        const ListedRow own = list.findWithIndex(ConversationIDCondition(id));
        return own.first && isRow(own.first) ? own : found;
    }
    return found;
}
} // namespace

ListedRow findRowOf(const ConversationList& list, const Conversation& conversation)
{
    ListedRow ofCall{nullptr, 0};
    if (conversation.getCallId() != GROUP_PICKUP_CALL_ID)
    {
        ofCall = list.findWithIndex(HoldsCallCondition(conversation.getCallId()));
    }
    if (ofCall.first && !ofCall.first->isPhantomConversation())
    {
        return ofCall;
    }
    ListedRow found = findRowOfItem(list, conversation);
    const std::string& id = conversation.getConversationId();
    const bool isKnownByIdAlone = conversation.items().empty(); // a conversation of the cloud without any message
    if ((conversation.getContactSource() != Conversation::NO_CONTACT || isKnownByIdAlone) && !id.empty())
    {
        const ListedRow own = list.findWithIndex(ConversationIDCondition(id));
        // A live row that has the contact's id keeps it: the other one would get it as well. And two contacts may
        // share a number.
        const bool isOwnPreferred = own.first && (own.first->isActiveOrProgressingOrClearing() || !found.first ||
                                                  found.first->isOtherContactThan(conversation));
        found = isOwnPreferred ? own : found;
        if (found.first && found.first->isOtherContactThan(conversation))
        {
            found = {nullptr, 0};
        }
    }
    return found.first ? found : ofCall; // a phantom's call is its own when its root is gone
}

Conversation* findRowById(const ConversationList& list, const std::string& conversationId)
{
    return conversationId.empty() ? nullptr : list.find(ConversationIDCondition(conversationId));
}

Conversation* findRowById(const ConversationList& list, const SharedText& conversationId)
{
    return conversationId.empty() ? nullptr : list.find(ConversationIDCondition(conversationId));
}

std::vector<Conversation*> findRowsOfNumber(const ConversationList& list, const std::string& number)
{
    std::vector<Conversation*> rows;
    if (!number.empty())
    {
        list.find(CollectsRowsOfNumber(number, rows));
    }
    return rows;
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
