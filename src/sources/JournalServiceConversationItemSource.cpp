#include "ConversationAPI/JournalServiceConversationItemSource.h"

#include "ConversationAPI/ContactNumbers.h"
#include "ConversationAPI/ConversationItemFactory.h"
#include "ConversationAPI/ConversationItemSourceObserverIfc.h"
#include "ConversationAPI/DialledCallConversationItem.h"
#include "ConversationAPI/ForwardedCallConversationItem.h"
#include "ConversationAPI/JournalServiceUtils.h"
#include "ConversationAPI/MissedCallConversationItem.h"
#include "ConversationAPI/ReceivedCallConversationItem.h"
#include "Log.h"
#include "platform/DigitAnalysisServiceIfc.h"

#include <algorithm>
#include <memory>
#include <set>

namespace ConversationAPI
{
namespace
{
constexpr const char* JOURNAL_SOURCE_LOG_FILE = "./src/JournalServiceConversationItemSource";

using MakeItem = ConversationItem* (ConversationItemFactory::*)(const std::string& timeAndDate,
                                                                const std::string& number, const std::string& firstName,
                                                                const std::string& lastName);

template <typename ItemOfKind, MakeItem MAKE_ITEM, ConversationItem::forwardInfo REDIRECTED_AS>
struct KindWith
{
    using Item = ItemOfKind;
    static constexpr MakeItem MAKE = MAKE_ITEM;
    static constexpr ConversationItem::forwardInfo REDIRECTED = REDIRECTED_AS;
};

/** What becomes of the calls of a kind of journal entry. */
template <typename Record>
struct Kind;

template <>
struct Kind<MissedCallItem>
    : KindWith<MissedCallConversationItem, &ConversationItemFactory::getMissedCallConversationItem,
               ConversationItem::FORWARDED_TO_US>
{
};

template <>
struct Kind<ReceivedCallItem>
    : KindWith<ReceivedCallConversationItem, &ConversationItemFactory::getReceivedCallConversationItem,
               ConversationItem::FORWARDED_TO_US>
{
};

template <>
struct Kind<DialledCallItem>
    : KindWith<DialledCallConversationItem, &ConversationItemFactory::getDialledCallConversationItem,
               ConversationItem::DIALLED_AND_FORWARDED>
{
};

template <>
struct Kind<ForwardedCallItem>
    : KindWith<ForwardedCallConversationItem, &ConversationItemFactory::getForwardedCallConversationItem,
               ConversationItem::FORWARDED_AWAY>
{
};

/** What only a missed call has. */
void complete(MissedCallConversationItem& item, const MissedCallItem& record,
              const MissedCallItem::MissedCallInfo& call, JournalServiceConversationItemSource& source)
{
    item.setAnswerStatus(call.getAnswered());
    item.setGroupStatus(!call.getGroupNumber().empty());
    if (item.isGroupCall())
    {
        item.setGroupName(call.getGroupName());
        item.setGroupNumber(call.getGroupNumber());
    }
    item.setViewed(record.getViewed() || call.getViewed()); // one more missed call leaves those before it seen
    item.setCallBackForWhenViewed(&source);
}

void complete(ForwardedCallConversationItem& item, const ForwardedCallItem&, const CallInfo& call,
              JournalServiceConversationItemSource&)
{
    item.setDuration(JournalServiceUtils::createDurationStr(call.getDuration()));
}

/** What received and dialled calls have. */
template <typename Item>
void complete(Item& item, const CallItem&, const CallInfo& call, JournalServiceConversationItemSource&)
{
    item.setDuration(JournalServiceUtils::createDurationStr(call.getDuration()));
    item.setHistoryDuration(JournalServiceUtils::createHistoryDurationStr(call.getDuration()));
}

CallPartyIdentifier redirectingPartyOf(const CallInfo& call)
{
    CallPartyIdentifier party;
    party.setDetails(call.getRedirectingFirstName(), call.getRedirectingLastName(), call.getRedirectingNumber(),
                     JournalServiceUtils::convertIcon(call.getRedirectingNumberType()), "", false);
    return party;
}

std::set<std::string> distinct(const std::vector<std::string>& entryIds)
{
    return {entryIds.begin(), entryIds.end()};
}
} // namespace

JournalServiceConversationItemSource::JournalServiceConversationItemSource(JournalServiceIfc* journal,
                                                                           ConversationItemFactory* factory,
                                                                           DigitAnalysisServiceIfc* digitAnalysis,
                                                                           ActiveCall::TimeFunction clock)
    : journalService_(journal), voicemailHandler_(factory, clock), itemFactory_(factory), digitAnalysis_(digitAnalysis)
{
    if (!itemFactory_)
    {
        CONVERSATION_LOG(JOURNAL_SOURCE_LOG_FILE, 2, "No item factory: calls of the journal are not shown");
    }
}

JournalServiceConversationItemSource::~JournalServiceConversationItemSource() = default;

std::vector<ConversationItem*> JournalServiceConversationItemSource::getConversationItems()
{
    std::vector<ConversationItem*> items;
    if (!journalService_ || !journalServiceSubscribed_)
    {
        return items;
    }
    loadCalls<DialledCallItem>(items);
    loadCalls<ReceivedCallItem>(items);
    loadCalls<MissedCallItem>(items);
    loadCalls<ForwardedCallItem>(items);
    if (itemFactory_ && itemFactory_->voiceMailNumberIsConfigured())
    {
        if (ConversationItem* mailbox = createVoiceMailItemUnlessItExists(items))
        {
            items.push_back(mailbox);
        }
    }
    return items;
}

template <typename Record>
void JournalServiceConversationItemSource::loadCalls(std::vector<ConversationItem*>& items)
{
    std::deque<Record> records;
    JournalServiceUtils::getCallList(journalService_, records);
    for (const Record& record : records)
    {
        const std::vector<ConversationItem*> ofRecord = createConversationItems(record);
        items.insert(items.end(), ofRecord.begin(), ofRecord.end());
    }
}

template <typename Record>
std::vector<ConversationItem*> JournalServiceConversationItemSource::createConversationItems(const Record& record)
{
    std::vector<ConversationItem*> items;
    for (const auto& call : JournalServiceUtils::getCallInfoList(record))
    {
        if (ConversationItem* item = createItemOrMailbox(record, call))
        {
            items.push_back(item);
        }
    }
    return items;
}

/** The digit analysis learns of the number, but it is the journal's own spelling that tells the mailbox. */
template <typename Record, typename Call>
ConversationItem* JournalServiceConversationItemSource::createItemOrMailbox(const Record& record, const Call& call)
{
    if (digitAnalysis_)
    {
        digitAnalysis_->analyseNumber(call.getRemoteNumber());
    }
    ConversationItem* item = isMailbox(call.getRemoteNumber())
                                 ? voicemailHandler_.createVoiceMailConversationItem(call.getCallTime())
                                 : createItem(record, call);
    if (item)
    {
        item->setEntryId(record.getEntryId());
    }
    return item;
}

bool JournalServiceConversationItemSource::isMailbox(const std::string& number) const
{
    return itemFactory_ && itemFactory_->matchesVoiceMailNumber(number);
}

template <typename Record, typename Call>
ConversationItem* JournalServiceConversationItemSource::createItem(const Record& record, const Call& call)
{
    if (!itemFactory_)
    {
        return nullptr;
    }
    ConversationItem* item = (itemFactory_->*Kind<Record>::MAKE)(call.getCallTime(), call.getRemoteNumber(),
                                                                 record.getFirstname(), record.getSurname());
    saveNumberToConversation(item, call.getRemoteNumber(), call.getNumberType());
    if (!call.getRedirectingNumber().empty())
    {
        item->setForwardedCallParty(redirectingPartyOf(call));
        item->setForwardInfo(Kind<Record>::REDIRECTED);
    }
    complete(static_cast<typename Kind<Record>::Item&>(*item), record, call, *this);
    return item;
}

template <typename Record>
ConversationItem* JournalServiceConversationItemSource::createItemAt(const Record& record, unsigned index)
{
    const auto calls = JournalServiceUtils::getCallInfoList(record);
    return index < calls.size() ? createItem(record, calls[index]) : nullptr;
}

ConversationItem* JournalServiceConversationItemSource::createConversationItemFromCallItem(const MissedCallItem& record,
                                                                                           unsigned index)
{
    return createItemAt(record, index);
}

ConversationItem*
JournalServiceConversationItemSource::createConversationItemFromCallItem(const ReceivedCallItem& record, unsigned index)
{
    return createItemAt(record, index);
}

ConversationItem*
JournalServiceConversationItemSource::createConversationItemFromCallItem(const DialledCallItem& record, unsigned index)
{
    return createItemAt(record, index);
}

ConversationItem*
JournalServiceConversationItemSource::createConversationItemFromCallItem(const ForwardedCallItem& record,
                                                                         unsigned index)
{
    return createItemAt(record, index);
}

void JournalServiceConversationItemSource::saveNumberToConversation(ConversationItem* item, const std::string& number,
                                                                    NumberType::NT type)
{
    if (!item)
    {
        return;
    }
    const ContactNumberSlot ofType = slotForNumberType(JournalServiceUtils::convertIcon(type));
    ContactNumbers numbers;
    numbers[ofType == CONTACT_NUMBER_SLOTS ? WORK_1_SLOT : ofType] = number;
    item->setPhoneNumbers(numbers[WORK_1_SLOT], numbers[WORK_2_SLOT], numbers[MOBILE_SLOT], numbers[HOME_SLOT]);
    item->setLastPhoneNumberType(type);
}

ConversationItem*
JournalServiceConversationItemSource::createVoiceMailItemUnlessItExists(const std::vector<ConversationItem*>& items)
{
    const bool exists =
        std::any_of(items.begin(), items.end(),
                    [](const ConversationItem* item) { return item->getState() == ConversationItemState::VOICEMAIL; });
    return exists ? nullptr : voicemailHandler_.cachedVoiceMailConversationItem(items);
}

void JournalServiceConversationItemSource::reloadCalls(const std::vector<std::string>& entryIds)
{
    const std::set<std::string> entrySet = distinct(entryIds);
    CONVERSATION_LOG(JOURNAL_SOURCE_LOG_FILE, 5, "reloadCalls() - size of entrySet : [%d]",
                     static_cast<int>(entrySet.size()));
    for (const std::string& entryId : entrySet)
    {
        if (journalService_ && !entryId.empty())
        {
            reloadEntry(entryId);
        }
    }
}

/** A kind that has no entry of this id leaves its record empty. */
void JournalServiceConversationItemSource::reloadEntry(const std::string& entryId)
{
    DialledCallItem dialled;
    ReceivedCallItem received;
    MissedCallItem missed;
    ForwardedCallItem forwarded;
    journalService_->getCall(entryId, dialled);
    journalService_->getCall(entryId, received);
    journalService_->getCall(entryId, missed);
    journalService_->getCall(entryId, forwarded);
    notifyObserversForNewConversationItems(createConversationItems(dialled));
    notifyObserversForNewConversationItems(createConversationItems(received));
    notifyObserversForNewConversationItems(createConversationItems(missed));
    notifyObserversForNewConversationItems(createConversationItems(forwarded));
}

void JournalServiceConversationItemSource::deleteAllCalls()
{
    if (journalService_)
    {
        journalService_->deleteAllEntries();
    }
}

void JournalServiceConversationItemSource::deleteCalls(const std::vector<std::string>& entryIds)
{
    if (journalService_)
    {
        journalService_->deleteEntries(distinct(entryIds));
    }
}

void JournalServiceConversationItemSource::setObserver(ConversationItemSourceObserverIfc* observer)
{
    observer_ = observer;
    voicemailHandler_.setObserver(observer);
}

void JournalServiceConversationItemSource::clearObserver()
{
    setObserver(nullptr);
}

int JournalServiceConversationItemSource::getItemSourceType()
{
    return LOCAL_JOURNAL;
}

bool JournalServiceConversationItemSource::ageAllMissedCalls(const std::vector<std::string>& entryIds)
{
    return journalService_ && journalService_->ageMissedCalls(distinct(entryIds));
}

/** The id may be that of an item which goes when the journal tells of the change. */
void JournalServiceConversationItemSource::ageMissedCall(const std::string& entryId)
{
    const std::string id = entryId;
    if (journalService_)
    {
        journalService_->ageMissedCall(id);
    }
}

// NOLINTBEGIN(performance-unnecessary-value-param): the operations are known with these signatures.
void JournalServiceConversationItemSource::missedCallsUpdate(MissedCallItem entry, std::string entryId,
                                                             JournalServiceObserverIfc::ActionType action)
{
    genericCallUpdate(entry, entryId, action);
}

void JournalServiceConversationItemSource::receivedCallsUpdate(ReceivedCallItem entry, std::string entryId,
                                                               JournalServiceObserverIfc::ActionType action)
{
    genericCallUpdate(entry, entryId, action);
}

void JournalServiceConversationItemSource::dialledCallsUpdate(DialledCallItem entry, std::string entryId,
                                                              JournalServiceObserverIfc::ActionType action)
{
    genericCallUpdate(entry, entryId, action);
}

void JournalServiceConversationItemSource::forwardedCallsUpdate(ForwardedCallItem entry, std::string entryId,
                                                                JournalServiceObserverIfc::ActionType action)
{
    genericCallUpdate(entry, entryId, action);
}
// NOLINTEND(performance-unnecessary-value-param)

template <typename Record>
void JournalServiceConversationItemSource::genericCallUpdate(const Record& record, const std::string& entryId,
                                                             JournalServiceObserverIfc::ActionType action)
{
    if (action > JournalServiceObserverIfc::UPDATED || !observer_)
    {
        return;
    }
    const auto calls = JournalServiceUtils::getCallInfoList(record);
    if (calls.empty())
    {
        CONVERSATION_LOG(JOURNAL_SOURCE_LOG_FILE, 2,
                         "genericCallUpdate() - the journal tells of entry '%s', which has no calls", entryId.c_str());
        return;
    }
    notifyObserversForNewConversationItems({createItemOrMailbox(record, calls.front())});
}

void JournalServiceConversationItemSource::setVoiceMailMessagesCount(int count)
{
    voicemailHandler_.setVoiceMailMessagesCount(count);
}

void JournalServiceConversationItemSource::setNoVoiceMailMessageWaiting()
{
    voicemailHandler_.setNoVoiceMailMessageWaiting();
}

void JournalServiceConversationItemSource::notifyObserver()
{
    ++rebuildsAskedFor_;
    if (observer_)
    {
        observer_->conversationItemsChanged();
    }
}

void JournalServiceConversationItemSource::notifyObserversForSubscription()
{
    if (observer_)
    {
        observer_->sourceSubscribed();
    }
}

void JournalServiceConversationItemSource::notifyObserversForNewConversationItems(
    const std::vector<ConversationItem*>& items)
{
    std::vector<std::unique_ptr<ConversationItem>> untold(items.begin(), items.end());
    const unsigned rebuildsBefore = rebuildsAskedFor_;
    for (std::unique_ptr<ConversationItem>& item : untold)
    {
        if (item && observer_ && rebuildsAskedFor_ == rebuildsBefore)
        {
            observer_->newConversationItem(item.release());
        }
    }
}
} // namespace ConversationAPI
