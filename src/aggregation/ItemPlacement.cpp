#include "aggregation/ItemPlacement.h"

#include "ConversationAPI/ActiveCallMatcherIgnoringCallID.h"
#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationCandidates.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/ConversationItemMatcher.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/HasConversationAnyNumberMatchingCondition.h"

#include <algorithm>

namespace ConversationAPI
{
using namespace ConversationListConditions;

namespace
{
/** Holds for the conversation with a live call, wherever among its items the call stands. */
class HoldsCall : public ConversationUnaryCondition
{
  public:
    explicit HoldsCall(const std::string& callId) : callId_(callId) {}

    bool operator()(Conversation* conversation) const override
    {
        const auto& items = conversation->items();
        return std::any_of(items.begin(), items.end(),
                           [this](const auto& item) { return item->callIdText().view() == callId_; });
    }

    bool gatherCandidates(ConversationCandidates& candidates) const override
    {
        candidates.withCallId(callId_);
        return true;
    }

  private:
    const std::string callId_;
};

/** Whether an item carries nothing but its first party that tells where it belongs. */
bool isGroupedByParty(const ConversationItem& item)
{
    return !item.hasConversationId() && !item.hasExchangeContactId() && !item.participants().empty() &&
           !item.isGroupCall();
}

} // namespace

ItemPlacement::ItemPlacement(ConversationList& conversations, ConversationFactory& factory,
                             ConversationIDGenerator& extraCallIds)
    : conversations_(conversations), factory_(factory), extraCallIds_(extraCallIds)
{
}

Conversation* ItemPlacement::findTarget(ConversationItem* item)
{
    if (!isGroupedByParty(*item))
    {
        return getConversationAssociatedWithItem(item);
    }
    const ConversationParticipant& party = item->participants().front();
    if (!party.isAnonymous() && !party.comparableNumberText().empty())
    {
        return conversations_.find(HasConversationAnyNumberMatchingCondition(party.comparableNumberText()));
    }
    const bool isNameless = party.firstNameText().empty() && party.surnameText().empty();
    return party.isAnonymous() || isNameless ? findAnonymousTarget(item) : nullptr;
}

/** The latest anonymous conversation may be that of a second live call, which takes no history. */
Conversation* ItemPlacement::findAnonymousTarget(ConversationItem* item)
{
    Conversation* anonymous = conversations_.getAnonymousConversation();
    return anonymous && anonymous->extraActiveConversation() ? getConversationAssociatedWithItem(item) : anonymous;
}

Conversation* ItemPlacement::getConversationAssociatedWithItem(ConversationItem* item)
{
    return conversations_.find(ConversationItemMatcher(item));
}

Conversation* ItemPlacement::getConversationHoldingCall(const std::string& callId)
{
    return callId.empty() ? nullptr : conversations_.find(HoldsCall(callId));
}

Conversation* ItemPlacement::getLiveConversationBeside(ConversationItem* item)
{
    return item->isActiveOrProgressingOrClearing() ? conversations_.find(ActiveCallMatcherIgnoringCallID(item))
                                                   : nullptr;
}

ConversationIDGenerator* ItemPlacement::getIDGeneratorForItem(ConversationItem* item)
{
    return getLiveConversationBeside(item) ? &extraCallIds_ : nullptr;
}

Conversation* ItemPlacement::addNewConversation(ConversationItem* item, ConversationIDGenerator* generator)
{
    std::unique_ptr<Conversation> conversation =
        generator ? makeExtraConversation(item, *generator) : makeConversation(item);
    if (!conversation)
    {
        return nullptr;
    }
    ConversationItem& placed = *conversation->initialItem();
    Conversation* existing = conversations_.find(ConversationIDCondition(conversation->getConversationId()));
    if (existing && joins(placed, *existing))
    {
        existing->prepend(placed.clone());
        return existing;
    }
    conversations_.push_back(conversation.get());
    return conversation.release();
}

std::unique_ptr<Conversation> ItemPlacement::makeConversation(ConversationItem* item)
{
    std::unique_ptr<Conversation> conversation(factory_.createConversation());
    if (!conversation)
    {
        delete item;
        return nullptr;
    }
    const bool isToBeDeletedWithList = item->isDeleteOnConversationList();
    conversation->append(item);
    if (conversation->getState() == ConversationItemState::VOICEMAIL || !isToBeDeletedWithList)
    {
        conversation->setDeletable(false);
    }
    return conversation;
}

/** A second live call of a party: a conversation of its own, which is at least named like the first. */
std::unique_ptr<Conversation> ItemPlacement::makeExtraConversation(ConversationItem* item,
                                                                   ConversationIDGenerator& generator)
{
    const Conversation* beside = getLiveConversationBeside(item);
    std::unique_ptr<Conversation> conversation(factory_.createConversation(generator));
    conversation->append(item);
    conversation->setExtraActiveConversation(true);
    if (beside && conversation->getFirstName().empty() && conversation->getLastName().empty())
    {
        conversation->updateName(beside->getFirstName(), beside->getLastName());
    }
    return conversation;
}

/** Whether the item of a new conversation belongs to the one that has the same id already. */
bool ItemPlacement::joins(const ConversationItem& item, const Conversation& existing)
{
    const bool isLive = item.isActiveOrProgressingOrClearing();
    if (existing.extraActiveConversation() && !isLive)
    {
        return false;
    }
    if (existing.isActiveOrProgressingOrClearing() && isLive)
    {
        return existing.initialItem()->areGroupPickupConversationItems(item) ||
               existing.initialItem()->callIdText() == item.callIdText();
    }
    return !item.isConferenceConversation() && !item.isClearing() && !item.participants().empty();
}
} // namespace ConversationAPI
