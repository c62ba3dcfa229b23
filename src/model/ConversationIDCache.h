/**
 * The identifiers given so far, each with a copy of the item it was given for, in the order of giving.
 *
 * Finds the first entry that counts as an item's conversation without walking: only entries that share an id,
 * a call id, a number or the lack of one with the item are tested.
 */
#pragma once

#include "ConversationAPI/ConversationItem.h"
#include "model/HashSet.h"
#include "model/KeyIndex.h"

#include <boost/container/small_vector.hpp>

#include <cstdint>
#include <list>
#include <memory>
#include <memory_resource>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ConversationAPI
{
class ConversationIDCache
{
  public:
    using Test = bool (*)(const ConversationItem* cached, const ConversationItem* candidate);

    struct Entry
    {
        std::unique_ptr<ConversationItem> item;
        SharedText id;
        std::uint64_t sequence;
        std::uint32_t idHash = id.hash();
    };
    using Entries = std::pmr::list<Entry>;

    /** Whether all tests imply sameness of items, so that the index holds every entry that can pass. */
    explicit ConversationIDCache(bool testsImplySameness) : isIndexUsed_(testsImplySameness) {}

    bool empty() const { return entries_.empty(); }
    const Entries& entries() const { return entries_; }

    /** Null when no entry has the id. */
    const Entry* find(const std::string& id) const { return find(id, hashOfText(id)); }
    const Entry* find(const SharedText& id) const { return find(id.str(), id.hash()); }

    /** The first entry for which the test holds; null when there is none. */
    const Entry* findFirst(const ConversationItem& candidate, Test test) const;

    /** Has what findFirst() will read for items like these brought near. Appends the hashes of ids it may well find. */
    void expect(const std::vector<const ConversationItem*>& candidates, std::vector<std::uint32_t>& likelyIds) const;

    /** The same for what find() reads, and the items that it finds. */
    void expectIds(const std::vector<std::uint32_t>& idHashes) const;

    /** Appends an entry; one of the same id is replaced by it. */
    void put(const SharedText& id, std::unique_ptr<ConversationItem> item);

    /** Nothing happens when no entry has the id. */
    void remove(const std::string& id);

    /**
     * Removes every entry whose id has none of these hashes of hashOfText(); tells each id before it goes. Reads no
     * ids, of which there are thousands, and nearly all of them in use.
     */
    template <typename Removing>
    void removeUnused(const std::vector<std::uint32_t>& hashesInUse, Removing removing)
    {
        HashSet inUse;
        inUse.reserve(hashesInUse.size());
        for (const std::uint32_t hash : hashesInUse)
        {
            inUse.insert(hash);
        }
        for (auto entry = entries_.begin(); entry != entries_.end();)
        {
            const auto next = std::next(entry);
            if (!inUse.has(entry->idHash))
            {
                removing(entry->id.str());
                remove(entry);
            }
            entry = next;
        }
    }

  private:
    static constexpr std::size_t ENTRIES_AT_ONCE = 256; ///< memory is taken for

    using Index = KeyIndex<const Entry*>;

    const Entry* find(const std::string& id, std::uint32_t hash) const;
    const Entries::iterator* placeOf(const std::string& id, std::uint32_t hash) const;

    using Found = boost::container::small_vector<const Entry*, 8>;

    /** The first entry of each hash that the index has; what they hold is brought near, and what lies on the way. */
    template <typename AnyIndex, typename AnyHashes>
    static Found expectItems(const AnyIndex& index, const AnyHashes& hashes);
    const Entry* walkToFirst(const ConversationItem& candidate, Test test) const;
    void remove(Entries::iterator entry);

    const bool isIndexUsed_;
    std::pmr::unsynchronized_pool_resource memory_{std::pmr::pool_options{ENTRIES_AT_ONCE, 0}}; ///< of the entries
    Entries entries_{&memory_};
    KeyIndex<Entries::iterator> byId_;
    Index byParty_;
    Index byExchangeContactId_;
    Index byConversationId_;
    Index byCallId_;
    std::uint64_t nextSequence_ = 0;
};
} // namespace ConversationAPI
