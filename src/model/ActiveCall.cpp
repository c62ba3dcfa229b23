#include "ConversationAPI/ActiveCall.h"

#include "ConversationAPI/WellKnownNames.h"
#include "Seconds32.h"

#include <array>
#include <utility>

namespace ConversationAPI
{
namespace
{
const std::string& newerIf(bool changed, const std::string& newer, const std::string& known)
{
    return changed ? newer : known;
}

bool bringsOther(const std::string& newer, const std::string& known)
{
    return !newer.empty() && newer != known;
}
} // namespace

ActiveCall::ActiveCall() : participants_(1) {}

ActiveCall::ActiveCall(TimeFunction timeFunction, const std::string& callId, const CallPartyIdentifier& party,
                       conferenceState conference)
    : timeFunction_(timeFunction), callId_(callId), conferenceState_(conference)
{
    addFirstParticipant(party);
}

ActiveCall::ActiveCall(TimeFunction timeFunction, const std::string& callId, const CallPartyIdentifier& party1,
                       const CallPartyIdentifier& party2, conferenceState conference)
    : timeFunction_(timeFunction), callId_(callId), state_(CONFERENCE), conferenceState_(conference)
{
    participants_.reserve(2);
    addFirstParticipant(party1);
    addParticipant(party2);
}

/** An empty party where the record has none: no second one, or none at all after it was moved from. */
const CallPartyIdentifier& ActiveCall::party(std::size_t index) const
{
    static const CallPartyIdentifier nobody;
    return index < participants_.size() ? participants_[index] : nobody;
}

std::string ActiveCall::firstname() const
{
    return party(0).getFirstName();
}

std::string ActiveCall::lastname() const
{
    return party(0).getSurname();
}

std::string ActiveCall::number() const
{
    return party(0).getNumber();
}

std::string ActiveCall::picturepath() const
{
    return party(0).getContactImagePath();
}

std::string ActiveCall::secondPartyFirstname() const
{
    return party(1).getFirstName();
}

std::string ActiveCall::secondPartyLastname() const
{
    return party(1).getSurname();
}

std::string ActiveCall::secondPartyNumber() const
{
    return party(1).getNumber();
}

std::string ActiveCall::secondPartyPicturepath() const
{
    return party(1).getContactImagePath();
}

std::vector<CallPartyIdentifier> ActiveCall::getParticipants() const
{
    return participants_;
}

const std::vector<CallPartyIdentifier>& ActiveCall::participants() const
{
    return participants_;
}

const std::string& ActiveCall::getCallId() const
{
    return callId_;
}

ActiveCall::activeCallState ActiveCall::getState() const
{
    return state_;
}

long ActiveCall::callInitiatedTime() const
{
    return callInitiatedTime_;
}

ActiveCall::callDirection ActiveCall::getCallDirection() const
{
    return direction_;
}

ActiveCall::conferenceState ActiveCall::getConferenceState() const
{
    return conferenceState_;
}

DisplayAPI::ForwardedCallType ActiveCall::getForwardType() const
{
    return forwardType_;
}

const CallPartyIdentifier& ActiveCall::getForwardParty() const
{
    return forwardParty_;
}

bool ActiveCall::getHDAudioIconStatus() const
{
    return hdAudioIconStatus_;
}

bool ActiveCall::isDSSCall() const
{
    return dssCall_;
}

bool ActiveCall::hasSecondParticipant() const
{
    return participants_.size() > 1;
}

bool ActiveCall::isConferenceCall() const
{
    return conferenceState_ != NO_CONFERENCE;
}

bool ActiveCall::isLargeConference() const
{
    return conferenceState_ == LARGE_CONFERENCE;
}

bool ActiveCall::isCallInfoUpdate(const ActiveCall& other) const
{
    return other.state_ == CALL_INFO_UPDATE;
}

bool ActiveCall::operator==(const ActiveCall& other) const
{
    return callId_ == other.callId_;
}

bool ActiveCall::operator!=(const ActiveCall& other) const
{
    return !(*this == other);
}

void ActiveCall::setState(activeCallState newState)
{
    setCurrentTimeWhenCallIsConnected(newState);
    state_ = newState;
}

/** A picked-up group call that only rings keeps the time at which it began to ring. */
void ActiveCall::setCurrentTimeWhenCallIsConnected(activeCallState newState)
{
    const bool waitsForAnswer = state_ == INCOMING_CALL || state_ == OUTGOING_CALL || state_ == GROUP_PICKUP_CONNECTED;
    if (newState == CONNECTED && waitsForAnswer)
    {
        saveTime();
    }
}

void ActiveCall::setCallDirection(callDirection direction)
{
    direction_ = direction;
}

void ActiveCall::setCallInitiatedTime(long seconds)
{
    callInitiatedTime_ = saturatedTo32Bits(seconds);
}

void ActiveCall::setForwardType(DisplayAPI::ForwardedCallType type)
{
    forwardType_ = type;
}

void ActiveCall::setForwardParty(const CallPartyIdentifier* party)
{
    if (party != nullptr)
    {
        forwardParty_ = CallPartyIdentifier(party->getFirstName(), party->getSurname(), party->getNumber(),
                                            party->getPhoneNumberType(), "", false);
    }
}

void ActiveCall::setHDAudioIconStatus(bool shown)
{
    hdAudioIconStatus_ = shown;
}

void ActiveCall::setDSSCall(bool isDSSCall)
{
    dssCall_ = isDSSCall;
}

/** The clock writes a time_t, which is wider than what the record keeps. */
void ActiveCall::saveTime()
{
    if (timeFunction_ != nullptr)
    {
        std::time_t now = callInitiatedTime_;
        timeFunction_(&now);
        setCallInitiatedTime(now);
    }
}

void ActiveCall::addParticipant(const CallPartyIdentifier& party)
{
    participants_.push_back(party);
}

void ActiveCall::addFirstParticipant(const CallPartyIdentifier& party)
{
    saveTime();
    addParticipant(party);
}

/** Builds the party anew before it is stored: the texts may be those of the party that is replaced. */
void ActiveCall::setPartyDetails(std::size_t index, const std::string& lastname, const std::string& firstname,
                                 const std::string& number, const std::string& picturepath)
{
    CallPartyIdentifier updated(firstname, lastname, number, CallPartyIdentifier::NO_ICON, picturepath, false);
    if (index >= participants_.size())
    {
        participants_.resize(index + 1);
    }
    participants_[index] = std::move(updated);
}

void ActiveCall::updateDetails(const std::string& lastname, const std::string& firstname, const std::string& number,
                               const std::string& picturepath)
{
    setPartyDetails(0, lastname, firstname, number, picturepath);
}

void ActiveCall::updateSecondPartyDetails(const std::string& lastname, const std::string& firstname,
                                          const std::string& number, const std::string& picturepath)
{
    setPartyDetails(1, lastname, firstname, number, picturepath);
}

void ActiveCall::updateFrom(const ActiveCall& other)
{
    updateFirstPartyFrom(other);
    if (other.hasSecondParticipant())
    {
        updateSecondPartyFrom(other);
    }
    if (forwardedCallPartyNeedsUpdatingFrom(other))
    {
        forwardType_ = other.forwardType_;
        setForwardParty(&other.forwardParty_);
    }
    if (!isCallInfoUpdate(other))
    {
        setState(other.state_);
        conferenceState_ = other.conferenceState_;
    }
    hdAudioIconStatus_ = other.hdAudioIconStatus_;
    dssCall_ = other.dssCall_;
    direction_ = other.direction_;
}

/** All three are judged against the old number: with a new number even an empty name is news. */
void ActiveCall::updateFirstPartyFrom(const ActiveCall& other)
{
    const bool newFirstname = firstnameNeedsUpdatingFrom(other);
    const bool newLastname = lastnameNeedsUpdatingFrom(other);
    const bool newNumber = numberNeedsUpdatingFrom(other);
    if (newFirstname || newLastname || newNumber)
    {
        const CallPartyIdentifier& newer = other.party(0);
        const CallPartyIdentifier& known = party(0);
        updateDetails(newerIf(newLastname, newer.getSurname(), known.getSurname()),
                      newerIf(newFirstname, newer.getFirstName(), known.getFirstName()),
                      newerIf(newNumber, newer.getNumber(), known.getNumber()), known.getContactImagePath());
    }
}

/** A conference keeps one picture, the first party's: the second party's own is never taken over. */
void ActiveCall::updateSecondPartyFrom(const ActiveCall& other)
{
    const bool newFirstname = secondPartyFirstNameNeedsUpdatingFrom(other);
    const bool newLastname = secondPartyLastNameNeedsUpdatingFrom(other);
    const bool newNumber = secondPartyNumberNeedsUpdatingFrom(other);
    if (newFirstname || newLastname || newNumber)
    {
        const CallPartyIdentifier& newer = other.party(1);
        const CallPartyIdentifier& known = party(1);
        updateSecondPartyDetails(newerIf(newLastname, newer.getSurname(), known.getSurname()),
                                 newerIf(newFirstname, newer.getFirstName(), known.getFirstName()),
                                 newerIf(newNumber, newer.getNumber(), known.getNumber()),
                                 party(0).getContactImagePath());
    }
}

bool ActiveCall::firstnameNeedsUpdatingFrom(const ActiveCall& other) const
{
    const std::string& newer = other.party(0).getFirstName();
    const bool differs = newer != party(0).getFirstName();
    return newer.empty() ? differs && numberNeedsUpdatingFrom(other) : differs;
}

bool ActiveCall::lastnameNeedsUpdatingFrom(const ActiveCall& other) const
{
    const std::string& newer = other.party(0).getSurname();
    const std::string& known = party(0).getSurname();
    if (newer.empty() && !numberNeedsUpdatingFrom(other))
    {
        return known == CTI_ASSISTED_NAME;
    }
    return newer != known;
}

bool ActiveCall::numberNeedsUpdatingFrom(const ActiveCall& other) const
{
    return bringsOther(other.party(0).getNumber(), party(0).getNumber());
}

bool ActiveCall::secondPartyFirstNameNeedsUpdatingFrom(const ActiveCall& other) const
{
    return bringsOther(other.party(1).getFirstName(), party(1).getFirstName());
}

bool ActiveCall::secondPartyLastNameNeedsUpdatingFrom(const ActiveCall& other) const
{
    return bringsOther(other.party(1).getSurname(), party(1).getSurname());
}

bool ActiveCall::secondPartyNumberNeedsUpdatingFrom(const ActiveCall& other) const
{
    return bringsOther(other.party(1).getNumber(), party(1).getNumber());
}

bool ActiveCall::forwardedCallPartyNeedsUpdatingFrom(const ActiveCall& other) const
{
    return forwardType_ != other.forwardType_ || forwardParty_.getNumber() != other.forwardParty_.getNumber() ||
           forwardParty_.getSurname() != other.forwardParty_.getSurname() ||
           forwardParty_.getFirstName() != other.forwardParty_.getFirstName();
}

bool ActiveCall::firstPartyNeedsUpdatingFrom(const ActiveCall& other) const
{
    return firstnameNeedsUpdatingFrom(other) || lastnameNeedsUpdatingFrom(other) || numberNeedsUpdatingFrom(other);
}

bool ActiveCall::secondPartyNeedsUpdatingFrom(const ActiveCall& other) const
{
    return secondPartyFirstNameNeedsUpdatingFrom(other) || secondPartyLastNameNeedsUpdatingFrom(other) ||
           secondPartyNumberNeedsUpdatingFrom(other);
}

bool ActiveCall::partiesNeedUpdatingFrom(const ActiveCall& other) const
{
    return firstPartyNeedsUpdatingFrom(other) ||
           (other.hasSecondParticipant() && secondPartyNeedsUpdatingFrom(other)) ||
           forwardedCallPartyNeedsUpdatingFrom(other);
}

/** A conference may change in ways that its two parties do not show, so it is always refreshed. */
bool ActiveCall::needsUpdatingFrom(const ActiveCall& other) const
{
    return partiesNeedUpdatingFrom(other) || state_ != other.state_ || (isConferenceCall() && other.isConferenceCall());
}

bool ActiveCall::areStatesOnlyDifference(const ActiveCall& other) const
{
    if (isConferenceCall() && other.isConferenceCall())
    {
        return true;
    }
    return !partiesNeedUpdatingFrom(other) && !isCallInfoUpdate(other);
}

const char* activeCallStateToString(ActiveCall::activeCallState state)
{
    static constexpr std::array<const char*, 17> NAMES = {"CONNECTED",
                                                          "LOCAL_ON_HOLD",
                                                          "REMOTE_ON_HOLD",
                                                          "CONFERENCE",
                                                          "INCOMING_CALL",
                                                          "OUTGOING_CALL",
                                                          "REMOTE_CALL",
                                                          "CLEARING",
                                                          "GROUP_PICKUP_CONNECTED",
                                                          "GROUP_PICKUP_INCOMING",
                                                          "ISOLATED",
                                                          "CALL_WAITING_ISOLATED",
                                                          "CALL_WAITING_IGNORED",
                                                          "CALL_WAITING",
                                                          "REPRESENT_HELD_CALL",
                                                          "CALL_INFO_UPDATE",
                                                          "BLINDTRANSFERRING"};
    const auto index = static_cast<std::size_t>(state);
    // Spelled as the tools that read these logs know it.
    return index < NAMES.size() ? NAMES[index] : "UNKOWN";
}
} // namespace ConversationAPI
