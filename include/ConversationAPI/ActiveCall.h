/**
 * What call control knows of one live call: its id and state, who is on it, who forwarded it, when it began.
 *
 * A value: it owns all that it holds except the clock function. A copy is cheap, as the parties share their
 * texts until one is changed. Runs on the UI thread; holds no lock.
 */
#pragma once

#include "platform/CallPartyIdentifier.h"
#include "platform/DisplayAPI.h"

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

namespace ConversationAPI
{
class ActiveCall
{
  public:
    /** The clock, with the signature of time(); what it writes to its argument is the present in seconds. */
    using TimeFunction = std::time_t (*)(std::time_t*);

    /** The numbers are those of call control. */
    enum activeCallState : std::int32_t
    {
        CONNECTED = 0,
        LOCAL_ON_HOLD = 1,
        REMOTE_ON_HOLD = 2,
        CONFERENCE = 3,
        INCOMING_CALL = 4,
        OUTGOING_CALL = 5,
        REMOTE_CALL = 6,
        CLEARING = 7,
        GROUP_PICKUP_CONNECTED = 8,
        GROUP_PICKUP_INCOMING = 9,
        ISOLATED = 10,
        CALL_WAITING_ISOLATED = 11,
        CALL_WAITING_IGNORED = 12,
        CALL_WAITING = 13,
        REPRESENT_HELD_CALL = 14,
        CALL_INFO_UPDATE = 15, ///< no state of a call: marks an event that carries only new party details
        BLINDTRANSFERRING = 16
    };

    /** Which side placed the call. Call control may send other values; they are handed on as they are. */
    enum callDirection : std::int32_t
    {
        NO_DIRECTION = 0,
        INCOMING = 1,
        OUTGOING = 2
    };

    /** Every value but NO_CONFERENCE is a conference. Other values are handed on as they are. */
    enum conferenceState : std::int32_t
    {
        NO_CONFERENCE = 0,
        LARGE_CONFERENCE = 1,
        SMALL_CONFERENCE = 2
    };

    /** No clock, no id, CONNECTED, one participant of whom nothing is known. */
    ActiveCall();

    /** A CONNECTED call with one party, begun now. Without a clock (null) no time is ever stamped. */
    ActiveCall(TimeFunction timeFunction, const std::string& callId, const CallPartyIdentifier& party,
               conferenceState conference);

    /** A CONFERENCE with two parties, begun now. */
    ActiveCall(TimeFunction timeFunction, const std::string& callId, const CallPartyIdentifier& party1,
               const CallPartyIdentifier& party2, conferenceState conference);

    /** Details of the remote party. */
    std::string firstname() const;
    std::string lastname() const;
    std::string number() const;
    std::string picturepath() const;

    /** Details of the second party of a conference; "" when there is none. */
    std::string secondPartyFirstname() const;
    std::string secondPartyLastname() const;
    std::string secondPartyNumber() const;
    std::string secondPartyPicturepath() const;

    /** The remote party, then the others. */
    std::vector<CallPartyIdentifier> getParticipants() const;

    /** The same without a copy; valid until the record is changed or destroyed. */
    const std::vector<CallPartyIdentifier>& participants() const;

    /** Identity of the call, byte for byte; "" when not set. The reference lives as long as the record. */
    const std::string& getCallId() const;

    activeCallState getState() const;

    /** When the call was answered, or made when it never rang: seconds since the epoch, UTC; 0 until stamped. */
    long callInitiatedTime() const;

    callDirection getCallDirection() const;
    conferenceState getConferenceState() const;
    DisplayAPI::ForwardedCallType getForwardType() const;

    /** The party the call was forwarded to, empty when none; valid until the record is changed or destroyed. */
    const CallPartyIdentifier& getForwardParty() const;

    bool getHDAudioIconStatus() const;
    bool isDSSCall() const;

    bool hasSecondParticipant() const;
    bool isConferenceCall() const;
    bool isLargeConference() const;

    /** Whether the other record is an event that carries only party details; this record does not matter. */
    bool isCallInfoUpdate(const ActiveCall& other) const;

    /** Whether both are records of the same call, whatever they say about it. */
    bool operator==(const ActiveCall& other) const;
    bool operator!=(const ActiveCall& other) const;

    /** Stores the state; an answer to a call that rang or was dialled stamps the time first. */
    void setState(activeCallState newState);

    void setCallDirection(callDirection direction);

    /** Seconds since the epoch, UTC; kept in 32 bits, a time beyond becomes the nearest that fits. */
    void setCallInitiatedTime(long seconds);

    void setForwardType(DisplayAPI::ForwardedCallType type);

    /** Takes names, number and number type, but no picture; null changes nothing. */
    void setForwardParty(const CallPartyIdentifier* party);

    void setHDAudioIconStatus(bool shown);
    void setDSSCall(bool isDSSCall);

    /** Stamps the call's time with the clock's present; nothing without a clock. */
    void saveTime();

    /** Appends a party. */
    void addParticipant(const CallPartyIdentifier& party);

    /** Stamps the time and appends the party. */
    void addFirstParticipant(const CallPartyIdentifier& party);

    /** Replaces the remote party's details; its number type is no longer known then. Last name first. */
    void updateDetails(const std::string& lastname, const std::string& firstname, const std::string& number,
                       const std::string& picturepath);

    /** The same for the second party, which is added when there is none. */
    void updateSecondPartyDetails(const std::string& lastname, const std::string& firstname, const std::string& number,
                                  const std::string& picturepath);

    /** Folds in a newer record of the same call: what it does not know does not wipe what is known here. */
    void updateFrom(const ActiveCall& other);

    /** Whether updateFrom() would change the detail; `other` is the newer record. */
    bool firstnameNeedsUpdatingFrom(const ActiveCall& other) const;
    bool lastnameNeedsUpdatingFrom(const ActiveCall& other) const;
    bool numberNeedsUpdatingFrom(const ActiveCall& other) const;
    bool secondPartyFirstNameNeedsUpdatingFrom(const ActiveCall& other) const;
    bool secondPartyLastNameNeedsUpdatingFrom(const ActiveCall& other) const;
    bool secondPartyNumberNeedsUpdatingFrom(const ActiveCall& other) const;
    bool forwardedCallPartyNeedsUpdatingFrom(const ActiveCall& other) const;

    /** Whether the newer record brings anything to show; two conferences always do. */
    bool needsUpdatingFrom(const ActiveCall& other) const;

    /** Whether the newer record names the same parties, so that the call may stay where it is shown. */
    bool areStatesOnlyDifference(const ActiveCall& other) const;

  private:
    const CallPartyIdentifier& party(std::size_t index) const;
    void setCurrentTimeWhenCallIsConnected(activeCallState newState);
    void setPartyDetails(std::size_t index, const std::string& lastname, const std::string& firstname,
                         const std::string& number, const std::string& picturepath);
    void updateFirstPartyFrom(const ActiveCall& other);
    void updateSecondPartyFrom(const ActiveCall& other);
    bool firstPartyNeedsUpdatingFrom(const ActiveCall& other) const;
    bool secondPartyNeedsUpdatingFrom(const ActiveCall& other) const;
    bool partiesNeedUpdatingFrom(const ActiveCall& other) const;

    TimeFunction timeFunction_ = nullptr;
    std::string callId_;
    std::int32_t callInitiatedTime_ = 0;
    activeCallState state_ = CONNECTED;
    callDirection direction_ = NO_DIRECTION;
    std::vector<CallPartyIdentifier> participants_; ///< the remote party, then the others
    DisplayAPI::ForwardedCallType forwardType_ = DisplayAPI::NOT_FORWARDED;
    CallPartyIdentifier forwardParty_;
    bool hdAudioIconStatus_ = false;
    bool dssCall_ = false;
    conferenceState conferenceState_ = NO_CONFERENCE;
};

/** The state's name for log lines; lives as long as the program. */
const char* activeCallStateToString(ActiveCall::activeCallState state);
} // namespace ConversationAPI
