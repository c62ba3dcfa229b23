#include "ConversationAPI/Conversation.h"

#include "ConversationAPI/ConversationIDGenerator.h"
#include "ConversationAPI/WellKnownNames.h"
#include "Log.h"
#include "model/ContactItem.h"
#include "model/ConversationLog.h"
#include "model/ConversationMerge.h"
#include "model/PartyNews.h"
#include "model/Prefetch.h"

#include <algorithm>
#include <utility>

namespace ConversationAPI
{
namespace
{
constexpr std::size_t SHORT_ID_LENGTH = 7;
} // namespace

Conversation::Conversation(ConversationIDGenerator& idGenerator, ConversationItemFactory* itemFactory)
    : idGenerator_(idGenerator), itemFactory_(itemFactory)
{
    CONVERSATION_LOG(CONVERSATION_LOG_FILE, 6, "Conversation::constructor[%p]", static_cast<void*>(this));
}

Conversation::Conversation(DigitAnalysisServiceIfc* digitAnalysis, ConversationItem* item,
                           ConversationIDGenerator& idGenerator, ConversationItemFactory* itemFactory)
    : Conversation(idGenerator, itemFactory)
{
    setDialStringConverter(digitAnalysis);
    append(item);
}

Conversation::Conversation(const std::string& firstName, const std::string& lastName, const std::string& number,
                           ConversationIDGenerator& idGenerator, long time, const std::string& searchId,
                           ConversationItemFactory* itemFactory, PhoneNumberIconType numberType)
    : Conversation(idGenerator, itemFactory)
{
    updateName(firstName, lastName);
    updateNumber(number, numberType);
    if (!searchId.empty())
    {
        setSearchId(searchId);
    }
    ensureInitialItemExists(time);
}

Conversation::Conversation(const Conversation& other)
    : ConversationContact(other), clone_(true), itemWasAdded_(other.itemWasAdded_), deletable_(other.deletable_),
      phantom_(other.phantom_), temporary_(other.temporary_), extraActive_(other.extraActive_),
      updateReason_(other.updateReason_), data_(other.data_), id_(other.id_), idGenerator_(other.idGenerator_),
      itemFactory_(other.itemFactory_), journalEntries_(other.journalEntries_)
{
}

Conversation::~Conversation()
{
    observers_.tellEnd(*this);
}

Conversation* Conversation::clone() const
{
    auto* copy = new Conversation(*this);
    CONVERSATION_LOG(CONVERSATION_LOG_FILE, 6, "Conversation::clone[%p]", static_cast<void*>(copy));
    return copy;
}

const std::string& Conversation::getConversationId() const
{
    static const std::string phantomId(PHANTOM_CONVERSATION_ID);
    return phantom_ ? phantomId : id_.str();
}

const std::string& Conversation::generateConversationID()
{
    if (id_.empty())
    {
        storeId(idGenerator_.getSharedConversationID(this));
        CONVERSATION_LOG(CONVERSATION_LOG_FILE, 6, "Conversation[%p]id=%s", static_cast<void*>(this),
                         getShortConversationId().c_str());
    }
    return id_.str();
}

std::string Conversation::getShortConversationId() const
{
    const std::string& id = id_.str();
    return id.size() > SHORT_ID_LENGTH ? id.substr(id.size() - SHORT_ID_LENGTH) : std::string();
}

void Conversation::ensureInitialItemExists(long time)
{
    if (data_.empty() && !data_.hasDummyItem())
    {
        renewDummyItem(time);
    }
}

void Conversation::init(long time)
{
    ensureInitialItemExists(time);
    generateConversationID();
}

bool Conversation::operator<(const Conversation& other) const
{
    const ConversationItem* mine = shownItem();
    const ConversationItem* theirs = other.shownItem();
    if (mine == nullptr || theirs == nullptr)
    {
        return mine != nullptr && theirs == nullptr;
    }
    return mine->lessThanOtherConsideringCreationTime(*theirs);
}

bool Conversation::claims(const ConversationItem& item) const
{
    const ConversationItem* initial = shownItem();
    if ((isActiveOrProgressingOrClearing() || isRepresentedHeldCall()) && item.isActiveOrProgressingOrClearing())
    {
        return initial->areGroupPickupConversationItems(item) || initial->callIdText() == item.callIdText();
    }
    if (item.isConferenceConversation() || item.isClearing() || isConferenceConversation() ||
        item.participants().empty())
    {
        return false;
    }
    const ConversationParticipant& party = item.participants().front();
    if (getLastName() == ANONYMOUS_NAME && party.surnameText() == ANONYMOUS_NAME)
    {
        return true;
    }
    if (getLastName() == CTI_ASSISTED_NAME || party.surnameText() == CTI_ASSISTED_NAME)
    {
        return false;
    }
    return hasAnyNumberMatching(party.comparableNumberText());
}

void Conversation::append(ConversationItem* item)
{
    if (item)
    {
        addWithContact(holdGivenOut(item));
        notifyObserversConversationIsModified();
    }
}

void Conversation::appendNew(std::unique_ptr<ConversationItem> item)
{
    if (item)
    {
        addWithContact(HeldItem(std::move(item)));
        notifyObserversConversationIsModified();
    }
}

/** Whoever gave the item may still have a pointer to it. */
Conversation::HeldItem Conversation::holdGivenOut(ConversationItem* item)
{
    HeldItem held{OwnedItem(item)};
    held.giveOut();
    return held;
}

void Conversation::appendCalls(std::vector<HeldItem>& calls)
{
    if (calls.empty())
    {
        return;
    }
    const CopyOnWrite<ContactDetails> before = contactDetails();
    PartyNews news(*this);
    {
        const CriticalSection guard(lock_);
        data_.reserve(std::min(data_.items().size() + calls.size(), MOST_HISTORY_ITEMS + 1));
        for (std::size_t place = 0; place < calls.size(); ++place)
        {
            HeldItem& call = calls[place];
            prefetch(*calls[std::min(place + PREFETCH_DISTANCE, calls.size() - 1)]);
            const bool isOldest = call->isNonActiveCall() && data_.isOlderThanAll(call.time(), 1);
            if (news.mayComeFrom(call->participants().front()) || !isOldest)
            {
                takeContactFrom(*call);
            }
            if (isOldest && !id_.empty())
            {
                addOldest(std::move(call));
            }
            else
            {
                addItem(std::move(call));
            }
        }
    }
    contactNumbersChanged(before);
    notifyObserversConversationIsModified();
}

void Conversation::addWithContact(HeldItem item)
{
    updateContactFrom(*item);
    const CriticalSection guard(lock_);
    addItem(std::move(item));
}

/** One more call of the history behind others of it, which a rebuild adds most of all: nothing else changes. */
void Conversation::addOldest(HeldItem item)
{
    itemWasAdded_ = true;
    journalEntries_.add(item->getItemId());
    if (data_.items().size() < MOST_HISTORY_ITEMS)
    {
        item.stampWithExchangeContactId(exchangeContactIdText());
        item.stampWithId(id_);
        data_.pushBack(std::move(item));
    }
    data_.trimHistory(); // of what a call that was live has kept
}

void Conversation::addItem(HeldItem item)
{
    if (!id_.empty() && item->isNonActiveCall() && data_.isOlderThanAll(*item, 1))
    {
        addOldest(std::move(item));
        return;
    }
    const bool heldOnlyPlainItems = data_.holdsOnlyPlainItems();
    const ConversationItem* shownBefore = data_.shownItem();
    itemWasAdded_ = true;
    data_.removeEquivalent(*item);
    if (item->isEndingRemoteCall() && !data_.holdsOnlyPlainItems())
    {
        data_.removeRemoteCallsEarlierThan(*item);
    }
    if (item->isNonActiveCall() || item->isVoiceMail())
    {
        journalEntries_.add(item->getItemId());
    }
    if (item->isVoiceMail())
    {
        setDeletable(false);
    }
    consumeItem(std::move(item));
    if (!heldOnlyPlainItems || !data_.holdsOnlyPlainItems() || data_.shownItem() != shownBefore)
    {
        keysChanged();
    }
}

void Conversation::consumeItem(HeldItem item)
{
    if (!itemNeedsAddingToConversation(*item))
    {
        return;
    }
    if (data_.isOlderThanAll(*item, MOST_HISTORY_ITEMS))
    {
        data_.trimHistory();
        return;
    }
    HeldItem& added = data_.insert(std::move(item));
    added.stampWithExchangeContactId(exchangeContactIdText());
    generateConversationID();
    added.stampWithId(id_);
    data_.trimHistory();
}

void Conversation::updateItem(ConversationItem* item)
{
    if (!item)
    {
        return;
    }
    HeldItem owned = holdGivenOut(item);
    {
        const CriticalSection guard(lock_);
        const std::string id = owned->conversationItemId();
        data_.removeIf([&id](const ConversationItem& held) { return !id.empty() && held.conversationItemId() == id; });
        addItem(std::move(owned));
    }
    keysChanged();
    notifyObserversConversationIsModified();
}

void Conversation::updateInitialItem(ConversationItem* item)
{
    if (!item)
    {
        return;
    }
    updateContactFrom(*item);
    {
        const CriticalSection guard(lock_);
        replaceCall(holdGivenOut(item));
    }
    notifyObserversConversationIsModified();
}

/** An ignored call is ordered by its time alone, like history, but it must not take the place of any. */
void Conversation::replaceCall(HeldItem item)
{
    const SharedText callId = item->callIdText();
    data_.removeIf([&callId](const ConversationItem& held) { return !callId.empty() && held.callIdText() == callId; });
    const ConversationItem* equivalent = data_.findEquivalent(*item);
    if (equivalent && equivalent->callIdText().empty() && !callId.empty())
    {
        consumeItem(std::move(item));
    }
    else
    {
        addItem(std::move(item));
    }
    keysChanged();
}

void Conversation::removeItem(std::string itemId)
{
    if (itemId.empty())
    {
        return;
    }
    {
        const CriticalSection guard(lock_);
        data_.removeIf([&itemId](const ConversationItem& held)
                       { return held.callIdText().view() == itemId || held.conversationItemId() == itemId; });
        data_.trimHistory();
    }
    takeSecondPartyOfShownItem();
    keysChanged();
    notifyObserversConversationIsModified();
}

void Conversation::setConversationItems(const std::vector<ConversationItem*>& items)
{
    {
        const CriticalSection guard(lock_);
        for (HeldItem& item : data_.clearFor(items))
        {
            addItem(std::move(item));
        }
    }
    keysChanged();
    notifyObserversConversationIsModified();
}

std::vector<ConversationItem*> Conversation::getConversationItems() const
{
    const CriticalSection guard(lock_);
    return data_.pointers();
}

std::size_t Conversation::getConversationItemsSize() const
{
    const CriticalSection guard(lock_);
    return data_.items().size();
}

void Conversation::setAllItemsAsViewed()
{
    {
        const CriticalSection guard(lock_);
        for (HeldItem& item : data_.writableItems())
        {
            if (!item->getViewed())
            {
                item.write().setViewed(true);
            }
        }
    }
    notifyObserversConversationIsModified();
}

void Conversation::mergeItems(const std::vector<ConversationItem*>& items)
{
    std::vector<HeldItem> owned;
    for (ConversationItem* item : items)
    {
        if (item)
        {
            owned.push_back(holdGivenOut(item));
        }
    }
    ConversationMerge::addItems(*this, std::move(owned));
}

std::vector<ConversationItem*> Conversation::mergeWith(Conversation& other)
{
    return this == &other ? std::vector<ConversationItem*>() : ConversationMerge(*this, other).merge();
}

std::vector<ConversationItem*> Conversation::foldIn(Conversation& other, const Folding& folding)
{
    return this == &other ? std::vector<ConversationItem*>() : ConversationMerge(*this, other).fold(folding);
}

/** A contact that has no id of its own yet may be any: it is taken for news of the one that is there. */
bool Conversation::isOtherContactThan(const Conversation& other) const
{
    const auto isKnown = [](const SharedText& id) { return !id.empty() && id.view() != TEMPORARY_CONVERSATION_ID; };
    return hasTakenInContact() && other.hasTakenInContact() && isKnown(contactId()) && isKnown(other.contactId()) &&
           contactId() != other.contactId();
}

void Conversation::cloneContactInfo(const Conversation& other)
{
    ConversationContact::cloneContactInfo(other);
    if (other.hasTakenInContact())
    {
        setTakenContactId(other.contactId());
    }
}

void Conversation::updateContactFrom(const ConversationItem& item)
{
    const CopyOnWrite<ContactDetails> before = contactDetails();
    takeContactFrom(item);
    contactNumbersChanged(before);
}

void Conversation::takeContactFrom(const ConversationItem& item)
{
    const ConversationItem* shown = data_.empty() ? nullptr : shownItem();
    updateNameAndNumber(item, shown);
    updateSecondPartyNameAndNumber(item, shown);
}

/** A conference may go on with somebody else, or be over. */
void Conversation::takeSecondPartyOfShownItem()
{
    if (!data_.empty())
    {
        updateSecondPartyNameAndNumber(*shownItem(), shownItem());
    }
}

/** Not made before somebody looks at it: details change one after the other, and what has items shows these. */
void Conversation::renewDummyItem(long time)
{
    if (itemFactory_ && time == 0)
    {
        data_.awaitDummyItem();
    }
    else
    {
        data_.setDummyItem(makeContactItem(*this, itemFactory_, time));
    }
    keysChanged();
}

void Conversation::makeDummyItem() const
{
    data_.setDummyItem(makeContactItem(*this, itemFactory_, 0));
}

ConversationItem* Conversation::initialItem() const
{
    return shownItem() ? data_.initialItem() : nullptr;
}

/** Counting changes no item, but the operation that counts has never been const. */
int Conversation::numberOfNewEvents() const
{
    const ConversationItem* item = shownItem();
    return item ? const_cast<ConversationItem*>(item)->numberOfNewEvents() : 0;
}

void Conversation::callEnded(const std::string& callId)
{
    idGenerator_.callEnded(id_.str(), callId, shownItem());
}

void Conversation::contactChanged()
{
    if (data_.hasDummyItem())
    {
        refreshDummyItem();
    }
    else
    {
        keysChanged();
    }
}

std::string Conversation::getGroupName() const
{
    return isGroupCall() ? shownItem()->getGroupName() : getGroupConversationName();
}

std::string Conversation::toDebugString() const
{
    return "[" + getConversationId() + " '" + toString() + "' number=" + getNumber() +
           " state=" + std::to_string(static_cast<int>(getState())) + " items=" + std::to_string(data_.items().size()) +
           "]";
}
} // namespace ConversationAPI
