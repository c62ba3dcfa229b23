/**
 * One event of a conversation: a call of the history, a live call, a voicemail, a text, a system message or a
 * placeholder.
 *
 * Items travel by pointer. Whoever receives one from a factory, from clone() or from a source owns it; a
 * conversation owns the items it was given. What takes part in an item's order (state, times, item id, call
 * id) must not change while a conversation holds it. Look-ups read ids as they were set: a kind of item of one's own
 * sets them and leaves the operations that answer them alone. getState() alone tells what a call is doing: such a kind
 * overrides that, not the questions about it. The participant factory is not owned and outlives the item. Everything
 * runs on the UI thread. Times are seconds since the epoch, UTC.
 */
#pragma once

#include "ConversationAPI/ActiveCall.h"
#include "ConversationAPI/ConversationItemState.h"
#include "ConversationAPI/ConversationParticipant.h"
#include "ConversationAPI/CopyOnWrite.h"
#include "ConversationAPI/PooledObject.h"
#include "ConversationAPI/ReferenceCount.h"
#include "ConversationAPI/SharedText.h"
#include "platform/DisplayAPI.h"
#include "platform/NumberType.h"

#include <boost/container/small_vector.hpp>
#include <boost/static_string/static_string.hpp>

#include <ctime>
#include <memory>
#include <string>
#include <vector>

namespace ConversationAPI
{
class ConversationParticipantFactory;

class ConversationItem : public PooledObject
{
  public:
    /** What a system message tells: 0 to 3 as the cloud service has it, 4 to 6 for its 7 to 9, 7 for anything else. */
    enum systemMessageType : int
    {
        NO_SYSTEM_MESSAGE = 7
    };

    /** Why a participant was added: 0 and 1 for the cloud service's 1 and 2, 2 for anything else. */
    enum addParticipantReason : int
    {
        NO_ADD_PARTICIPANT_REASON = 2
    };

    /** How a call of the history was forwarded. */
    enum forwardInfo : int
    {
        NO_FORWARD_INFO = 0,
        DIALLED_AND_FORWARDED = 1,
        FORWARDED_AWAY = 2,
        FORWARDED_TO_US = 3
    };

    /** The remote parties; nearly always one, which needs no memory of its own. */
    using Participants = boost::container::small_vector<ConversationParticipant, 1>;

    /** An item of unknown time: time stamp 0, no participants. */
    ConversationItem();
    virtual ~ConversationItem();

    ConversationItem& operator=(const ConversationItem&) = delete;

    /** Details and time as the display shows them in a conversation's history. */
    virtual std::string toDetailsString() const = 0;
    virtual std::string toTimeString() const = 0;

    virtual bool isActiveOrProgressingOrClearing() const;
    virtual bool isActiveOrClearing() const;
    virtual bool isActive() const;
    virtual bool isProgressing() const;
    virtual bool isProgressingIncoming() const { return getState() == ConversationItemState::PROGRESSING_INCOMING; }
    virtual bool isProgressingOutgoing() const { return getState() == ConversationItemState::PROGRESSING_OUTGOING; }
    virtual bool isConnected() const { return getState() == ConversationItemState::CONNECTED; }
    virtual bool isConference() const { return getState() == ConversationItemState::CONFERENCE; }
    virtual bool isLocallyHeld() const { return getState() == ConversationItemState::LOCALLY_HELD; }
    virtual bool isRemotelyHeld() const { return getState() == ConversationItemState::REMOTELY_HELD; }
    virtual bool isVoiceMail() const { return getState() == ConversationItemState::VOICEMAIL; }
    virtual bool isClearing() const { return getState() == ConversationItemState::CLEARING; }
    virtual bool isIsolated() const { return getState() == ConversationItemState::ISOLATED; }
    virtual bool isBlindTransferring() const { return getState() == ConversationItemState::BLIND_TRANSFERRING; }
    virtual bool isCallWaitingIsolated() const { return getState() == ConversationItemState::CALL_WAITING_ISOLATED; }
    virtual bool isCallWaitingIgnored() const { return getState() == ConversationItemState::CALL_WAITING_IGNORED; }
    virtual bool isCallWaiting() const { return getState() == ConversationItemState::CALL_WAITING; }
    virtual bool isRepresentedHeldCall() const { return getState() == ConversationItemState::REPRESENTED_HELD_CALL; }
    virtual bool isStartedRemoteCall() const { return getState() == ConversationItemState::STARTED_REMOTE_CALL; }

    /** Any call of the history but a forwarded one. */
    virtual bool isEndingRemoteCall() const;
    virtual bool isIncomingGroupPickup() const { return getState() == ConversationItemState::GROUP_PICKUP_INCOMING; }
    virtual bool isConnectedGroupPickup() const { return getState() == ConversationItemState::GROUP_PICKUP_CONNECTED; }

    virtual bool isCallAnonymous() const;
    virtual bool isConferenceConversation() const;
    virtual bool isLargeConference() const;

    /** Any call of the history. */
    virtual bool isNonActiveCall() const;
    virtual bool isGroupCall() const { return false; }

    /** Whether this item and the other belong to one conversation. */
    virtual bool isSameConversationAs(const ConversationItem& other) const;
    virtual bool isSameConversationIgnoringCallID(const ConversationItem& other) const;

    /** Strictly later; two items of one second are neither later than the other. */
    virtual bool isLaterThan(const ConversationItem& other) const;

    virtual long timeStampUTC() const;
    virtual void setModificationTimeStampUTC(long time);

    /** The time of the last change; the item's own time when it was never changed. */
    virtual long modificationTimeStampUTC() const;

    virtual void setConversationId(const std::string& id);
    virtual std::string conversationId() const;

    /** The item's own id in its source; "" when it has none. */
    virtual void setConversationItemId(const std::string& id);
    virtual std::string conversationItemId() const;

    /** Null: parties added from now on are dropped. */
    virtual void setConversationParticipantFactory(ConversationParticipantFactory* factory);
    virtual void addParticipant(const CallPartyIdentifier& party);
    virtual void setNumberOfAttachments(int count);
    virtual ActiveCall::callDirection activeCallDirection() const;
    virtual ConversationItemState getState() const { return ConversationItemState::NO_STATE; }

    /** Call control's id of a live call; "" for everything else. */
    virtual std::string getCallId() const { return callId_.str(); }
    virtual std::string getItemSubjectText() const { return {}; }
    virtual std::string getItemText() const { return {}; }
    virtual std::string getHistoryDuration() const { return {}; }
    virtual std::string getCreatorId() const { return {}; }
    virtual int getNumberOfAttachments() const;
    virtual systemMessageType getType() const { return NO_SYSTEM_MESSAGE; }
    virtual addParticipantReason getAddParticipantReason() const { return NO_ADD_PARTICIPANT_REASON; }
    virtual ConversationParticipant creator() const;
    virtual void setCreator(ConversationParticipant creator);
    virtual bool getUserHasLeftOrJoined() const { return false; }
    virtual std::vector<std::string> getAffectedParticipants() const { return {}; }

    /** These change the first party; without one they do nothing. */
    virtual void setNumber(std::string number);
    virtual void setNumberType(CallPartyIdentifier::PhoneNumberIconType type);

    /** The number last used for this contact; see lastNumber(). */
    virtual void setLastPhoneNumber(const std::string& number);

    /** A copy that reports "[clone]"; the caller owns it. */
    virtual ConversationItem* clone() = 0;

    virtual DisplayAPI::ForwardedCallType getForwardedCallType() const { return DisplayAPI::NOT_FORWARDED; }

    /** Null for kinds that know of no forwarding; valid until the item is changed or destroyed. */
    virtual const CallPartyIdentifier* getForwardedCallParty() const { return nullptr; }
    virtual void setForwardedCallParty(const CallPartyIdentifier&) {}

    /** These change the first party; without one they do nothing. */
    virtual void setFirstName(const std::string& firstName);
    virtual void setLastName(const std::string& lastName);
    virtual void setPhoneNumbers(const std::string& work1, const std::string& work2, const std::string& mobile,
                                 const std::string& home);

    /** How many events of this item the user has not seen yet. */
    virtual int numberOfNewEvents() { return 0; }
    virtual void setLastPhoneNumberType(NumberType::NT type);

    /** The number to call back: the last used one, else the first party's number of the last used type. */
    virtual std::string lastNumber();
    virtual void clearParticipants();
    virtual void setExchangeContactId(const std::string& id);
    virtual void setLargeConference(bool large);

    /** Whether both items have the same parties, once each brings them into order; two without any have. */
    virtual bool doParticipantsMatch(const ConversationItem& other) const;
    virtual bool getHDAudioIconStatus() const { return false; }
    virtual bool isDSSCall() const { return false; }
    virtual void setViewed(bool) {}
    virtual bool getViewed() const { return false; }
    virtual std::string getGroupName() const { return {}; }
    virtual std::string getGroupNumber() const { return {}; }

    /** clone() of an item that may only be looked at. */
    std::unique_ptr<ConversationItem> copy() const
    {
        return std::unique_ptr<ConversationItem>(const_cast<ConversationItem*>(this)->clone());
    }

    void setClone() { clone_ = true; }

    /** "[clone]" or "", for log lines. */
    const char* isClone() const { return clone_ ? "[clone]" : ""; }

    /** The source's record id (a journal entry's id, say); lives as long as the item. */
    const std::string& getItemId() const { return entryId_; }
    void setEntryId(const std::string& id) { entryId_ = id; }

    /** Whether removing the conversation from a list also deletes the item. */
    bool isDeleteOnConversationList() const { return deleteOnConversationList_; }
    void setDeleteOnConversationList(bool deleteIt) { deleteOnConversationList_ = deleteIt; }
    void setIsConferenceConversation(bool conference) { conferenceConversation_ = conference; }
    void setForwardInfo(forwardInfo info);
    forwardInfo getForwardInfo() const { return rarities_->forwarding; }
    std::string exchangeContactId() const { return exchangeContactId_.str(); }

    std::vector<ConversationParticipant> getParticipantsCopy() const;

    /** Without the copy; lives until the parties change or the item is destroyed. */
    const Participants& participants() const { return participants_; }

    std::string toString() const;

    /** Hour, minute, day and month in local time: "09:07 05/03". */
    std::string formatLocalTime() const;
    static int makeZeroBasedMonthValueOneBased(const std::tm& time);

    bool areGroupPickupConversationItems(const ConversationItem& other) const;

    /** The order of items in a conversation: live calls first, then newest first. No strict weak ordering. */
    bool lessThanConsideringTime(const ConversationItem& other, long time, long otherTime) const;
    bool lessThanOtherConsideringModificationTime(const ConversationItem& other) const;
    bool lessThanOtherConsideringCreationTime(const ConversationItem& other) const;
    bool operator<(const ConversationItem& other) const;

    /** Takes the item's time from the journal's text. */
    void extractTimeAndDateFromJournalServiceISO8601String(const std::string& text);

    /** The instant that the journal's text denotes; 0 for "" and, with a log line, for a malformed text. */
    static long extractUTCTimeTFromJournalServiceISO8601String(const std::string& text);

    /** Equality of ids without copying them. */
    bool hasConversationId() const { return !conversationId_.empty(); }
    bool hasConversationItemId() const { return !conversationItemId_.empty(); }
    bool hasExchangeContactId() const { return !exchangeContactId_.empty(); }
    const SharedText& conversationIdText() const { return conversationId_; }
    const SharedText& conversationItemIdText() const { return conversationItemId_; }
    const SharedText& exchangeContactIdText() const { return exchangeContactId_; }
    const SharedText& callIdText() const { return callId_; }

    /** The parties share no texts with those of other items any more. */
    void keepOwnTexts();

    /** Shares the text instead of copying it. */
    void shareConversationId(const SharedText& id) { conversationId_ = id; }
    void shareExchangeContactId(const SharedText& id) { exchangeContactId_ = id; }

  protected:
    /** An item of one party; without a factory it has none. */
    ConversationItem(const std::string& number, const std::string& firstName, const std::string& lastName,
                     CallPartyIdentifier::PhoneNumberIconType type, ConversationParticipantFactory* factory);
    ConversationItem(const ConversationItem& other);

    /** What getGroupName() and getGroupNumber() copy, without the copy. */
    virtual const SharedText& groupNameText() const;
    virtual const SharedText& groupNumberText() const;

    void setTimeStampUTC(long time) { timeStamp_ = time; }
    void setCallId(const std::string& id) { callId_.assign(id); }

  private:
    friend class SharedItem;

    /** By how many the item is held; that of a copy begins anew. */
    struct Holding
    {
        Holding() = default;
        Holding(const Holding&) noexcept {}
        Holding& operator=(const Holding&) = default;

        ReferenceCount::type holders = 0;
        bool isGivenOut = false;
    };

    /** What few items have. */
    struct Rarities
    {
        ConversationParticipant creator;
        forwardInfo forwarding = NO_FORWARD_INFO;
        int numberOfAttachments = 0;
        long modificationTimeStamp = 0; ///< 0: never modified
        SharedText lastPhoneNumber;
    };

    ConversationParticipant* firstParty() { return participants_.empty() ? nullptr : &participants_.front(); }

    // What tells where an item belongs comes first, its party included: a rebuild looks at that of thousands, in as few
    // cache lines as can be.
    long timeStamp_ = 0;
    SharedText conversationId_;
    SharedText conversationItemId_;
    SharedText exchangeContactId_;
    SharedText callId_; ///< here, so that comparing two live calls copies no text
    Holding holding_;
    bool conferenceConversation_ = false;
    bool clone_ = false;
    bool deleteOnConversationList_ = true;
    bool largeConference_ = false;
    std::uint8_t lastPhoneNumberType_ = NumberType::NONE;
    Participants participants_;
    boost::static_strings::static_string<25> timeAndDate_; ///< the journal's text, as far as it tells the time
    std::string entryId_;
    CopyOnWrite<Rarities> rarities_;
    ConversationParticipantFactory* participantFactory_ = nullptr;
};
} // namespace ConversationAPI
