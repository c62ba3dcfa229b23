/**
 * The network service's call logs and directories of one user, in memory.
 *
 * It holds so many entries of each kind and no more; a further one takes the place of the oldest of its kind. Texts
 * are handed out as they were given: the service's lines know no escapes, and whoever reads them has to cope with a
 * ':' in a name. UI thread only.
 */
#pragma once

#include "platform/BroadsoftServiceIfc.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace Host
{
struct NetworkCallLogEntry
{
    /** The numbers are those of the directories that observers are told of. */
    enum Kind
    {
        PLACED = 0,
        MISSED = 1,
        RECEIVED = 2,
        PERSONAL = 3,
        GROUP_DIRECTORY = 4,
        ENTERPRISE_DIRECTORY = 5,
        GROUP_COMMON = 6,
        ENTERPRISE_COMMON = 7
    };

    /** Whether it is a call, and no contact of a directory. */
    static constexpr bool isCall(Kind kind) { return kind == PLACED || kind == MISSED || kind == RECEIVED; }

    Kind kind = MISSED;
    std::string callLogId; ///< unique among the entries of a kind
    std::string time;      ///< ISO 8601, "2026-03-05T09:07:00+01:00"
    std::string number;
    std::string firstName; ///< without any name the number stands for it
    std::string lastName;
    std::string secondNumber; ///< of a contact; "" for none
};

class NetworkCallLog final : public BroadsoftServiceIfc
{
  public:
    static constexpr std::size_t MOST_ENTRIES_OF_A_KIND = 200;

    /** Told the kinds that changed, each as "kind:number of its entries", and all lines. */
    using Observer = std::function<void(const std::vector<std::string>& updatedDirectories,
                                        const std::vector<std::string>& entries)>;

    explicit NetworkCallLog(std::size_t mostEntriesOfAKind = MOST_ENTRIES_OF_A_KIND);

    /** Told after every change, and before the operation that made it returns; it may change the log itself. */
    void setObserver(Observer observer);

    /** Replaces the entry of the same kind and id, if there is one. False, and nothing happens, without an id. */
    bool add(const NetworkCallLogEntry& entry);

    /** False when there is none. */
    bool remove(NetworkCallLogEntry::Kind kind, const std::string& callLogId);

    /** In the order in which they came. */
    std::vector<std::string> entries() override;

    /** A path that leads to no entry is logged. */
    void deleteCallLogEntry(const std::string& path) override;

  private:
    using Entries = std::deque<NetworkCallLogEntry>;

    std::size_t numberOf(NetworkCallLogEntry::Kind kind) const;
    void erase(const Entries::const_iterator& entry);
    void makeRoomFor(NetworkCallLogEntry::Kind kind);
    void tellObserver(NetworkCallLogEntry::Kind kind);

    const std::size_t mostEntriesOfAKind_;
    Entries entries_;
    Observer observer_;
};
} // namespace Host
