#include "host/Journal.h"

#include "host/internal/JournalDatabase.h"
#include "host/internal/JournalEntries.h"
#include "host/internal/ReportQueue.h"
#include "host/internal/Utf8.h"
#include "host/internal/WriteBehind.h"
#include "platform/Logging.h"
#include "src/Observers.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Host
{
namespace
{
using Info = MissedCallItem::MissedCallInfo;
using Observer = JournalServiceObserverIfc;

constexpr const char* JOURNAL_LOG_FILE = "./host/Journal";
constexpr std::size_t LONGEST_FIELD = 1000;

std::string bounded(const std::string& text)
{
    if (text.size() <= LONGEST_FIELD)
    {
        return text;
    }
    logAppOrv("Host", JOURNAL_LOG_FILE, 3, __LINE__, "A text of %zu bytes is cut for the journal", text.size());
    return cutUtf8(text, LONGEST_FIELD);
}

JournalCall bounded(const JournalCall& call)
{
    JournalCall result = call;
    result.firstName = bounded(call.firstName);
    result.surname = bounded(call.surname);
    result.info.setRemoteNumber(bounded(call.info.getRemoteNumber()));
    result.info.setCallTime(bounded(call.info.getCallTime()));
    result.info.setDuration(bounded(call.info.getDuration()));
    result.info.setRedirectingNumber(bounded(call.info.getRedirectingNumber()));
    result.info.setRedirectingFirstName(bounded(call.info.getRedirectingFirstName()));
    result.info.setRedirectingLastName(bounded(call.info.getRedirectingLastName()));
    result.info.setGroupName(bounded(call.info.getGroupName()));
    result.info.setGroupNumber(bounded(call.info.getGroupNumber()));
    return result;
}

template <typename Record>
constexpr JournalCall::Kind KIND_OF = JournalCall::MISSED;
template <>
constexpr JournalCall::Kind KIND_OF<DialledCallItem> = JournalCall::DIALLED;
template <>
constexpr JournalCall::Kind KIND_OF<ReceivedCallItem> = JournalCall::RECEIVED;
template <>
constexpr JournalCall::Kind KIND_OF<ForwardedCallItem> = JournalCall::FORWARDED;

template <typename CallRecord>
std::vector<CallRecord> newestFirst(const JournalEntry& entry)
{
    std::vector<CallRecord> calls;
    calls.reserve(entry.calls.size());
    std::transform(entry.calls.rbegin(), entry.calls.rend(), std::back_inserter(calls),
                   [](const JournalEntry::Call& each) { return each.call.info; });
    return calls;
}

void fill(const JournalEntry& entry, MissedCallItem& record)
{
    record.setMissedCallInfoList(newestFirst<Info>(entry));
    record.setViewed(entry.isViewed());
}

void fill(const JournalEntry& entry, ReceivedCallItem& record)
{
    record.setReceivedCallInfoList(newestFirst<CallInfo>(entry));
}

void fill(const JournalEntry& entry, DialledCallItem& record)
{
    record.setDialledCallInfoList(newestFirst<CallInfo>(entry));
}

void fill(const JournalEntry& entry, ForwardedCallItem& record)
{
    record.setForwardedCallInfoList(newestFirst<CallInfo>(entry));
}

template <typename Record>
Record recordOf(const JournalEntry& entry)
{
    Record record;
    record.setEntryId(entry.id);
    record.setFirstname(entry.callWithName().firstName);
    record.setSurname(entry.callWithName().surname);
    fill(entry, record);
    return record;
}

void append(JournalEntries::Changes& changes, JournalEntries::Changes more)
{
    std::move(more.begin(), more.end(), std::back_inserter(changes));
}
} // namespace

Journal::Journal(const JournalLimits& limits)
    : limits_(limits), entries_(std::make_unique<JournalEntries>(limits)),
      reports_(std::make_unique<ReportQueue<JournalChange>>())
{
}

Journal::Journal(const std::filesystem::path& file, const JournalLimits& limits) : Journal(limits)
{
    file_ = std::make_unique<WriteBehind<JournalDatabase>>(file, limits.fileSize);
    settle({});
}

Journal::~Journal()
{
    write();
}

void Journal::addObserver(JournalServiceObserverIfc* observer)
{
    ConversationAPI::addOnce(observers_, observer);
}

void Journal::removeObserver(JournalServiceObserverIfc* observer)
{
    ConversationAPI::removeOne(observers_, observer);
}

std::string Journal::addCall(const JournalCall& call)
{
    const JournalCall kept = bounded(call);
    settle(entries_->add(kept));
    return JournalEntries::entryId(kept);
}

std::string Journal::entryId(const JournalCall& call)
{
    return JournalEntries::entryId(call);
}

bool Journal::isStored() const
{
    return !file_ || file_->isUpToDate();
}

bool Journal::store()
{
    settle({});
    return isStored();
}

void Journal::abandon()
{
    if (file_)
    {
        file_->abandon();
    }
}

std::string Journal::problem() const
{
    return file_ ? file_->problem() : std::string();
}

std::vector<JournalCall> Journal::calls() const
{
    return entries_->calls();
}

template <typename Record>
void Journal::appendRecords(std::deque<Record>& records) const
{
    for (const JournalEntry* entry : entries_->entriesOf(KIND_OF<Record>))
    {
        records.push_back(recordOf<Record>(*entry));
    }
}

template <typename Record>
bool Journal::findRecord(const std::string& entryId, Record& record) const
{
    const JournalEntry* entry = entries_->find(entryId);
    if (entry == nullptr || entry->kind != KIND_OF<Record>)
    {
        return false;
    }
    record = recordOf<Record>(*entry);
    return true;
}

void Journal::getCalls(std::deque<MissedCallItem>& entries)
{
    appendRecords(entries);
}

void Journal::getCalls(std::deque<ReceivedCallItem>& entries)
{
    appendRecords(entries);
}

void Journal::getCalls(std::deque<DialledCallItem>& entries)
{
    appendRecords(entries);
}

void Journal::getCalls(std::deque<ForwardedCallItem>& entries)
{
    appendRecords(entries);
}

bool Journal::getCall(const std::string& entryId, MissedCallItem& record)
{
    return findRecord(entryId, record);
}

bool Journal::getCall(const std::string& entryId, ReceivedCallItem& record)
{
    return findRecord(entryId, record);
}

bool Journal::getCall(const std::string& entryId, DialledCallItem& record)
{
    return findRecord(entryId, record);
}

bool Journal::getCall(const std::string& entryId, ForwardedCallItem& record)
{
    return findRecord(entryId, record);
}

void Journal::deleteAllEntries()
{
    if (file_)
    {
        file_->allRemoved();
    }
    settle(entries_->removeAll());
}

void Journal::deleteEntries(const std::set<std::string>& entryIds)
{
    settle(entries_->remove(entryIds));
}

bool Journal::ageMissedCalls(const std::set<std::string>& entryIds)
{
    settle(entries_->markViewed(entryIds));
    return true;
}

void Journal::ageMissedCall(const std::string& entryId)
{
    ageMissedCalls({entryId});
}

/** What follows every change: to be written, then told. */
void Journal::settle(Changes changes)
{
    if (file_)
    {
        for (const JournalChange& change : changes)
        {
            file_->changed(change.entry.id);
        }
        append(changes, write());
        file_->startTimer([this] { settle({}); });
    }
    reports_->report(std::move(changes), [this](const JournalChange& change) { tell(change); });
}

/** Gives what changed because a file was opened. */
Journal::Changes Journal::write()
{
    Changes changes;
    if (file_)
    {
        file_->write(*entries_, [&](std::vector<JournalEntry> stored) { return adopt(std::move(stored), changes); });
    }
    return changes;
}

/** Puts the calls that are known here on top of what the file holds; gives the ids of the entries that it lacks so. */
std::set<std::string> Journal::adopt(std::vector<JournalEntry> stored, Changes& changes)
{
    JournalEntries merged(limits_);
    merged.load(std::move(stored));
    std::set<std::string> differing;
    for (const JournalCall& call : entries_->calls())
    {
        for (const JournalChange& change : merged.add(call))
        {
            differing.insert(change.entry.id);
        }
    }
    std::swap(*entries_, merged);
    if (!observers_.empty())
    {
        append(changes, entries_->changesSince(merged));
    }
    return differing;
}

void Journal::tell(const JournalChange& change)
{
    const auto told = [&entry = change.entry, action = change.action](Observer& observer)
    {
        switch (entry.kind)
        {
        case JournalCall::DIALLED:
            return observer.dialledCallsUpdate(recordOf<DialledCallItem>(entry), entry.id, action);
        case JournalCall::RECEIVED:
            return observer.receivedCallsUpdate(recordOf<ReceivedCallItem>(entry), entry.id, action);
        case JournalCall::MISSED:
            return observer.missedCallsUpdate(recordOf<MissedCallItem>(entry), entry.id, action);
        case JournalCall::FORWARDED:
            return observer.forwardedCallsUpdate(recordOf<ForwardedCallItem>(entry), entry.id, action);
        }
    };
    ConversationAPI::tellEach(observers_, told);
}
} // namespace Host
