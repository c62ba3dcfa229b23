#include "aggregation/ItemPlacement.h"

#include "ConversationAPI/ActiveCallMatcherIgnoringCallID.h"
#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/ConversationItemMatcher.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/HasConversationAnyNumberMatchingCondition.h"
#include "ConversationAPI/HoldsCallCondition.h"
#include "ConversationAPI/RandomCachingConversationIDGenerator.h"
#include "Log.h"
#include "aggregation/ConversationItemAggregatorLog.h"

#include <algorithm>
#include <utility>

namespace ConversationAPI
{
using namespace ConversationListConditions;

namespace
{
bool isCall(const ConversationItem& item)
{
    return item.isActiveOrProgressingOrClearing() || item.isRepresentedHeldCall();
}

/** Whether it is a conference, or the call of one that is held or over. */
bool isCallOfTwoParties(const Conversation& conversation)
{
    const ConversationItem* initial = conversation.shownItem();
    return initial && isCall(*initial) && initial->participants().size() > 1;
}

/**
 * Whether a party's conversation takes its history. A conference, a group's call and an additional call of a party do
 * not: the party's row would lose its id to them for as long as they last.
 */
bool takesHistory(const Conversation& conversation)
{
    return !isCallOfTwoParties(conversation) && !conversation.isConferenceConversation() &&
           !conversation.isGroupCall() && !conversation.extraActiveConversation();
}

/** Holds for the conversations that an item belongs to; but history never belongs to a call of two parties. */
class TakesItem : public ConversationItemMatcher
{
  public:
    explicit TakesItem(const ConversationItem* item) : ConversationItemMatcher(item), isCall_(isCall(*item)) {}

    bool operator()(Conversation* conversation) const override
    {
        return ConversationItemMatcher::operator()(conversation) && (isCall_ || !isCallOfTwoParties(*conversation));
    }

  private:
    bool isCall_;
};

class TakesHistoryOfNumber : public HasConversationAnyNumberMatchingCondition
{
  public:
    using HasConversationAnyNumberMatchingCondition::HasConversationAnyNumberMatchingCondition;

    bool operator()(Conversation* conversation) const override
    {
        return HasConversationAnyNumberMatchingCondition::operator()(conversation) && takesHistory(*conversation);
    }
};

/** Holds for the conversations of a number but a group's calls and conferences, which are no contact's own. */
class IsOfNumber : public HasConversationAnyNumberMatchingCondition
{
  public:
    using HasConversationAnyNumberMatchingCondition::HasConversationAnyNumberMatchingCondition;

    bool operator()(Conversation* conversation) const override
    {
        return HasConversationAnyNumberMatchingCondition::operator()(conversation) &&
               !conversation->isConferenceConversation() && !conversation->isGroupCall();
    }
};

/** Holds for the live conversation of an item's party that is not that of an additional call. */
class IsFirstCallOfParty : public ActiveCallMatcherIgnoringCallID
{
  public:
    using ActiveCallMatcherIgnoringCallID::ActiveCallMatcherIgnoringCallID;

    bool operator()(Conversation* conversation) const override
    {
        return !conversation->extraActiveConversation() && ActiveCallMatcherIgnoringCallID::operator()(conversation);
    }
};

/** Holds for the conversations of an item that have an older one of its id, whose place it takes. */
class HoldsOlderItem : public ConversationItemMatcher
{
  public:
    explicit HoldsOlderItem(ConversationItem* item) : ConversationItemMatcher(item), id_(item->conversationItemId()) {}

    bool operator()(Conversation* conversation) const override
    {
        const auto& items = conversation->items();
        return std::any_of(items.begin(), items.end(),
                           [this](const auto& item) { return item->conversationItemId() == id_; }) &&
               ConversationItemMatcher::operator()(conversation);
    }

  private:
    std::string id_;
};

/** Whether an item carries nothing but its first party that tells where it belongs. */
bool isGroupedByParty(const ConversationItem& item)
{
    return !item.hasConversationId() && !item.hasExchangeContactId() && !item.participants().empty() &&
           !item.isGroupCall();
}
} // namespace

ItemPlacement::ItemPlacement(ConversationList& conversations, ConversationFactory& factory,
                             RandomCachingConversationIDGenerator& extraCallIds)
    : conversations_(conversations), factory_(factory), extraCallIds_(extraCallIds)
{
}

Conversation* ItemPlacement::placeItemOfRebuild(ConversationItem* item, const BeforeJoining& beforeJoining)
{
    if (item->isActiveOrProgressingOrClearing())
    {
        CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 5,
                         "buildConversationsFrom() always create new conversation for active call, progressing or "
                         "clearing items");
        return addNewConversation(item, getIDGeneratorForItemOfRebuild(item), READ, beforeJoining);
    }
    Conversation* target = findTarget(item);
    if (!target)
    {
        return startConversationOfRebuild(item, beforeJoining);
    }
    beforeJoining(*target);
    target->appendNew(std::unique_ptr<ConversationItem>(item));
    return target;
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
        return conversations_.find(TakesHistoryOfNumber(party.comparableNumberText()));
    }
    const bool isNameless = party.firstNameText().empty() && party.surnameText().empty();
    return party.isAnonymous() || isNameless ? findAnonymousTarget(item) : nullptr;
}

/** The latest anonymous conversation may be that of a second live call or of a group's call. */
Conversation* ItemPlacement::findAnonymousTarget(ConversationItem* item)
{
    Conversation* anonymous = conversations_.getAnonymousConversation();
    return anonymous && !takesHistory(*anonymous) ? getConversationAssociatedWithItem(item) : anonymous;
}

Conversation* ItemPlacement::getConversationAssociatedWithItem(ConversationItem* item)
{
    Conversation* holder = item->hasConversationItemId() ? conversations_.find(HoldsOlderItem(item)) : nullptr;
    return holder ? holder : conversations_.find(TakesItem(item));
}

Conversation* ItemPlacement::getConversationOfNumber(const std::string& number)
{
    Conversation* own = conversations_.find(TakesHistoryOfNumber(number));
    return own ? own : conversations_.find(IsOfNumber(number));
}

Conversation* ItemPlacement::getConversationHoldingCall(const std::string& callId)
{
    return conversations_.find(HoldsCallCondition(callId));
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

ConversationIDGenerator* ItemPlacement::getIDGeneratorForItemOfRebuild(ConversationItem* item)
{
    if (!item->isActiveOrProgressingOrClearing())
    {
        return nullptr;
    }
    if (extraCallIds_.remembers(*item))
    {
        return &extraCallIds_;
    }
    const Conversation* beside = conversations_.find(IsFirstCallOfParty(item));
    return beside && !item->areGroupPickupConversationItems(*beside->shownItem()) ? &extraCallIds_ : nullptr;
}

Conversation* ItemPlacement::startConversation(ConversationItem* item)
{
    return addNewConversation(item, getIDGeneratorForItem(item), TOLD, nullptr);
}

Conversation* ItemPlacement::startConversationOfRebuild(ConversationItem* item, const BeforeJoining& beforeJoining)
{
    return addNewConversation(item, nullptr, READ, beforeJoining);
}

Conversation* ItemPlacement::addNewConversation(ConversationItem* item, ConversationIDGenerator* generator,
                                                Origin origin, const BeforeJoining& beforeJoining)
{
    std::unique_ptr<Conversation> conversation =
        generator ? makeExtraConversation(item, *generator, origin) : makeConversation(item, origin);
    if (!conversation)
    {
        return nullptr;
    }
    const ConversationItem& placed = *conversation->shownItem();
    Conversation* existing = conversations_.find(ConversationIDCondition(conversation->storedIdText()));
    if (existing && joins(placed, *existing))
    {
        if (beforeJoining)
        {
            beforeJoining(*existing);
        }
        // An additional call's row that history joins is the party's from then on: no two rows may have one id.
        existing->setExtraActiveConversation(existing->extraActiveConversation() &&
                                             placed.isActiveOrProgressingOrClearing());
        existing->appendNew(placed.copy());
        return existing;
    }
    conversations_.push_back(conversation.get());
    return conversation.release();
}

/** A source that tells of an item may still have a pointer to it. */
void ItemPlacement::give(ConversationItem* item, Conversation& conversation, Origin origin)
{
    if (origin == TOLD)
    {
        conversation.append(item);
    }
    else
    {
        conversation.appendNew(std::unique_ptr<ConversationItem>(item));
    }
}

std::unique_ptr<Conversation> ItemPlacement::makeConversation(ConversationItem* item, Origin origin)
{
    std::unique_ptr<Conversation> conversation(factory_.createConversation());
    if (!conversation)
    {
        delete item;
        return nullptr;
    }
    const bool isToBeDeletedWithList = item->isDeleteOnConversationList();
    give(item, *conversation, origin);
    if (conversation->getState() == ConversationItemState::VOICEMAIL || !isToBeDeletedWithList)
    {
        conversation->setDeletable(false);
    }
    return conversation;
}

/** A second live call of a party: a conversation of its own, which is at least named like the first. */
std::unique_ptr<Conversation> ItemPlacement::makeExtraConversation(ConversationItem* item,
                                                                   ConversationIDGenerator& generator, Origin origin)
{
    const Conversation* beside = getLiveConversationBeside(item);
    std::unique_ptr<Conversation> conversation(factory_.createConversation(generator));
    give(item, *conversation, origin);
    conversation->setExtraActiveConversation(true);
    madeExtraConversation_ = true;
    nameLike(beside, *conversation);
    return conversation;
}

/** In a rebuild the conversation beside gets its name from its history, which comes after the live calls. */
void ItemPlacement::nameExtraConversations()
{
    if (!std::exchange(madeExtraConversation_, false))
    {
        return;
    }
    for (Conversation* conversation : conversations_)
    {
        if (conversation->extraActiveConversation())
        {
            nameLike(conversations_.find(TakesHistoryOfNumber(conversation->getNumber())), *conversation);
        }
    }
}

void ItemPlacement::nameLike(const Conversation* beside, Conversation& conversation)
{
    if (beside && conversation.getFirstName().empty() && conversation.getLastName().empty())
    {
        conversation.updateName(beside->getFirstName(), beside->getLastName());
    }
}

/** Whether the item of a new conversation belongs to the one that has the same id already. */
bool ItemPlacement::joins(const ConversationItem& item, const Conversation& existing)
{
    const bool isLive = item.isActiveOrProgressingOrClearing();
    if (existing.isActiveOrProgressingOrClearing() && isLive)
    {
        return existing.shownItem()->areGroupPickupConversationItems(item) ||
               item.areGroupPickupConversationItems(*existing.shownItem()) ||
               existing.shownItem()->callIdText() == item.callIdText();
    }
    return !item.isConferenceConversation() && !item.isClearing() && !item.participants().empty();
}
} // namespace ConversationAPI
