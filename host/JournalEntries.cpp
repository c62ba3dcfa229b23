#include "host/internal/JournalEntries.h"

#include "platform/Logging.h"

#include <algorithm>
#include <ctime>
#include <iterator>
#include <limits>

namespace Host
{
namespace
{
using Info = MissedCallItem::MissedCallInfo;

constexpr const char* JOURNAL_ENTRIES_LOG_FILE = "./host/JournalEntries";
constexpr std::int64_t UNREADABLE = std::numeric_limits<std::int64_t>::min(); // older than all others

/** The zone may be absent, and is then UTC, as it is for whoever shows the call. */
std::int64_t instantOf(const std::string& iso8601)
{
    std::tm time{};
    const char* zone = strptime(iso8601.c_str(), "%Y-%m-%dT%H:%M:%S", &time);
    if (zone == nullptr)
    {
        return UNREADABLE;
    }
    std::tm offset{};
    const bool hasZone = strptime(zone, "%z", &offset) != nullptr;
    return timegm(&time) - (hasZone ? offset.tm_gmtoff : 0);
}

const char* nameOf(JournalCall::Kind kind)
{
    switch (kind)
    {
    case JournalCall::DIALLED:
        return "dialled";
    case JournalCall::RECEIVED:
        return "received";
    case JournalCall::FORWARDED:
        return "forwarded";
    case JournalCall::MISSED:
        break;
    }
    return "missed";
}

bool isSame(const Info& one, const Info& other)
{
    return one.getCallTime() == other.getCallTime() && one.getRemoteNumber() == other.getRemoteNumber() &&
           one.getNumberType() == other.getNumberType() && one.getDuration() == other.getDuration() &&
           one.getRedirectingNumber() == other.getRedirectingNumber() &&
           one.getRedirectingFirstName() == other.getRedirectingFirstName() &&
           one.getRedirectingLastName() == other.getRedirectingLastName() &&
           one.getRedirectingNumberType() == other.getRedirectingNumberType() &&
           one.getAnswered() == other.getAnswered() && one.getGroupName() == other.getGroupName() &&
           one.getGroupNumber() == other.getGroupNumber();
}

/** Names do not count, somebody else may have told another name of the same call; nor does who has seen it. */
bool isSame(const JournalEntry::Call& one, const JournalEntry::Call& other)
{
    return one.instant == other.instant && isSame(one.call.info, other.call.info);
}

bool isEqual(const JournalEntry::Call& one, const JournalEntry::Call& other)
{
    return isSame(one, other) && one.call.firstName == other.call.firstName && one.call.surname == other.call.surname &&
           one.call.info.getViewed() == other.call.info.getViewed();
}

bool isEqual(const JournalEntry& one, const JournalEntry& other)
{
    return std::equal(one.calls.begin(), one.calls.end(), other.calls.begin(), other.calls.end(),
                      [](const auto& call, const auto& otherCall) { return isEqual(call, otherCall); });
}

bool isOlder(const JournalEntry::Call& one, const JournalEntry::Call& other)
{
    return one.instant < other.instant;
}

bool isNewer(const JournalEntry* one, const JournalEntry* other)
{
    const std::int64_t instant = one->calls.back().instant;
    const std::int64_t otherInstant = other->calls.back().instant;
    return instant != otherInstant ? instant > otherInstant : one->id < other->id;
}
} // namespace

JournalEntry::Call::Call(JournalCall told) : call(std::move(told)), instant(instantOf(call.info.getCallTime())) {}

const JournalCall& JournalEntry::callWithName() const
{
    const auto found =
        std::find_if(calls.rbegin(), calls.rend(),
                     [](const Call& each) { return !each.call.firstName.empty() || !each.call.surname.empty(); });
    return found != calls.rend() ? found->call : calls.back().call;
}

bool JournalEntry::isViewed() const
{
    return std::all_of(calls.begin(), calls.end(), [](const Call& each) { return each.call.info.getViewed(); });
}

JournalEntries::JournalEntries(const JournalLimits& limits) : limits_(limits)
{
    limits_.callsPerEntry = std::max<std::size_t>(limits_.callsPerEntry, 1);
    limits_.entriesPerKind = std::max<std::size_t>(limits_.entriesPerKind, 1);
}

/** What follows the kind's name tells a number from a name that looks like one. */
std::string JournalEntries::entryId(const JournalCall& call)
{
    const std::string kind = nameOf(call.kind);
    const std::string& number = call.info.getRemoteNumber();
    if (!number.empty())
    {
        return kind + "-" + number;
    }
    const bool hasBoth = !call.firstName.empty() && !call.surname.empty();
    return kind + ":" + call.firstName + (hasBoth ? " " : "") + call.surname;
}

void JournalEntries::load(std::vector<JournalEntry> entries)
{
    for (JournalEntry& entry : entries)
    {
        std::stable_sort(entry.calls.begin(), entry.calls.end(), isOlder);
        std::string id = entry.id;
        entries_.insert_or_assign(std::move(id), std::move(entry));
    }
}

JournalEntries::Changes JournalEntries::add(const JournalCall& call)
{
    const std::string id = entryId(call);
    const auto [place, isNew] = entries_.try_emplace(id);
    JournalEntry& entry = place->second;
    JournalEntry::Call timed(call);
    if (timed.instant == UNREADABLE)
    {
        logAppOrv("Host", JOURNAL_ENTRIES_LOG_FILE, 2, __LINE__, "A call of the journal has no readable time: '%s'",
                  call.info.getCallTime().c_str());
    }
    if (isNew)
    {
        entry.id = id;
        entry.kind = call.kind;
    }
    if (!insert(entry, std::move(timed)))
    {
        return {};
    }

    Changes changes;
    changes.push_back({isNew ? JournalServiceObserverIfc::ADDED : JournalServiceObserverIfc::UPDATED, entry});
    if (isNew)
    {
        for (JournalEntry& dropped : dropSurplus(call.kind))
        {
            changes.push_back({JournalServiceObserverIfc::DELETED, std::move(dropped)});
        }
    }
    if (entries_.count(id) == 0) // older than all that is kept: for everybody else, it was never there
    {
        const auto isOfVainOne = [&id](const JournalChange& change) { return change.entry.id == id; };
        changes.erase(std::remove_if(changes.begin(), changes.end(), isOfVainOne), changes.end());
    }
    return changes;
}

/** Whether the entry has one more call, or another one. Of calls of one moment the one that came last is newest. */
bool JournalEntries::insert(JournalEntry& entry, JournalEntry::Call call) const
{
    auto& calls = entry.calls;
    const auto [from, to] = std::equal_range(calls.begin(), calls.end(), call, isOlder);
    const bool isKnown = std::any_of(from, to, [&call](const auto& known) { return isSame(known, call); });
    const bool isFull = calls.size() >= limits_.callsPerEntry;
    if (isKnown || (isFull && to == calls.begin()))
    {
        return false;
    }
    calls.insert(to, std::move(call));
    if (isFull)
    {
        calls.erase(calls.begin());
    }
    return true;
}

/** Takes out the entries that are too many, oldest last. */
std::vector<JournalEntry> JournalEntries::dropSurplus(JournalCall::Kind kind)
{
    std::vector<JournalEntry> dropped;
    const std::vector<const JournalEntry*> entries = entriesOf(kind);
    for (std::size_t i = limits_.entriesPerKind; i < entries.size(); ++i)
    {
        dropped.push_back(std::move(entries_.extract(entries[i]->id).mapped()));
    }
    return dropped;
}

JournalEntries::Changes JournalEntries::remove(const std::set<std::string>& entryIds)
{
    Changes changes;
    for (const std::string& id : entryIds)
    {
        if (auto entry = entries_.extract(id))
        {
            changes.push_back({JournalServiceObserverIfc::DELETED, std::move(entry.mapped())});
        }
    }
    return changes;
}

JournalEntries::Changes JournalEntries::removeAll()
{
    Changes changes;
    for (auto& [id, entry] : entries_)
    {
        changes.push_back({JournalServiceObserverIfc::DELETED, std::move(entry)});
    }
    entries_.clear();
    return changes;
}

JournalEntries::Changes JournalEntries::markViewed(const std::set<std::string>& entryIds)
{
    Changes changes;
    for (const std::string& id : entryIds)
    {
        const auto found = entries_.find(id);
        if (found != entries_.end() && found->second.kind == JournalCall::MISSED && !found->second.isViewed())
        {
            for (JournalEntry::Call& each : found->second.calls)
            {
                each.call.info.setViewed(true);
            }
            changes.push_back({JournalServiceObserverIfc::UPDATED, found->second});
        }
    }
    return changes;
}

JournalEntries::Changes JournalEntries::changesSince(const JournalEntries& before) const
{
    Changes changes;
    for (const auto& [id, entry] : entries_)
    {
        const JournalEntry* old = before.find(id);
        if (old == nullptr || !isEqual(*old, entry))
        {
            changes.push_back(
                {old == nullptr ? JournalServiceObserverIfc::ADDED : JournalServiceObserverIfc::UPDATED, entry});
        }
    }
    for (const auto& [id, entry] : before.entries_)
    {
        if (find(id) == nullptr)
        {
            changes.push_back({JournalServiceObserverIfc::DELETED, entry});
        }
    }
    return changes;
}

const JournalEntry* JournalEntries::find(const std::string& entryId) const
{
    const auto found = entries_.find(entryId);
    return found != entries_.end() ? &found->second : nullptr;
}

std::vector<const JournalEntry*> JournalEntries::entriesOf(JournalCall::Kind kind) const
{
    std::vector<const JournalEntry*> entries;
    for (const auto& [id, entry] : entries_)
    {
        if (entry.kind == kind)
        {
            entries.push_back(&entry);
        }
    }
    std::sort(entries.begin(), entries.end(), isNewer);
    return entries;
}

std::vector<JournalCall> JournalEntries::calls() const
{
    std::vector<JournalEntry::Call> all;
    for (const auto& [id, entry] : entries_)
    {
        all.insert(all.end(), entry.calls.begin(), entry.calls.end());
    }
    std::stable_sort(all.begin(), all.end(), isOlder);
    std::vector<JournalCall> calls;
    calls.reserve(all.size());
    std::transform(all.begin(), all.end(), std::back_inserter(calls), [](auto& call) { return std::move(call.call); });
    return calls;
}
} // namespace Host
