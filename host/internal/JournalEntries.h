/**
 * The content of the call journal in memory: which calls are one entry, their order, and what leaves a full journal.
 * host/Journal.h tells the rules.
 */
#pragma once

#include "host/JournalCall.h"
#include "platform/JournalServiceIfc.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace Host
{
/** The calls of one kind with one remote party. */
struct JournalEntry
{
    struct Call
    {
        explicit Call(JournalCall told);

        JournalCall call;
        std::int64_t instant; ///< seconds since the epoch; lowest of all when the time cannot be read
    };

    /** The newest call that tells a name, else the newest one. */
    const JournalCall& callWithName() const;

    /** Whether the user has seen all its calls. */
    bool isViewed() const;

    std::string id;
    JournalCall::Kind kind = JournalCall::MISSED;
    std::vector<Call> calls; ///< oldest first; never empty
};

/** What happened to an entry, with the entry as it became, or as it last was. */
struct JournalChange
{
    JournalServiceObserverIfc::ActionType action;
    JournalEntry entry;
};

class JournalEntries
{
  public:
    using Changes = std::vector<JournalChange>;

    explicit JournalEntries(const JournalLimits& limits);

    /** The id of the entry that a call belongs to. */
    static std::string entryId(const JournalCall& call);

    /** Takes over entries with distinct ids, all of them: only what is added makes the oldest leave. */
    void load(std::vector<JournalEntry> entries);

    /** Each of these gives what changed, in the order in which it is to be told. */
    Changes add(const JournalCall& call);
    Changes remove(const std::set<std::string>& entryIds);
    Changes removeAll();
    Changes markViewed(const std::set<std::string>& entryIds);

    /** What makes `before` to what this is: additions and updates, then deletions. */
    Changes changesSince(const JournalEntries& before) const;

    /** Null when there is none; valid until the next change. */
    const JournalEntry* find(const std::string& entryId) const;

    /** Newest first; those of one moment by their id. Valid until the next change. */
    std::vector<const JournalEntry*> entriesOf(JournalCall::Kind kind) const;

    /** Oldest first. */
    std::vector<JournalCall> calls() const;

  private:
    bool insert(JournalEntry& entry, JournalEntry::Call call) const;
    std::vector<JournalEntry> dropSurplus(JournalCall::Kind kind);

    JournalLimits limits_;
    std::map<std::string, JournalEntry> entries_;
};
} // namespace Host
