/**
 * The identifiers given so far, each with a copy of the item it was given for, in the order of giving.
 *
 * Finds the first entry that counts as an item's conversation without walking: only entries that share an id,
 * a call id, a number or the lack of one with the item are tested.
 */
#pragma once

#include "ConversationAPI/ConversationItem.h"

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace ConversationAPI
{
class ConversationIDCache
{
  public:
    using Test = bool (*)(const ConversationItem* cached, const ConversationItem* candidate);

    struct Entry
    {
        std::unique_ptr<ConversationItem> item;
        std::string id;
        std::uint64_t sequence;
    };

    /** Whether all tests imply sameness of items, so that the index holds every entry that can pass. */
    explicit ConversationIDCache(bool testsImplySameness) : isIndexUsed_(testsImplySameness) {}

    bool empty() const { return entries_.empty(); }
    const std::list<Entry>& entries() const { return entries_; }

    /** Null when no entry has the id. */
    const Entry* find(const std::string& id) const;

    /** The first entry for which the test holds; null when there is none. */
    const Entry* findFirst(const ConversationItem& candidate, Test test) const;

    /** Appends an entry; one of the same id is replaced by it. */
    void put(const std::string& id, std::unique_ptr<ConversationItem> item);

    /** Removes every entry whose id is not among these; tells each id before it goes. */
    template <typename Removing>
    void keepOnly(const std::unordered_set<std::string_view>& ids, Removing removing)
    {
        for (auto entry = entries_.begin(); entry != entries_.end();)
        {
            const auto next = std::next(entry);
            if (ids.count(entry->id) == 0)
            {
                removing(entry->id);
                remove(entry);
            }
            entry = next;
        }
    }

  private:
    /** The texts belong to the items of the entries. */
    using Index = std::unordered_multimap<std::string_view, const Entry*>;

    const Entry* walkToFirst(const ConversationItem& candidate, Test test) const;
    void remove(std::list<Entry>::iterator entry);

    const bool isIndexUsed_;
    std::list<Entry> entries_;
    std::unordered_map<std::string_view, std::list<Entry>::iterator> byId_;
    Index byParty_;
    Index byExchangeContactId_;
    Index byConversationId_;
    Index byCallId_;
    std::unordered_map<const Entry*, std::string> callIds_; ///< owns the texts of byCallId_
    std::uint64_t nextSequence_ = 0;
};
} // namespace ConversationAPI
