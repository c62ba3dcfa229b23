#include "CallHistory.h"

#include "ConversationAPI/ConversationItemFactory.h"
#include "ConversationAPI/ConversationItemSourceObserverIfc.h"
#include "ConversationAPI/DialledCallConversationItem.h"
#include "ConversationAPI/DurationStringFormatter.h"
#include "ConversationAPI/ForwardedCallConversationItem.h"
#include "ConversationAPI/MissedCallConversationItem.h"
#include "ConversationAPI/ReceivedCallConversationItem.h"
#include "Moment.h"
#include "host/Clock.h"

#include <algorithm>
#include <set>

namespace Deskphone
{
using ConversationAPI::ConversationItem;
using ConversationAPI::DialledCallConversationItem;
using ConversationAPI::ForwardedCallConversationItem;
using ConversationAPI::MissedCallConversationItem;
using ConversationAPI::ReceivedCallConversationItem;

namespace
{
constexpr int LOCAL_JOURNAL = 1;

std::string durationOf(const HistoryCall& call)
{
    return ConversationAPI::DurationStringFormatter::createDurationStr(1000 * call.durationSeconds);
}

/** What only a missed call has. */
void complete(MissedCallConversationItem& item, const HistoryCall& call)
{
    item.setForwardInfo(ConversationItem::FORWARDED_TO_US);
    item.setAnswerStatus(call.answeredElsewhere);
    item.setGroupStatus(!call.groupNumber.empty());
    if (item.isGroupCall())
    {
        item.setGroupName(call.groupName);
        item.setGroupNumber(call.groupNumber);
    }
    item.setViewed(call.seen);
}

void complete(ReceivedCallConversationItem& item, const HistoryCall& call)
{
    item.setForwardInfo(ConversationItem::FORWARDED_TO_US);
    item.setDuration(durationOf(call));
}

void complete(DialledCallConversationItem& item, const HistoryCall& call)
{
    item.setForwardInfo(ConversationItem::DIALLED_AND_FORWARDED);
    item.setDuration(durationOf(call));
}

void complete(ForwardedCallConversationItem& item, const HistoryCall& call)
{
    item.setForwardInfo(ConversationItem::FORWARDED_AWAY);
    item.setDuration(durationOf(call));
}

/** The number in the slot of its type; a number without a type counts as the first one at work. */
void setNumber(ConversationItem& item, const CallPartyIdentifier& party)
{
    const auto type = party.getPhoneNumberType();
    const auto ifType = [&](bool matches) { return matches ? party.getNumber() : std::string(); };
    const bool isFirstAtWork = type == CallPartyIdentifier::NO_ICON || type == CallPartyIdentifier::WORK_1;
    item.setPhoneNumbers(ifType(isFirstAtWork), ifType(type == CallPartyIdentifier::WORK_2),
                         ifType(type == CallPartyIdentifier::MOBILE), ifType(type == CallPartyIdentifier::HOME));
    item.setLastPhoneNumberType(static_cast<NumberType::NT>(type));
}

/** An item of the factory, made complete by what only its kind knows. */
template <typename Item>
ConversationItem* completed(ConversationItem* made, const HistoryCall& call)
{
    complete(static_cast<Item&>(*made), call);
    setNumber(*made, call.party);
    if (call.forwardedParty)
    {
        made->setForwardedCallParty(*call.forwardedParty);
    }
    else
    {
        made->setForwardInfo(ConversationItem::NO_FORWARD_INFO);
    }
    made->setEntryId(call.entryId);
    return made;
}
} // namespace

CallHistory::CallHistory(ConversationAPI::ConversationItemFactory& itemFactory)
    : itemFactory_(itemFactory), voicemail_(&itemFactory, &Host::currentTime)
{
}

void CallHistory::add(const HistoryCall& call)
{
    calls_.push_back(call);
    if (observer_ != nullptr)
    {
        observer_->newConversationItem(makeItem(call));
    }
}

void CallHistory::remove(const std::string& entryId)
{
    const std::size_t before = calls_.size();
    deleteCalls({entryId});
    if (calls_.size() != before)
    {
        reload();
    }
}

void CallHistory::reload()
{
    if (observer_ != nullptr)
    {
        observer_->conversationItemsChanged();
    }
}

ConversationItem* CallHistory::makeItem(const HistoryCall& call) const
{
    const std::string time = formatMoment(call.time);
    const std::string& number = call.party.getNumber();
    const std::string& first = call.party.getFirstName();
    const std::string& last = call.party.getSurname();
    switch (call.kind)
    {
    case HistoryCall::DIALLED:
        return completed<DialledCallConversationItem>(
            itemFactory_.getDialledCallConversationItem(time, number, first, last), call);
    case HistoryCall::RECEIVED:
        return completed<ReceivedCallConversationItem>(
            itemFactory_.getReceivedCallConversationItem(time, number, first, last), call);
    case HistoryCall::FORWARDED:
        return completed<ForwardedCallConversationItem>(
            itemFactory_.getForwardedCallConversationItem(time, number, first, last), call);
    default:
        return completed<MissedCallConversationItem>(
            itemFactory_.getMissedCallConversationItem(time, number, first, last), call);
    }
}

std::vector<ConversationItem*> CallHistory::getConversationItems()
{
    std::vector<ConversationItem*> items;
    for (const HistoryCall& call : calls_)
    {
        items.push_back(makeItem(call));
    }
    addVoicemailTo(items);
    return items;
}

/** The mailbox stands in the history once, as long as the telephone has one. */
void CallHistory::addVoicemailTo(std::vector<ConversationItem*>& items)
{
    const bool isThere =
        std::any_of(items.begin(), items.end(), [](const ConversationItem* item) { return item->isVoiceMail(); });
    if (isThere || !itemFactory_.voiceMailNumberIsConfigured())
    {
        return;
    }
    if (ConversationItem* voicemail = voicemail_.cachedVoiceMailConversationItem(items))
    {
        items.push_back(voicemail);
    }
}

void CallHistory::reloadCalls(const std::vector<std::string>& entryIds)
{
    const std::vector<HistoryCall> calls = calls_;
    for (const std::string& id : std::set<std::string>(entryIds.begin(), entryIds.end()))
    {
        for (const HistoryCall& call : calls)
        {
            if (call.entryId == id && observer_ != nullptr)
            {
                observer_->newConversationItem(makeItem(call));
            }
        }
    }
}

void CallHistory::deleteAllCalls()
{
    calls_.clear();
}

void CallHistory::deleteCalls(const std::vector<std::string>& entryIds)
{
    const std::set<std::string> ids(entryIds.begin(), entryIds.end());
    calls_.erase(std::remove_if(calls_.begin(), calls_.end(),
                                [&ids](const HistoryCall& call) { return ids.count(call.entryId) != 0; }),
                 calls_.end());
}

void CallHistory::setObserver(ConversationAPI::ConversationItemSourceObserverIfc* observer)
{
    observer_ = observer;
    voicemail_.setObserver(observer);
}

void CallHistory::clearObserver()
{
    setObserver(nullptr);
}

int CallHistory::getItemSourceType()
{
    return LOCAL_JOURNAL;
}

bool CallHistory::ageAllMissedCalls(const std::vector<std::string>& entryIds)
{
    const std::set<std::string> ids(entryIds.begin(), entryIds.end());
    for (HistoryCall& call : calls_)
    {
        call.seen = call.seen || ids.count(call.entryId) != 0;
    }
    return true;
}
} // namespace Deskphone
