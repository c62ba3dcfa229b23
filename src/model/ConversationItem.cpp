#include "ConversationAPI/ConversationItem.h"

#include "ConversationAPI/ConversationParticipantFactory.h"
#include "ConversationAPI/WellKnownNames.h"
#include "Log.h"
#include "model/InsertionSort.h"
#include "model/Iso8601.h"
#include "model/ItemOrder.h"
#include "model/ItemStates.h"

#include <cstdio>
#include <utility>

namespace ConversationAPI
{
namespace
{
constexpr const char* ITEM_LOG_FILE = "./src/ConversationItem";

void boostExceptionThrown(const std::exception& e)
{
    CONVERSATION_LOG(ITEM_LOG_FILE, 2, "Boost exception thrown '%s'\n", e.what());
}
} // namespace

ConversationItem::ConversationItem()
{
    extractTimeAndDateFromJournalServiceISO8601String("");
}

ConversationItem::ConversationItem(const std::string& number, const std::string& firstName, const std::string& lastName,
                                   CallPartyIdentifier::PhoneNumberIconType type,
                                   ConversationParticipantFactory* factory)
    : participantFactory_(factory)
{
    ConversationItem::addParticipant(CallPartyIdentifier(firstName, lastName, number, type, "", false));
}

ConversationItem::ConversationItem(const ConversationItem& other) = default;

ConversationItem::~ConversationItem() = default;

bool ConversationItem::isActiveOrProgressingOrClearing() const
{
    return States::ACTIVE_OR_PROGRESSING_OR_CLEARING.has(getState());
}

bool ConversationItem::isActiveOrClearing() const
{
    return States::ACTIVE_OR_CLEARING.has(getState());
}

bool ConversationItem::isActive() const
{
    return States::ACTIVE.has(getState());
}

bool ConversationItem::isProgressing() const
{
    return States::PROGRESSING.has(getState());
}

bool ConversationItem::isEndingRemoteCall() const
{
    return States::ENDING_REMOTE_CALL.has(getState());
}

bool ConversationItem::isCallAnonymous() const
{
    if (participants_.empty())
    {
        return false;
    }
    const std::string& number = participants_.front().numberText();
    const std::string name = participants_.front().getName();
    return (name == ANONYMOUS_NAME && (number.empty() || number == ANONYMOUS_NAME)) ||
           (number == NO_NUMBER_PROVIDED && name.empty());
}

bool ConversationItem::isConferenceConversation() const
{
    return conferenceConversation_;
}

bool ConversationItem::isLargeConference() const
{
    return largeConference_;
}

bool ConversationItem::isNonActiveCall() const
{
    return States::NON_ACTIVE_CALL.has(getState());
}

bool ConversationItem::isSameConversationAs(const ConversationItem& other) const
{
    if (isGroupCall() != other.isGroupCall())
    {
        return false;
    }
    if (isGroupCall())
    {
        return groupNameText() == other.groupNameText() && groupNumberText() == other.groupNumberText() &&
               doParticipantsMatch(other);
    }
    if (hasExchangeContactId() && other.hasExchangeContactId())
    {
        return exchangeContactId_ == other.exchangeContactId_;
    }
    if (hasConversationId() && other.hasConversationId())
    {
        return conversationId_ == other.conversationId_;
    }
    if (isActiveOrProgressingOrClearing() && other.isActiveOrProgressingOrClearing())
    {
        return areGroupPickupConversationItems(other) || callId_ == other.callId_;
    }
    return doParticipantsMatch(other);
}

bool ConversationItem::isSameConversationIgnoringCallID(const ConversationItem& other) const
{
    if (hasConversationId() && other.hasConversationId())
    {
        return conversationId_ == other.conversationId_;
    }
    return doParticipantsMatch(other);
}

bool ConversationItem::isLaterThan(const ConversationItem& other) const
{
    return timeStampUTC() > other.timeStampUTC();
}

long ConversationItem::timeStampUTC() const
{
    return timeStamp_;
}

void ConversationItem::setModificationTimeStampUTC(long time)
{
    rarities_.write().modificationTimeStamp = time;
}

long ConversationItem::modificationTimeStampUTC() const
{
    return rarities_->modificationTimeStamp != 0 ? rarities_->modificationTimeStamp : timeStampUTC();
}

void ConversationItem::setConversationId(const std::string& id)
{
    conversationId_.assign(id);
}

std::string ConversationItem::conversationId() const
{
    return conversationId_.str();
}

void ConversationItem::setConversationItemId(const std::string& id)
{
    conversationItemId_.assign(id);
}

std::string ConversationItem::conversationItemId() const
{
    return conversationItemId_.str();
}

void ConversationItem::setConversationParticipantFactory(ConversationParticipantFactory* factory)
{
    participantFactory_ = factory;
}

void ConversationItem::addParticipant(const CallPartyIdentifier& party)
{
    if (participantFactory_)
    {
        participants_.push_back(participantFactory_->getConversationParticipant(party));
    }
}

void ConversationItem::setNumberOfAttachments(int count)
{
    rarities_.write().numberOfAttachments = count;
}

ActiveCall::callDirection ConversationItem::activeCallDirection() const
{
    return static_cast<ActiveCall::callDirection>(0);
}

int ConversationItem::getNumberOfAttachments() const
{
    return rarities_->numberOfAttachments;
}

ConversationParticipant ConversationItem::creator() const
{
    return rarities_->creator;
}

void ConversationItem::setCreator(ConversationParticipant creator)
{
    rarities_.write().creator = std::move(creator);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the operation is known with this signature.
void ConversationItem::setNumber(std::string number)
{
    if (ConversationParticipant* party = firstParty())
    {
        party->saveNumber(number);
    }
}

void ConversationItem::setNumberType(CallPartyIdentifier::PhoneNumberIconType type)
{
    if (ConversationParticipant* party = firstParty())
    {
        party->saveNumberType(type);
    }
}

void ConversationItem::setLastPhoneNumber(const std::string& number)
{
    if (rarities_->lastPhoneNumber.view() != number)
    {
        rarities_.write().lastPhoneNumber.assign(number);
    }
}

void ConversationItem::setFirstName(const std::string& firstName)
{
    if (ConversationParticipant* party = firstParty())
    {
        party->saveFirstName(firstName);
    }
}

void ConversationItem::setLastName(const std::string& lastName)
{
    if (ConversationParticipant* party = firstParty())
    {
        party->saveLastName(lastName);
    }
}

void ConversationItem::setPhoneNumbers(const std::string& work1, const std::string& work2, const std::string& mobile,
                                       const std::string& home)
{
    if (ConversationParticipant* party = firstParty())
    {
        party->setPhoneNumbers(work1, work2, mobile, home);
    }
}

void ConversationItem::setForwardInfo(forwardInfo info)
{
    if (info != getForwardInfo())
    {
        rarities_.write().forwarding = info;
    }
}

void ConversationItem::setLastPhoneNumberType(NumberType::NT type)
{
    lastPhoneNumberType_ = static_cast<std::uint8_t>(type);
}

std::string ConversationItem::lastNumber()
{
    if (!rarities_->lastPhoneNumber.empty() || participants_.empty())
    {
        return rarities_->lastPhoneNumber.str();
    }
    const ConversationParticipant& party = participants_.front();
    switch (lastPhoneNumberType_)
    {
    case NumberType::HOME:
        return party.getHomeNumber();
    case NumberType::WORK_2:
        return party.getWorkNumber2();
    case NumberType::MOBILE:
        return party.getMobileNumber();
    default:
        return party.getWorkNumber1();
    }
}

void ConversationItem::keepOwnTexts()
{
    for (ConversationParticipant& party : participants_)
    {
        party.keepOwnTexts();
    }
}

const SharedText& ConversationItem::groupNameText() const
{
    static const SharedText none;
    return none;
}

const SharedText& ConversationItem::groupNumberText() const
{
    static const SharedText none;
    return none;
}

void ConversationItem::clearParticipants()
{
    participants_.clear();
}

void ConversationItem::setExchangeContactId(const std::string& id)
{
    exchangeContactId_.assign(id);
}

void ConversationItem::setLargeConference(bool large)
{
    largeConference_ = large;
}

bool ConversationItem::doParticipantsMatch(const ConversationItem& other) const
{
    if (participants_.size() != other.participants_.size())
    {
        return false;
    }
    if (participants_.size() == 1)
    {
        return participants_.front() == other.participants_.front();
    }
    Participants mine(participants_);
    Participants theirs(other.participants_);
    insertionSort(mine);
    insertionSort(theirs);
    return std::equal(mine.begin(), mine.end(), theirs.begin());
}

std::vector<ConversationParticipant> ConversationItem::getParticipantsCopy() const
{
    return {participants_.begin(), participants_.end()};
}

std::string ConversationItem::toString() const
{
    return participants_.empty() ? "no participants" : participants_.front().toString();
}

std::string ConversationItem::formatLocalTime() const
{
    const std::time_t time = timeStampUTC();
    std::tm local{};
    localtime_r(&time, &local);
    char text[100];
    std::snprintf(text, sizeof text, "%02d:%02d %02d/%02d", local.tm_hour, local.tm_min, local.tm_mday,
                  makeZeroBasedMonthValueOneBased(local));
    return text;
}

int ConversationItem::makeZeroBasedMonthValueOneBased(const std::tm& time)
{
    return time.tm_mon + 1;
}

bool ConversationItem::areGroupPickupConversationItems(const ConversationItem& other) const
{
    return isIncomingGroupPickup() && other.isConnectedGroupPickup() && callId_.view() == GROUP_PICKUP_CALL_ID;
}

bool ConversationItem::lessThanConsideringTime(const ConversationItem& other, long time, long otherTime) const
{
    return precedes(*this, other, time, otherTime);
}

bool ConversationItem::lessThanOtherConsideringModificationTime(const ConversationItem& other) const
{
    return precedes(*this, other, modificationTimeStampUTC(), other.modificationTimeStampUTC());
}

bool ConversationItem::lessThanOtherConsideringCreationTime(const ConversationItem& other) const
{
    return precedes(*this, other, timeStampUTC(), other.timeStampUTC());
}

bool ConversationItem::operator<(const ConversationItem& other) const
{
    return lessThanOtherConsideringCreationTime(other);
}

void ConversationItem::extractTimeAndDateFromJournalServiceISO8601String(const std::string& text)
{
    timeAndDate_.assign(text.data(), std::min(text.size(), timeAndDate_.max_size()));
    timeStamp_ = extractUTCTimeTFromJournalServiceISO8601String(text);
}

long ConversationItem::extractUTCTimeTFromJournalServiceISO8601String(const std::string& text)
{
    if (text.empty())
    {
        return 0;
    }
    if (const auto instant = parseIso8601(text))
    {
        return *instant;
    }
    try
    {
        throwIso8601Error(text);
    }
    catch (const std::exception& e)
    {
        boostExceptionThrown(e);
    }
    return 0;
}
} // namespace ConversationAPI
