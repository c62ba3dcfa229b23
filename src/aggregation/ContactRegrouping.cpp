#include "aggregation/ContactRegrouping.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/ConversationIDGenerator.h"
#include "Log.h"
#include "aggregation/ConversationItemAggregatorLog.h"
#include "aggregation/ItemPlacement.h"

#include <algorithm>
#include <iterator>

namespace ConversationAPI
{
using namespace ConversationListConditions;

namespace
{
/**
 * In the aggregator's own list a contact only groups items; the conversations stay those of the history. Their calls
 * are different ones.
 */
constexpr Conversation::Folding REGROUPING{true, false, false, false};

bool isLiveWithOtherCall(const Conversation& conversation, const std::string& liveCallId)
{
    return !liveCallId.empty() && conversation.isActiveOrProgressingOrClearing() &&
           conversation.getCallId() != liveCallId;
}
} // namespace

ContactRegrouping::ContactRegrouping(ConversationList& conversations, ConversationFactory& factory,
                                     ItemPlacement& placement, NotificationRound& round,
                                     ConversationItemSourceObserverIfc& newItems)
    : conversations_(conversations), factory_(factory), placement_(placement), round_(round), newItems_(newItems)
{
}

void ContactRegrouping::noteAllContacts(const std::vector<Conversation*>& contacts)
{
    contactIds_.emplace();
    for (Conversation* contact : contacts)
    {
        if (contact)
        {
            noteContact(*contact);
        }
    }
}

void ContactRegrouping::noteContact(Conversation& contact)
{
    if (contactIds_ && !contact.isTemporary())
    {
        contactIds_->insert(contact.generateConversationID());
    }
}

/** Of contacts that share a number, the one whose id the calls have keeps them. */
bool ContactRegrouping::isOfOtherContact(const Conversation& conversation, const Conversation& contact) const
{
    const std::string& id = conversation.getConversationId();
    return contactIds_ && id != contact.getConversationId() && contactIds_->count(id) != 0;
}

ContactRegrouping::UniqueConversationList ContactRegrouping::findConversationsOf(const Conversation& contact) const
{
    static constexpr const char* FOUND_BY_NUMBER[] = {
        "findByConversationWork1 found id=[%p]%s", "findByConversationWork2 found id=[%p]%s",
        "findByConversationMob found id=[%p]%s", "findByConversationHom found id=[%p]%s"};
    UniqueConversationList all;
    const auto add = [&](const char* format, Conversation* found)
    {
        if (found && found != &contact && !isOfOtherContact(*found, contact))
        {
            CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 6, format, static_cast<void*>(found),
                             found->getConversationId().c_str());
            all.push_back(found);
        }
    };
    add("findByConversationId found id=[%p]%s",
        conversations_.find(ConversationIDCondition(contact.getConversationId())));
    const ContactNumbers numbers = contact.contactDetails()->numbers.four();
    for (const ContactNumberSlot slot : ALL_CONTACT_NUMBER_SLOTS)
    {
        add(FOUND_BY_NUMBER[slot], placement_.getConversationOfNumber(numbers[slot]));
    }
    return all;
}

void ContactRegrouping::conversationUpdatedByNumber(Conversation& contact, const UniqueConversationList& found)
{
    const auto firstOwn = std::find_if(found.begin(), found.end(),
                                       [](const Conversation* one) { return !one->extraActiveConversation(); });
    const bool hasOwnConversation = firstOwn != found.end();
    Conversation* root = hasOwnConversation ? *firstOwn : found.at(0);
    CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 6, "conversationUpdatedByNumber root=%p, rootid=%s",
                     static_cast<void*>(root), root->getConversationId().c_str());
    CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 6, "merge converationItems with new contact");
    const std::vector<Conversation*> united = mergeWithContact(contact, found, hasOwnConversation);
    CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 6,
                     "group converationItems that are now assciated together because of the new contact");
    groupAround(root, united);
    if (conversations_.contains(root) && root->getConversationItemsSize() == 0)
    {
        round_.retireFrom(conversations_, root);
    }
}

/** Answers the conversations that are the contact's now: not those of an additional live call. */
std::vector<Conversation*>
ContactRegrouping::mergeWithContact(Conversation& contact, const UniqueConversationList& found, bool hasOwnConversation)
{
    std::string liveCallId;
    std::vector<Conversation*> united;
    for (Conversation* conversation : found)
    {
        if (!conversations_.contains(conversation))
        {
            continue;
        }
        if (isLiveWithOtherCall(*conversation, liveCallId) ||
            (hasOwnConversation && conversation->extraActiveConversation()))
        {
            // Two live calls under one id would lose one of them: this one only shows the contact's name.
            conversation->updateName(contact.getFirstName(), contact.getLastName());
            if (!conversation->extraActiveConversation()) // whose history is that of the other call's number anyway
            {
                leftAlone_[conversation->getCallId()] = contact.getConversationId();
            }
            continue;
        }
        if (conversation->isActiveOrProgressingOrClearing())
        {
            liveCallId = conversation->getCallId();
        }
        leftAlone_.erase(conversation->getCallId());
        conversation->setExtraActiveConversation(false); // as the contact's own it takes the contact's history, too
        uniteWithContact(*conversation, contact);
        united.push_back(conversation);
    }
    return united;
}

/** Observers that are told of items placed anew may have conversations removed meanwhile. */
void ContactRegrouping::groupAround(Conversation* root, const std::vector<Conversation*>& united)
{
    for (Conversation* other : united)
    {
        const bool areListed = conversations_.contains(root) && conversations_.contains(other);
        if (areListed && other != root && other->getConversationId() == root->getConversationId())
        {
            mergeConversations(*root, *other);
            round_.retireFrom(conversations_, other);
        }
    }
}

/**
 * A former id that somebody still uses, such as a person who was found under the number, is remembered on: the next
 * rebuild would give it to the number's calls again, and split the contact's.
 */
void ContactRegrouping::uniteWithContact(Conversation& conversation, Conversation& contact)
{
    const std::string idBefore = conversation.getConversationId();
    mergeConversations(conversation, contact);
    ConversationIDGenerator* ids = factory_.getConversationIDGenerator();
    if (ids && !conversations_.find(ConversationIDCondition(idBefore)))
    {
        ids->callJoinedOther(idBefore);
    }
}

void ContactRegrouping::mergeConversations(Conversation& target, Conversation& source)
{
    for (ConversationItem* item : target.foldIn(source, REGROUPING))
    {
        newItems_.newConversationItem(item);
    }
}

bool ContactRegrouping::giveUpOwnId(const Conversation* conversation, const std::string& callId)
{
    const auto leftAlone = leftAlone_.find(callId);
    if (leftAlone == leftAlone_.end())
    {
        return false;
    }
    const std::string contactId = leftAlone->second;
    leftAlone_.erase(leftAlone);
    ConversationIDGenerator* ids = factory_.getConversationIDGenerator();
    const ConversationItem* item = conversation ? conversation->shownItem() : nullptr;
    if (!item || !ids)
    {
        return true;
    }
    // The contact may be gone by now, or have lost the call's number.
    if (conversation->isActiveOrProgressingOrClearing() || conversation->getConversationId() == contactId ||
        !ids->isRememberedAs(contactId, *item))
    {
        return false;
    }
    ids->callJoinedOther(conversation->getConversationId());
    return true;
}

void ContactRegrouping::uniteWithConversationsOfSameId(const Conversation& conversation)
{
    const auto isLive = [](const Conversation* one) { return one->isActiveOrProgressingOrClearing(); };
    if (isLive(&conversation))
    {
        return;
    }
    std::vector<Conversation*> sameId;
    std::copy_if(conversations_.begin(), conversations_.end(), std::back_inserter(sameId),
                 [&conversation](const Conversation* other)
                 { return other->storedIdText() == conversation.storedIdText(); });
    if (std::count_if(sameId.begin(), sameId.end(), isLive) > 1) // which stay apart
    {
        sameId.erase(std::remove_if(sameId.begin(), sameId.end(), isLive), sameId.end());
    }
    uniteInLast(sameId);
}

/** The contact's numbers are with the first. */
void ContactRegrouping::uniteInLast(const std::vector<Conversation*>& ofOneId)
{
    for (Conversation* other : ofOneId)
    {
        if (other != ofOneId.back())
        {
            for (ConversationItem* item : ofOneId.back()->foldIn(*other, REGROUPING))
            {
                ofOneId.back()->append(item); // of one id, nothing is a stranger, whichever numbers are known
            }
            round_.retireFrom(conversations_, other);
        }
    }
}
} // namespace ConversationAPI
