#include "model/ConversationMerge.h"

#include "ConversationAPI/ConversationIDGenerator.h"
#include "ConversationAPI/WellKnownNames.h"
#include "Log.h"
#include "model/ContactItem.h"
#include "model/ConversationLog.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ConversationAPI
{
namespace
{
bool contains(const std::vector<const ConversationItem*>& items, const ConversationItem& item)
{
    return std::find(items.begin(), items.end(), &item) != items.end();
}

/** Whether the conversation is a directory contact and nothing else. */
bool conversationOnlyHasContactInfo(const Conversation& conversation)
{
    return conversation.items().empty() && conversation.getContactSource() == Conversation::DIRECTORY_CONTACT;
}

bool conversationHasWSISourcedContactInfo(const Conversation& conversation)
{
    return conversation.getContactSource() == Conversation::WSI_CONTACT;
}

/** Live in the sense in which a newer record of the call replaces an older one. */
bool isReplaceableLiveCall(const ConversationItem& item)
{
    return item.isActiveOrProgressingOrClearing() || item.isCallWaitingIgnored() || item.isCallWaiting() ||
           item.isCallWaitingIsolated() || item.isRepresentedHeldCall();
}

/** Told by the ids that the item has now: as part of the conversation it has the conversation's. */
bool isNewerRecordOfShownCall(const Conversation& conversation, const ConversationItem& item)
{
    return conversation.isSameConversationAs(item) && isReplaceableLiveCall(*conversation.shownItem()) &&
           isReplaceableLiveCall(item);
}
} // namespace

ConversationMerge::ConversationMerge(Conversation& into, const Conversation& from)
    : into_(into), from_(from), contactBefore_(into.contactDetails())
{
}

std::vector<ConversationItem*> ConversationMerge::merge()
{
    into_.takeGroupFields(from_);
    if (fromIsContactOnly())
    {
        return {};
    }
    into_.journalEntries_.add(from_.journalEntries_);
    const bool replacesCall = replacesShownCall();
    if (insertItems(into_, copyItems(), replacesCall))
    {
        into_.notifyObserversConversationIsModified();
    }
    takeId();
    traceItems();
    HeldItems strangers = extract(itemsNotCovered());
    into_.takeContactDetails(from_);
    takeOrigin({true, true, false});
    into_.setContactSource(from_.getContactSource());
    finish();
    updateIdGeneratorCache();
    return handOver(std::move(strangers));
}

std::vector<ConversationItem*> ConversationMerge::fold(const Conversation::Folding& folding)
{
    if (fromIsContactOnly() && contactsDiffer() && from_.items().empty())
    {
        return merge();
    }
    const bool keepsContact = contactsDiffer() || (into_.getContactSource() != Conversation::NO_CONTACT &&
                                                   from_.getContactSource() == Conversation::NO_CONTACT);
    into_.takeGroupFields(from_);
    into_.journalEntries_.add(from_.journalEntries_);
    const bool replacesCall = folding.replacesLiveCall && replacesShownCall();
    HeldItems copies = copyItems();
    Items arrived;
    std::transform(copies.begin(), copies.end(), std::back_inserter(arrived),
                   [](const auto& item) { return item.get(); });
    const bool hadOlderOnes = dropCallsAmong(arrived);
    const bool hasArrived = insertItems(into_, std::move(copies), replacesCall && !hadOlderOnes);
    const SharedText idBefore = into_.id_;
    if (folding.takesId && !conversationHasWSISourcedContactInfo(from_))
    {
        rememberOwnContact();
        takeId();
    }
    traceItems();
    Items strangers = itemsNotCovered();
    if (!keepsContact)
    {
        into_.takeContactDetails(from_);
        takeOrigin(folding);
    }
    keepArrivedAndClaimed(strangers, arrived);
    HeldItems handedBack = extract(strangers);
    if (hasArrived)
    {
        into_.takeSecondPartyOfShownItem();
        into_.observers_.tellModified(idBefore); // not before, as items that they look at may change places
    }
    if (into_.getContactSource() != Conversation::NO_CONTACT)
    {
        into_.refreshDummyItem();
    }
    finish();
    if (folding.isRemembered)
    {
        updateIdGeneratorCache();
    }
    return handOver(std::move(handedBack));
}

void ConversationMerge::addItems(Conversation& into, HeldItems items)
{
    const bool replacesCall = !items.empty() && isNewerRecordOfShownCall(into, *items.front());
    if (insertItems(into, std::move(items), replacesCall))
    {
        into.notifyObserversConversationIsModified();
    }
}

bool ConversationMerge::replacesShownCall() const
{
    return !from_.items().empty() && isNewerRecordOfShownCall(into_, *from_.items().front());
}

/** Answers whether there were any. */
bool ConversationMerge::insertItems(Conversation& into, HeldItems items, bool replacesShownCall)
{
    if (items.empty())
    {
        return false;
    }
    const CopyOnWrite<ContactDetails> contactBefore = into.contactDetails();
    {
        const CriticalSection guard(into.lock_);
        if (replacesShownCall)
        {
            into.removeAndDeleteFrontItem();
        }
        for (Conversation::HeldItem& item : items)
        {
            into.addItem(std::move(item));
        }
    }
    if (into.getContactSource() != Conversation::NO_CONTACT)
    {
        CONVERSATION_LOG(CONVERSATION_LOG_FILE, 6, "mergeItems");
        into.contactNumbersChanged(contactBefore);
    }
    return true;
}

bool ConversationMerge::fromIsContactOnly() const
{
    return conversationOnlyHasContactInfo(from_) || conversationHasWSISourcedContactInfo(from_);
}

bool ConversationMerge::contactsDiffer() const
{
    return into_.isOtherContactThan(from_);
}

void ConversationMerge::takeId()
{
    const SharedText& id = from_.id_;
    if (id.empty() || id.str() == TEMPORARY_CONVERSATION_ID)
    {
        return;
    }
    CONVERSATION_LOG(CONVERSATION_LOG_FILE, 6, "mergeWith[%p] oldId=%s, newId=%s", static_cast<void*>(&into_),
                     into_.id_.str().c_str(), id.str().c_str());
    into_.storeId(id);
}

/** A contact whose conversation gets another id is still the same contact when its record comes anew. */
void ConversationMerge::rememberOwnContact()
{
    if (into_.hasTakenInContact())
    {
        into_.setTakenContactId(into_.contactId());
    }
}

/** They keep their places in memory when they are added, as they have the ids that they get then: see fold(). */
ConversationMerge::HeldItems ConversationMerge::copyItems() const
{
    HeldItems copies(from_.items().begin(), from_.items().end());
    for (Conversation::HeldItem& copy : copies)
    {
        if (into_.id_.empty())
        {
            copy.write();
        }
        else
        {
            copy.stampWithId(into_.id_);
            copy.stampWithExchangeContactId(into_.exchangeContactIdText());
        }
    }
    return copies;
}

/**
 * A newer record of a call takes the place of the older one wherever that stands and whatever state it told; then
 * no other call has to give way to it. Answers whether there was an older one.
 */
bool ConversationMerge::dropCallsAmong(const Items& arrived)
{
    if (into_.data_.holdsOnlyPlainItems())
    {
        return false;
    }
    const auto isAmongThem = [&arrived](const ConversationItem& held)
    {
        return !held.callIdText().empty() &&
               std::any_of(arrived.begin(), arrived.end(),
                           [&held](const ConversationItem* item) { return item->callIdText() == held.callIdText(); });
    };
    const CriticalSection guard(into_.lock_);
    into_.keysChanged();
    return !into_.data_.extractIf(isAmongThem).empty();
}

void ConversationMerge::traceItems() const
{
    const auto& items = into_.items();
    if (items.empty() || !loggingOnAppOrv("ConversationAPI", 5))
    {
        return;
    }
    CONVERSATION_LOG(CONVERSATION_LOG_FILE, 5, "\t %d", static_cast<int>(items.size()));
    for (const auto& item : items)
    {
        CONVERSATION_LOG(CONVERSATION_LOG_FILE, 5, "\t item %s", item->getCallId().c_str());
    }
    for (const auto& item : items)
    {
        for (const ConversationParticipant& party : item->participants())
        {
            CONVERSATION_LOG(CONVERSATION_LOG_FILE, 5, "mergeWith %s:%s:%s:%s:%s", party.comparableNumberText().c_str(),
                             party.contactNumber(WORK_1_SLOT).c_str(), party.contactNumber(WORK_2_SLOT).c_str(),
                             party.contactNumber(MOBILE_SLOT).c_str(), party.contactNumber(HOME_SLOT).c_str());
        }
    }
}

ConversationMerge::Items ConversationMerge::itemsNotCovered() const
{
    Items strangers;
    for (const auto& item : into_.items())
    {
        const auto& parties = item->participants();
        if (!std::all_of(parties.begin(), parties.end(),
                         [this](const ConversationParticipant& party)
                         { return from_.hasAnyNumberMatching(party.comparableNumberText()); }))
        {
            strangers.push_back(item.get());
        }
    }
    return strangers;
}

/**
 * What came along stays, and so does what the merged conversation would claim anew: a conference's second
 * party, a live call that shows no number, a contact's second number and anonymous callers have no number
 * that `from` could cover.
 */
void ConversationMerge::keepArrivedAndClaimed(Items& strangers, const Items& arrived) const
{
    strangers.erase(std::remove_if(strangers.begin(), strangers.end(),
                                   [&](const ConversationItem* item)
                                   { return contains(arrived, *item) || into_.claims(*item); }),
                    strangers.end());
}

void ConversationMerge::takeOrigin(const Conversation::Folding& folding)
{
    if (!from_.hasTakenInContact())
    {
        return;
    }
    into_.setTakenContactId(from_.contactId());
    if (folding.takesContactSource)
    {
        into_.setContactSource(from_.getContactSource());
    }
    if (folding.takesSource && into_.getSource() == nullptr)
    {
        into_.setSource(from_.getSource());
    }
}

ConversationMerge::HeldItems ConversationMerge::extract(const Items& items)
{
    if (items.empty())
    {
        return {};
    }
    const CriticalSection guard(into_.lock_);
    into_.keysChanged();
    return into_.data_.extractIf([&items](const ConversationItem& held) { return contains(items, held); });
}

/** The items' journal entries go with them, except those of which another item stays. */
std::vector<ConversationItem*> ConversationMerge::handOver(HeldItems items)
{
    std::vector<ConversationItem*> released;
    for (Conversation::HeldItem& held : items)
    {
        OwnedItem item = held.take();
        const auto isOfSameEntry = [&item](const auto& other) { return other->getItemId() == item->getItemId(); };
        if (std::none_of(into_.items().begin(), into_.items().end(), isOfSameEntry))
        {
            into_.journalEntries_.remove(item->getItemId());
        }
        item->setConversationId("");
        item->setExchangeContactId("");
        released.push_back(item.release());
    }
    return released;
}

void ConversationMerge::finish()
{
    restampItems();
    if (into_.isTemporary() && !from_.isTemporary())
    {
        makePermanent();
    }
    into_.contactNumbersChanged(contactBefore_);
    into_.notifyObserversConversationIsModified();
}

void ConversationMerge::makePermanent()
{
    CONVERSATION_LOG(CONVERSATION_LOG_FILE, 6, "mergeWith: making conversation permanent");
    into_.setTemporary(false);
}

void ConversationMerge::restampItems()
{
    const CriticalSection guard(into_.lock_);
    for (Conversation::HeldItem& item : into_.data_.writableItems())
    {
        item.stampWithId(into_.id_);
        item.stampWithExchangeContactId(into_.exchangeContactIdText());
    }
}

/**
 * Under the id, a contact is remembered with all its numbers: remembered as one call, its other numbers'
 * calls would get an id of their own at the next rebuild. But an additional call of a party is known by itself
 * alone, whoever the party is, and a group's calls by themselves: they only show who called.
 */
void ConversationMerge::updateIdGeneratorCache()
{
    if (into_.extraActiveConversation())
    {
        if (from_.isActiveOrProgressingOrClearing())
        {
            into_.idGenerator_.remember(into_.id_.str(), from_.shownItem());
        }
        return;
    }
    if (!into_.isGroupCall() && (into_.hasTakenInContact() || from_.hasTakenInContact()))
    {
        if (into_.idGenerator_.remembersContact(into_.id_, into_))
        {
            return;
        }
        if (const OwnedItem contact = makeContactItem(into_, into_.itemFactory_, 0))
        {
            into_.idGenerator_.remember(into_.id_.str(), contact.get());
        }
    }
    else if (const ConversationItem* item = lastingItem())
    {
        into_.idGenerator_.remember(into_.id_.str(), item);
    }
}

/** Remembered by a live call, the party's history would not be recognised once the call is over. */
const ConversationItem* ConversationMerge::lastingItem() const
{
    const auto lasting = std::find_if(from_.items().begin(), from_.items().end(),
                                      [](const auto& item) { return !item->isActiveOrProgressingOrClearing(); });
    return lasting == from_.items().end() ? from_.shownItem() : lasting->get();
}
} // namespace ConversationAPI
