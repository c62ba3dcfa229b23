#include "ConversationAPI/ConversationItemAggregator.h"

#include "ConversationAPI/CallIDCondition.h"
#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/ConversationItemSourceIfc.h"
#include "ConversationAPI/ConversationSourceObserverIfc.h"
#include "ConversationAPI/HasConversationAnyNumberMatchingCondition.h"
#include "Log.h"
#include "Observers.h"
#include "ScopedFlag.h"
#include "aggregation/BatchesAhead.h"
#include "aggregation/ContactRegrouping.h"
#include "aggregation/ConversationItemAggregatorLog.h"
#include "aggregation/ItemBatches.h"
#include "aggregation/ItemPlacement.h"
#include "aggregation/ItemSources.h"
#include "aggregation/LaterItems.h"

#include <algorithm>
#include <optional>

namespace ConversationAPI
{
using namespace ConversationListConditions;

namespace
{
/** Whether the call is a conference, or was one. */
bool isOfTwoParties(const Conversation& conversation, const std::string& callId)
{
    return std::any_of(conversation.items().begin(), conversation.items().end(),
                       [&callId](const auto& item)
                       { return item->callIdText().view() == callId && item->participants().size() > 1; });
}
} // namespace

/** Takes the semaphore unless an operation further up holds it: observers told under it may call back. */
class ConversationItemAggregator::Lock
{
  public:
    explicit Lock(ConversationItemAggregator& aggregator) : aggregator_(aggregator)
    {
        if (!aggregator_.isLocked_)
        {
            guard_.emplace(aggregator_.semaphore_);
            aggregator_.isLocked_ = true;
        }
    }

    ~Lock()
    {
        if (guard_)
        {
            aggregator_.isLocked_ = false;
        }
    }

    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

  private:
    ConversationItemAggregator& aggregator_;
    std::optional<CriticalSection> guard_;
};

void ConversationItemAggregator::UniqueConversationList::push_back(Conversation* conversation)
{
    const bool isKnown = std::find(conversations_.begin(), conversations_.end(), conversation) != conversations_.end();
    if (conversation && !isKnown)
    {
        conversations_.push_back(conversation);
    }
}

ConversationItemAggregator::ConversationItemAggregator(ConversationFactory* factory)
    : conversations_(std::make_unique<ConversationList>()), sources_(std::make_unique<ItemSources>()),
      idGenerator_(&RandomCachingConversationIDGenerator::isSameConversationAtSameTime), factory_(factory),
      placement_(std::make_unique<ItemPlacement>(*conversations_, *factory_, idGenerator_)),
      round_([this](bool tellObservers) { rebuild(tellObservers); }),
      regrouping_(std::make_unique<ContactRegrouping>(*conversations_, *factory_, *placement_, round_, *this))
{
    conversations_->setName("ConversationItemAggregatorList");
    idGenerator_.setConversationSources({this});
}

ConversationItemAggregator::~ConversationItemAggregator()
{
    const Lock lock(*this);
    conversations_->removeAndDeleteAll();
}

void ConversationItemAggregator::addItemSource(ConversationItemSourceIfc* source)
{
    if (sources_->add(source, *this))
    {
        conversationItemsChanged();
    }
}

void ConversationItemAggregator::addItemSources(std::vector<ConversationItemSourceIfc*>& sources)
{
    bool anyHasItems = false;
    for (ConversationItemSourceIfc* source : sources)
    {
        anyHasItems = sources_->add(source, *this) || anyHasItems;
    }
    if (anyHasItems)
    {
        conversationItemsChanged();
    }
}

void ConversationItemAggregator::removeItemSource(ConversationItemSourceIfc* source)
{
    if (sources_->remove(source))
    {
        conversationItemsChanged();
    }
}

void ConversationItemAggregator::addObserver(ConversationSourceObserverIfc* observer)
{
    if (observer)
    {
        observers_.insert(observer);
    }
}

void ConversationItemAggregator::removeObserver(ConversationSourceObserverIfc* observer)
{
    observers_.erase(observer);
}

template <typename Notification>
void ConversationItemAggregator::notifyObservers(Notification notification)
{
    const NotificationRound::Scope round(round_);
    tellEach(observers_, notification);
}

void ConversationItemAggregator::notifyObserversConversationUpdated(Conversation* conversation)
{
    notifyObservers(
        [this, conversation](ConversationSourceObserverIfc& observer)
        {
            if (conversations_->contains(conversation))
            {
                observer.conversationUpdated(conversation);
            }
        });
}

void ConversationItemAggregator::conversationItemsChanged()
{
    round_.rebuild(true);
}

void ConversationItemAggregator::sourceSubscribed()
{
    const NotificationRound::Scope round(round_);
    notifyObservers([](ConversationSourceObserverIfc& observer) { observer.conversationSourcesReady(); });
    round_.rebuild(true);
}

void ConversationItemAggregator::rebuild(bool tellObservers)
{
    refreshConversations();
    if (tellObservers)
    {
        notifyObservers([](ConversationSourceObserverIfc& observer) { observer.conversationsChanged(); });
    }
}

void ConversationItemAggregator::refreshConversations()
{
    const Lock lock(*this);
    loadConversationListData();
}

void ConversationItemAggregator::loadConversationListData()
{
    conversations_->removeAndDeleteAll();
    buildConversationsFrom(sources_->getConversationItems());
}

void ConversationItemAggregator::buildConversationsFrom(const std::vector<ConversationItem*>& items)
{
    CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 5, "buildConversationsFrom() allItems.size()=%d",
                     static_cast<int>(items.size()));
    const ItemBatches batches(items);
    LaterItems later;
    const auto place = [&](const ItemBatches::Ranked& one, bool startsConversation)
    {
        const auto beforeAdding = [&](Conversation& conversation) { later.appendBefore(conversation, one); };
        return startsConversation ? placement_->startConversationOfRebuild(one.item, beforeAdding)
                                  : placement_->placeItemOfRebuild(one.item, beforeAdding);
    };
    const std::vector<ItemBatches::Batch>& all = batches.inOrder();
    const auto parties = std::count_if(all.begin(), all.end(), [](const auto& one) { return one.hasNumberOfItsOwn; });
    conversations_->reserve(static_cast<std::size_t>(parties));
    BatchesAhead ahead(all, factory_->getConversationIDGenerator(), *conversations_);
    for (std::size_t i = 0; i < all.size(); ++i)
    {
        ahead.comeTo(i);
        const ItemBatches::Batch& batch = all[i];
        Conversation* target = place(batch.first, batch.hasNumberOfItsOwn);
        if (target)
        {
            later.add(*target, batch.rest, batch.end);
        }
        else
        {
            std::for_each(batch.rest, batch.end, [&place](const ItemBatches::Ranked& one) { place(one, false); });
        }
    }
    later.appendAll();
    placement_->nameExtraConversations();
    triggerGarbageCollectionOnIDGenerators();
}

void ConversationItemAggregator::newConversationItem(ConversationItem* item)
{
    if (!item)
    {
        return;
    }
    Conversation* conversation = placement_->getConversationAssociatedWithItem(item);
    if (conversation)
    {
        conversation->prepend(item);
    }
    else
    {
        conversation = placement_->startConversation(item);
    }
    if (conversation)
    {
        CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 5,
                         "newConversationItem() updated conversation->getCallId()='%s', conversation id='%s'",
                         conversation->getCallId().c_str(), conversation->getShortConversationId().c_str());
        notifyObserversConversationUpdated(conversation);
    }
}

void ConversationItemAggregator::conversationItemChanged(ConversationItem* item)
{
    CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 5, "conversationItemChanged()");
    if (!item)
    {
        return;
    }
    // After the first of two calls of a party has ended, the second would by number match the history
    // conversation and be shown twice: the conversation that has the call comes first.
    const std::string callId = item->getCallId();
    Conversation* conversation = placement_->getConversationHoldingCall(callId);
    if (!conversation)
    {
        conversation = placement_->getConversationAssociatedWithItem(item);
    }
    if (!conversation)
    {
        CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 5, "conversationItemChanged() unrecognised item callid='%s'",
                         callId.c_str());
        delete item;
        return;
    }
    conversation->updateInitialItem(item);
    CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 5,
                     "conversationItemChanged() updated initial item with callid='%s', conv->toString()='%s', "
                     "conversation id='%s'",
                     callId.c_str(), conversation->toString().c_str(), conversation->getShortConversationId().c_str());
    notifyObserversConversationUpdated(conversation);
}

bool ConversationItemAggregator::removeActiveConversationItemForCall(const std::string& callId)
{
    const std::string endedId = callId; // it may be the text of the item that goes
    const NotificationRound::Scope round(round_);
    const Lock lock(*this);
    CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 5, "removeActiveConversationItemForCall() for callId='%s'",
                     endedId.c_str());
    Conversation* conversation = findConversationOfCall(endedId);
    if (!conversation)
    {
        return false;
    }
    CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 5,
                     "removeActiveConversationItemForCall() removing active item from conversation %s with %d item(s)",
                     conversation->getShortConversationId().c_str(),
                     static_cast<int>(conversation->getConversationItemsSize()));
    const bool wasOfTwoParties = isOfTwoParties(*conversation, endedId);
    conversation->removeItem(endedId);
    const bool isEmptied = conversation->getConversationItemsSize() == 0;
    if (isEmptied)
    {
        round_.retireFrom(*conversations_, conversation); // observers may combine everything anew, and must not find it
    }
    notifyObservers([&endedId](ConversationSourceObserverIfc& observer)
                    { observer.removeActiveItemForCall(endedId, nullptr); });
    if (isEmptied)
    {
        CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 5,
                         "removeActiveConversationItemForCall() no items remain so delete the conversation");
    }
    settleAfterCall(!isEmptied && conversations_->contains(conversation) ? conversation : nullptr, endedId,
                    wasOfTwoParties);
    triggerGarbageCollectionOnIDGenerators();
    return true;
}

/**
 * The conversation, null when it is gone, is remembered by the items that are left: remembered by the call, it would
 * not be recognised when another call of the party comes first in a rebuild. What a conference leaves, or a contact's
 * second call, is the history of a party that may have a conversation already, which only a rebuild finds.
 */
void ConversationItemAggregator::settleAfterCall(Conversation* conversation, const std::string& callId,
                                                 bool wasOfTwoParties)
{
    if (conversation)
    {
        conversation->callEnded(callId);
    }
    const bool mayBelongElsewhere = (wasOfTwoParties && conversation) || regrouping_->isLeftAlone(callId);
    const bool isOver = mayBelongElsewhere && !sources_->haveCall(callId);
    const bool joinsContact = isOver && regrouping_->giveUpOwnId(conversation, callId);
    if (joinsContact || (isOver && wasOfTwoParties && conversation))
    {
        round_.rebuild(true);
    }
    else if (conversation)
    {
        regrouping_->uniteWithConversationsOfSameId(*conversation);
    }
}

/** A call that waits or is shown as held need not be what its conversation shows first. */
Conversation* ConversationItemAggregator::findConversationOfCall(const std::string& callId)
{
    Conversation* shown = callId.empty() ? nullptr : conversations_->find(CallIDCondition(callId));
    return shown ? shown : placement_->getConversationHoldingCall(callId);
}

Conversation* ConversationItemAggregator::getConversation(const std::string& conversationId)
{
    return conversations_->find(ConversationIDCondition(conversationId));
}

std::vector<std::string> ConversationItemAggregator::getInUseConversationIds()
{
    std::vector<std::string> ids;
    conversations_->getInUseConversationIds(ids);
    CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 6, "getInUseConversationIds %d", static_cast<int>(ids.size()));
    return ids;
}

void ConversationItemAggregator::appendIdHashes(std::vector<std::uint32_t>& hashes) const
{
    const std::size_t before = hashes.size();
    conversations_->appendIdHashes(hashes);
    CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 6, "getInUseConversationIds %d",
                     static_cast<int>(hashes.size() - before));
}

void ConversationItemAggregator::voiceMailChanged(const std::string& oldNumber, const std::string& newNumber)
{
    CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 5, "voiceMailChanged() - old number = [%s], new number = [%s]",
                     oldNumber.c_str(), newNumber.c_str());
    const std::string next = newNumber; // which may be a text of the conversation that goes first
    reloadCallsForNumber(oldNumber);
    reloadCallsForNumber(next);
}

void ConversationItemAggregator::reloadCallsForNumber(const std::string& number)
{
    Conversation* conversation = conversations_->find(HasConversationAnyNumberMatchingCondition(number));
    if (!conversation)
    {
        return;
    }
    CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 5, "reloadCallsForNumber() - Conversation found for number [%s]",
                     number.c_str());
    const std::vector<std::string> entries = conversation->getJournalServiceEntries();
    round_.retireFrom(*conversations_, conversation);
    sources_->forEach([&entries](ConversationItemSourceIfc& source) { source.reloadCalls(entries); });
}

void ConversationItemAggregator::deleteConversation(const std::string& conversationId)
{
    const std::string id = conversationId;
    const Conversation* conversation = id.empty() ? nullptr : getConversation(id);
    if (!conversation)
    {
        return;
    }
    const std::vector<std::string> entries = conversation->getJournalServiceEntries();
    sources_->forEach([&entries](ConversationItemSourceIfc& source) { source.deleteCalls(entries); });
    round_.retireFrom(*conversations_, getConversation(id));
}

void ConversationItemAggregator::deleteConversations()
{
    sources_->forEach([](ConversationItemSourceIfc& source) { source.deleteAllCalls(); });
    round_.rebuild(false);
}

void ConversationItemAggregator::markAllMissedCallsRead()
{
    conversations_->setAllConversationsAsViewed();
    std::vector<std::string> entries;
    for (const Conversation* conversation : conversations_->asSet())
    {
        const std::vector<std::string> own = conversation->getJournalServiceEntries();
        entries.insert(entries.end(), own.begin(), own.end());
    }
    sources_->forEach([&entries](ConversationItemSourceIfc& source) { source.ageAllMissedCalls(entries); });
}

void ConversationItemAggregator::conversationUpdated(Conversation* contact)
{
    if (!contact)
    {
        return;
    }
    contact->generateConversationID();
    regrouping_->noteContact(*contact);
    CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 6, "conversationUpdated: id=%s, wk1=%s, wk2=%s, mob=%s, hom=%s",
                     contact->getConversationId().c_str(), contact->getWorkNumber1().c_str(),
                     contact->getWorkNumber2().c_str(), contact->getMobileNumber().c_str(),
                     contact->getHomeNumber().c_str());
    const UniqueConversationList found = regrouping_->findConversationsOf(*contact);
    CONVERSATION_LOG(ITEM_AGGREGATOR_LOG_FILE, 6, "conversationUpdated found %d matching conversations",
                     static_cast<int>(found.size()));
    if (!found.empty())
    {
        const NotificationRound::Scope round(round_);
        regrouping_->conversationUpdatedByNumber(*contact, found);
        triggerGarbageCollectionOnIDGenerators();
    }
}

/** A phonebook of thousands would otherwise have all identifiers looked through as often. */
void ConversationItemAggregator::contactsUpdated(const std::vector<Conversation*>& contacts)
{
    regrouping_->noteAllContacts(contacts);
    {
        const ScopedFlag collectsLater(collectsIdsLater_);
        std::for_each(contacts.begin(), contacts.end(),
                      [this](Conversation* contact) { conversationUpdated(contact); });
    }
    triggerGarbageCollectionOnIDGenerators();
}

/** Observers hear of it from whoever has the contacts, but a rebuild that has to wait is not over by then. */
void ConversationItemAggregator::contactsReplaced(const std::vector<Conversation*>& contacts)
{
    round_.rebuild(round_.isGoingOn());
    contactsUpdated(contacts);
}

void ConversationItemAggregator::triggerGarbageCollectionOnIDGenerators()
{
    if (collectsIdsLater_)
    {
        return;
    }
    factory_->garbageCollectIDs();
    idGenerator_.garbageCollect();
}
} // namespace ConversationAPI
