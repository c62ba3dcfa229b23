/**
 * Everything that one remote party and the user have to do with each other: its items, live call first, and
 * what is known of the party.
 *
 * A conversation owns the items it is given. It does not own its identifier generator, item factory, source
 * and digit analysis, which all outlive it. The lists that hold it observe it; they own it, unless an
 * operation of theirs says otherwise. Everything runs on the UI thread; the lock guards the item set, and
 * observers are told after it was left (save that keys went stale). An item given to it must not be held already. Null
 * items and conversations passed in are ignored.
 *
 * Texts given by reference are valid until the conversation changes: copy what is to be kept. Times are
 * seconds since the epoch, UTC. Numbers are in comparable form.
 */
#pragma once

#include "ConversationAPI/ConversationContact.h"
#include "ConversationAPI/ConversationItem.h"
#include "ConversationAPI/ConversationObservers.h"
#include "ConversationAPI/DataThatShouldBeClonedOnCopy.h"
#include "ConversationAPI/JournalEntryIds.h"
#include "ConversationAPI/PooledObject.h"
#include "platform/Semaphore.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace ConversationAPI
{
class ConversationIDGenerator;
class ConversationItemFactory;
class ConversationModificationObserverIfc;

class Conversation : public ConversationContact, public PooledObject
{
  public:
    enum UpdateReason : std::uint8_t
    {
        CONTENT_UPDATED = 0,
        PRESENCE_UPDATED = 2
    };

    /** So many items it holds while no call is live; older ones go. */
    static constexpr std::size_t MOST_HISTORY_ITEMS = DataThatShouldBeClonedOnCopy::MOST_HISTORY_ITEMS;

    /** What a conversation takes from the one folded into it, besides items. */
    struct Folding
    {
        bool takesId = true;
        bool takesContactSource = true;
        bool takesSource = true;
        /** Whether a live call that comes first is a newer state of the one shown, and not one more. */
        bool replacesLiveCall = true;
        /** Whether the generator is to recognise the merged conversation by all that is known of it then. */
        bool isRemembered = true;
    };

    /** An empty conversation. */
    Conversation(ConversationIDGenerator& idGenerator, ConversationItemFactory* itemFactory);

    /** A conversation built around an item, which it owns from then on. */
    Conversation(DigitAnalysisServiceIfc* digitAnalysis, ConversationItem* item, ConversationIDGenerator& idGenerator,
                 ConversationItemFactory* itemFactory);

    /** A contact; `time` is that of its placeholder, `searchId` names the search that found it or is "". */
    Conversation(const std::string& firstName, const std::string& lastName, const std::string& number,
                 ConversationIDGenerator& idGenerator, long time, const std::string& searchId,
                 ConversationItemFactory* itemFactory, PhoneNumberIconType numberType);
    ~Conversation() override;

    /** A copy with copies of the items and without observers; the caller owns it. */
    Conversation* clone() const;

    /** "[clone]" or "", for log lines. */
    const char* isClone() const { return clone_ ? "[clone]" : ""; }

    /** The id, "" before there is one; a phantom conversation shows "PhantomConversation" instead. */
    const std::string& getConversationId() const;

    /** The id, asked of the generator when there is none yet. */
    const std::string& generateConversationID();

    /** A live call has left: if the generator remembers the conversation by it, then by its items from now on. */
    void callEnded(const std::string& callId);

    /** The end of a long id, for log lines; "" for an id of fewer than eight characters. */
    std::string getShortConversationId() const;

    /** The id itself, a phantom's too. */
    const SharedText& storedIdText() const { return id_; }

    /** Whom it asks for its id. */
    const ConversationIDGenerator& idGenerator() const { return idGenerator_; }

    /** The contact that the conversation shows: the one taken in, else itself when it is one. */
    const SharedText& contactId() const { return takenContactId().empty() ? id_ : takenContactId(); }

    void setPhantom(bool phantom)
    {
        phantom_ = phantom;
        keysChanged();
    }
    bool isPhantomConversation() const { return phantom_; }
    void setTemporary(bool temporary) { temporary_ = temporary; }
    bool isTemporary() const { return temporary_; }

    /** An additional live call with a party that has one already. */
    void setExtraActiveConversation(bool extra) { extraActive_ = extra; }
    bool extraActiveConversation() const { return extraActive_; }

    /** The most prominent item, else the placeholder, else null. Valid until items or details change. */
    ConversationItem* initialItem() const;

    /**
     * The same, only to look at: the better choice then, as items that may be changed cannot be shared by copies. Valid
     * until items or details change, or initialItem() or getConversationItems() is called. An item that is still shared
     * does not say of itself that it is a copy.
     */
    const ConversationItem* shownItem() const
    {
        if (data_.needsDummyItem())
        {
            makeDummyItem();
        }
        return data_.shownItem();
    }

    /** The same, null also while a placeholder is not made yet. */
    const ConversationItem* itemAtHand() const { return data_.shownItem(); }

    /** Makes sure that a conversation without items has a placeholder. */
    void ensureInitialItemExists(long time);

    /** Placeholder and id for a conversation whose contact details are complete. */
    void init(long time = 0);

    /** Answered by the initial item; false, 0, "" or null without one. */
    bool isActive() const { return ask(&ConversationItem::isActive); }
    bool isActiveOrClearing() const { return ask(&ConversationItem::isActiveOrClearing); }
    bool isActiveOrProgressingOrClearing() const { return ask(&ConversationItem::isActiveOrProgressingOrClearing); }
    bool isProgressing() const { return ask(&ConversationItem::isProgressing); }
    bool isProgressingIncoming() const { return ask(&ConversationItem::isProgressingIncoming); }
    bool isProgressingOutgoing() const { return ask(&ConversationItem::isProgressingOutgoing); }
    bool isConnected() const { return ask(&ConversationItem::isConnected); }
    bool isConference() const { return ask(&ConversationItem::isConference); }
    bool isClearing() const { return ask(&ConversationItem::isClearing); }
    bool isIsolated() const { return ask(&ConversationItem::isIsolated); }
    bool isBlindTransferring() const { return ask(&ConversationItem::isBlindTransferring); }
    bool isIncomingGroupPickup() const { return ask(&ConversationItem::isIncomingGroupPickup); }
    bool isConnectedGroupPickup() const { return ask(&ConversationItem::isConnectedGroupPickup); }
    bool isLocallyHeld() const { return ask(&ConversationItem::isLocallyHeld); }
    bool isRemotelyHeld() const { return ask(&ConversationItem::isRemotelyHeld); }
    bool isCallWaitingIgnored() const { return ask(&ConversationItem::isCallWaitingIgnored); }
    bool isCallWaiting() const { return ask(&ConversationItem::isCallWaiting); }
    bool isCallWaitingIsolated() const { return ask(&ConversationItem::isCallWaitingIsolated); }
    bool isRepresentedHeldCall() const { return ask(&ConversationItem::isRepresentedHeldCall); }
    bool isCallAnonymous() const { return ask(&ConversationItem::isCallAnonymous); }
    bool isConferenceConversation() const { return ask(&ConversationItem::isConferenceConversation); }
    bool isLargeConference() const { return ask(&ConversationItem::isLargeConference); }
    bool isGroupCall() const { return ask(&ConversationItem::isGroupCall); }
    bool getHDAudioIconStatus() const { return ask(&ConversationItem::getHDAudioIconStatus); }
    bool isDSSCall() const { return ask(&ConversationItem::isDSSCall); }
    ConversationItemState getState() const { return ask(&ConversationItem::getState); }
    long timeStampUTC() const { return ask(&ConversationItem::timeStampUTC); }
    long modificationTimeStampUTC() const { return ask(&ConversationItem::modificationTimeStampUTC); }
    ActiveCall::callDirection activeCallDirection() const { return ask(&ConversationItem::activeCallDirection); }
    std::string getCallId() const { return ask(&ConversationItem::getCallId); }
    DisplayAPI::ForwardedCallType getForwardedCallType() const { return ask(&ConversationItem::getForwardedCallType); }

    /** As long as shownItem(). */
    const CallPartyIdentifier* getForwardedCallParty() const { return ask(&ConversationItem::getForwardedCallParty); }
    int numberOfNewEvents() const;

    bool isSameConversationAs(const ConversationItem& item) const
    {
        return shownItem() && shownItem()->isSameConversationAs(item);
    }
    bool isLaterThan(const Conversation& other) const
    {
        return shownItem() && other.shownItem() && shownItem()->isLaterThan(*other.shownItem());
    }

    /** The order of initial items; a conversation without one comes after those that have one. */
    bool operator<(const Conversation& other) const;

    /** Whether an item that carries no conversation id belongs here by call or party; see ConversationItemMatcher. */
    bool claims(const ConversationItem& item) const;

    /** Adds an item and takes the party's name and number from it unless a contact supplied them. */
    void append(ConversationItem* item);
    void prepend(ConversationItem* item) { append(item); }

    /** append() of an item to which nobody else has a pointer: only such items can be shared by copies. */
    void appendNew(std::unique_ptr<ConversationItem> item);

    /**
     * append() for each of the calls, which it takes; observers are told once. Each has one party, without further
     * numbers, and no id.
     */
    void appendCalls(std::vector<DataThatShouldBeClonedOnCopy::HeldItem>& calls);

    /** Replaces the item of the same item id, else adds it. */
    void updateItem(ConversationItem* item);

    /** Replaces the live item of the same call id, else adds it; name and number are taken as by append(). */
    void updateInitialItem(ConversationItem* item);

    /** Deletes the items whose call id or item id is this; "" does nothing. */
    void removeItem(std::string itemId);
    void removeAndDeleteFrontItem()
    {
        data_.removeFront();
        keysChanged();
    }

    /** The conversation's items are these from now on; those it held and are not among them are deleted. */
    void setConversationItems(const std::vector<ConversationItem*>& items);

    /** In order. The items stay the conversation's. */
    std::vector<ConversationItem*> getConversationItems() const;
    std::size_t getConversationItemsSize() const;

    /** Whether an item was ever added, even one that is gone. */
    bool hadItems() const { return itemWasAdded_; }

    /** In order, without lock and copy, only to look at; as long as shownItem(). */
    const DataThatShouldBeClonedOnCopy::Items& items() const { return data_.items(); }
    /** Whether no item is a live call or has an id of its own. */
    bool holdsOnlyPlainItems() const { return data_.holdsOnlyPlainItems(); }
    bool equivalentItemAlreadyAddedToThisConversation(const ConversationItem& item) const
    {
        return data_.findEquivalent(item) != nullptr;
    }
    bool itemNeedsAddingToConversation(const ConversationItem& item) const
    {
        return !item.isStartedRemoteCall() || !data_.holdsEndLaterThan(item);
    }
    void setAllItemsAsViewed();

    /** Entry ids of every call and voicemail ever added, in that order, those no longer held included. */
    std::vector<std::string> getJournalServiceEntries() const { return journalEntries_.inOrder(); }

    /**
     * Takes over identity, details and copies of the items of `other`, which stays as it is. Of a bare
     * contact or a web-service contact only the group's fields are taken. Answers the items that do not
     * belong to `other`'s numbers; the caller owns them.
     */
    std::vector<ConversationItem*> mergeWith(Conversation& other);

    /**
     * Merges and, other than mergeWith(), lets a contact's identity and numbers reach this conversation,
     * keeps the contact that this one has, and hands back only items that nothing here claims. The caller
     * owns what is handed back.
     */
    std::vector<ConversationItem*> foldIn(Conversation& other, const Folding& folding);

    /** Whether both are contacts, and not the same: such rows stay apart although they share a number. */
    bool isOtherContactThan(const Conversation& other) const;

    /** Everything that describes the contact, but neither identity, items, flags, source nor observers. */
    void cloneContactInfo(const Conversation& other);

    /** Adds all items, which this conversation owns then; a newer record of a live call replaces the older. */
    void mergeItems(const std::vector<ConversationItem*>& items);

    /** Once each. The observer is told that it was registered or unregistered. */
    void addObserver(ConversationModificationObserverIfc* list) { observers_.add(list, *this); }
    void removeObserver(ConversationModificationObserverIfc* list) { observers_.remove(list, *this); }
    bool isObservedBy(const ConversationModificationObserverIfc* list) const { return observers_.isKnown(list); }

    /** Tells the observers how the four numbers differ from what they were. */
    void conversationNumbersChanged(const std::vector<std::string>& numbersBefore)
    {
        observers_.tellNumberChanges(*this, numbersBefore);
    }

    std::string toDebugString() const;

    UpdateReason getUpdateReason() const { return updateReason_; }
    void setUpdateReason(UpdateReason reason) { updateReason_ = reason; }

    /** Whether the display offers to delete the conversation. */
    bool isDeletable() const { return deletable_; }
    void setDeletable(bool deletable) { deletable_ = deletable; }

    /** Of the group call that the initial item is, else of the group conversation. */
    std::string getGroupName() const;
    std::string getGroupNumber() const { return ask(&ConversationItem::getGroupNumber); }

  private:
    friend class ConversationMerge;

    using HeldItem = DataThatShouldBeClonedOnCopy::HeldItem;
    using OwnedItem = DataThatShouldBeClonedOnCopy::OwnedItem;

    Conversation(const Conversation& other);

    template <typename Answer>
    Answer ask(Answer (ConversationItem::*question)() const) const
    {
        const ConversationItem* item = shownItem();
        return item ? (item->*question)() : Answer();
    }

    void storeId(SharedText id)
    {
        id_ = std::move(id);
        keysChanged();
    }
    static HeldItem holdGivenOut(ConversationItem* item);
    void addWithContact(HeldItem item);
    void addItem(HeldItem item);
    void addOldest(HeldItem item);
    void replaceCall(HeldItem item);
    void consumeItem(HeldItem item);

    void updateContactFrom(const ConversationItem& item);
    void takeContactFrom(const ConversationItem& item);
    void takeSecondPartyOfShownItem();
    void makeDummyItem() const;
    void renewDummyItem(long time);
    void refreshDummyItem() { renewDummyItem(data_.dummyTime()); }
    void contactChanged() override;
    void contactNumbersChanged(const CopyOnWrite<ContactDetails>& before) override
    {
        observers_.tellNumberChanges(*this, before);
    }

    void notifyObserversConversationIsModified() { observers_.tellModified(storedIdText()); }
    void keysChanged() { observers_.tellKeysChanged(*this); }

    bool clone_ = false;
    bool itemWasAdded_ = false;
    bool deletable_ = true;
    bool phantom_ = false;
    bool temporary_ = false;
    bool extraActive_ = false;
    UpdateReason updateReason_ = CONTENT_UPDATED;
    mutable DataThatShouldBeClonedOnCopy data_; ///< mutable for copies and a placeholder that were put off until needed
    mutable Semaphore lock_{1, 1, false};       ///< guards data_
    SharedText id_;                             ///< shared with the items
    ConversationIDGenerator& idGenerator_;
    ConversationItemFactory* itemFactory_;
    JournalEntryIds journalEntries_;
    ConversationObservers observers_;
};
} // namespace ConversationAPI
