#include "host/NetworkCallLog.h"

#include "platform/Logging.h"

#include <algorithm>

namespace Host
{
namespace
{
constexpr const char* NETWORK_CALLS_LOG_FILE = "./host/NetworkCallLog";

using Kind = NetworkCallLogEntry::Kind;

const char* typeOf(Kind kind)
{
    switch (kind)
    {
    case NetworkCallLogEntry::PLACED:
        return "Placed";
    case NetworkCallLogEntry::MISSED:
        return "Missed";
    case NetworkCallLogEntry::RECEIVED:
        return "Received";
    case NetworkCallLogEntry::PERSONAL:
        return "Personal";
    case NetworkCallLogEntry::GROUP_DIRECTORY:
        return "GroupDirectory";
    case NetworkCallLogEntry::ENTERPRISE_DIRECTORY:
        return "EnterpriseDirectory";
    case NetworkCallLogEntry::GROUP_COMMON:
        return "GroupCommon";
    case NetworkCallLogEntry::ENTERPRISE_COMMON:
        return "EnterpriseCommon";
    }
    return "";
}

/** Readers take these contacts' names apart at the '#', and others' for one text. */
bool hasNamesApart(Kind kind)
{
    return kind == NetworkCallLogEntry::GROUP_DIRECTORY || kind == NetworkCallLogEntry::ENTERPRISE_DIRECTORY;
}

/** What is in the line: both names parted by '#', and never nothing, for which the line has no form. */
std::string nameOf(const NetworkCallLogEntry& entry)
{
    if (entry.firstName.empty() && entry.lastName.empty())
    {
        return entry.number;
    }
    const bool needsParting = !entry.firstName.empty() || hasNamesApart(entry.kind);
    return entry.firstName + (needsParting && !entry.lastName.empty() ? "#" : "") + entry.lastName;
}

std::string lineOf(const NetworkCallLogEntry& entry)
{
    return "{{" + entry.time + "}" + entry.number + ":" + nameOf(entry) + ":{" + entry.callLogId +
           "}:" + typeOf(entry.kind) + ":" + (entry.secondNumber.empty() ? "*" : entry.secondNumber) + "}}";
}

/** Where the service keeps the entry. */
std::string pathOf(const NetworkCallLogEntry& entry)
{
    return std::string("/") + typeOf(entry.kind) + "/" + entry.callLogId;
}

auto isOfKind(Kind kind)
{
    return [kind](const NetworkCallLogEntry& entry) { return entry.kind == kind; };
}

auto isEntry(Kind kind, const std::string& callLogId)
{
    return [kind, &callLogId](const NetworkCallLogEntry& entry)
    { return entry.kind == kind && entry.callLogId == callLogId; };
}
} // namespace

NetworkCallLog::NetworkCallLog(std::size_t mostEntriesOfAKind)
    : mostEntriesOfAKind_(std::max<std::size_t>(mostEntriesOfAKind, 1))
{
}

void NetworkCallLog::setObserver(Observer observer)
{
    observer_ = std::move(observer);
}

bool NetworkCallLog::add(const NetworkCallLogEntry& entry)
{
    if (entry.callLogId.empty())
    {
        logAppOrv("Host", NETWORK_CALLS_LOG_FILE, 2, __LINE__,
                  "An entry of the network's call log has no id, number '%s'", entry.number.c_str());
        return false;
    }
    const auto same = std::find_if(entries_.begin(), entries_.end(), isEntry(entry.kind, entry.callLogId));
    if (same != entries_.end())
    {
        *same = entry;
    }
    else
    {
        makeRoomFor(entry.kind);
        entries_.push_back(entry);
    }
    tellObserver(entry.kind);
    return true;
}

void NetworkCallLog::makeRoomFor(Kind kind)
{
    if (numberOf(kind) >= mostEntriesOfAKind_)
    {
        entries_.erase(std::find_if(entries_.begin(), entries_.end(), isOfKind(kind)));
    }
}

bool NetworkCallLog::remove(Kind kind, const std::string& callLogId)
{
    const auto found = std::find_if(entries_.begin(), entries_.end(), isEntry(kind, callLogId));
    if (found == entries_.end())
    {
        return false;
    }
    erase(found);
    return true;
}

void NetworkCallLog::erase(const Entries::const_iterator& entry)
{
    const Kind kind = entry->kind;
    entries_.erase(entry);
    tellObserver(kind);
}

std::vector<std::string> NetworkCallLog::entries()
{
    std::vector<std::string> lines;
    lines.reserve(entries_.size());
    std::transform(entries_.begin(), entries_.end(), std::back_inserter(lines), lineOf);
    return lines;
}

/** Of calls alone: the service's directories are not the telephone's to change. */
void NetworkCallLog::deleteCallLogEntry(const std::string& path)
{
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&path](const NetworkCallLogEntry& entry)
                                    { return NetworkCallLogEntry::isCall(entry.kind) && pathOf(entry) == path; });
    if (found != entries_.end())
    {
        erase(found);
        return;
    }
    logAppOrv("Host", NETWORK_CALLS_LOG_FILE, 2, __LINE__, "The network's call log has no entry '%s'", path.c_str());
}

std::size_t NetworkCallLog::numberOf(Kind kind) const
{
    return static_cast<std::size_t>(std::count_if(entries_.begin(), entries_.end(), isOfKind(kind)));
}

/** From a copy: the observer may set another one. */
void NetworkCallLog::tellObserver(Kind kind)
{
    if (const Observer tell = observer_)
    {
        tell({std::to_string(kind) + ":" + std::to_string(numberOf(kind))}, entries());
    }
}
} // namespace Host
