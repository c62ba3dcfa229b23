/**
 * Which things have a text, a number or an identifier, or whatever else has a hash.
 *
 * Only hashes of the texts are kept, so looking up reads no text but the one that is sought. It names everything that
 * was added under the text and, rarely, something else: whoever asks tests what is named.
 *
 * Made for being filled, asked and emptied thousands of times over: the entries lie in one piece of memory, chained
 * from the buckets, where a map of the standard library has a piece for each.
 */
#pragma once

#include "ConversationAPI/SharedText.h"
#include "model/Prefetch.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ConversationAPI
{
/** A thing is small and a value: a pointer, a number, an iterator. */
template <typename Thing>
class KeyIndex
{
  public:
    bool empty() const { return size_ == 0; }

    void clear()
    {
        entries_.clear();
        std::fill(buckets_.begin(), buckets_.end(), NONE);
        unused_ = NONE;
        size_ = 0;
    }

    /** Room for as many, for an index that is to be filled. */
    void reserve(std::size_t count)
    {
        entries_.reserve(count);
        std::size_t buckets = std::max(FEWEST_BUCKETS, buckets_.size());
        while (buckets < count)
        {
            buckets *= 2;
        }
        if (empty() && buckets != buckets_.size())
        {
            buckets_.assign(buckets, NONE);
        }
    }
    void add(std::string_view key, Thing thing) { addHash(hashOfText(key), thing); }
    void add(const SharedText& key, Thing thing) { addHash(key.hash(), thing); }

    /** Once, if it is there. */
    void remove(std::string_view key, Thing thing)
    {
        if (!empty())
        {
            removeHash(hashOfText(key), thing);
        }
    }
    void remove(const SharedText& key, Thing thing) { removeHash(key.hash(), thing); }

    /** Appends to `things`. */
    template <typename Things>
    void collect(std::string_view key, Things& things) const
    {
        collectHash(hashOfText(key), things);
    }
    template <typename Things>
    void collect(const SharedText& key, Things& things) const
    {
        collectHash(key.hash(), things);
    }

    /** As add() and so on, for whoever has a hash. */
    void removeHash(std::uint32_t hash, Thing thing)
    {
        if (empty())
        {
            return;
        }
        std::uint32_t* link = &bucket(hash);
        while (*link != NONE && (entries_[*link].hash != hash || entries_[*link].thing != thing))
        {
            link = &entries_[*link].next;
        }
        if (*link != NONE)
        {
            const std::uint32_t place = *link;
            *link = entries_[place].next;
            entries_[place] = {hash, unused_, Thing()};
            unused_ = place;
            --size_;
        }
    }

    void addHash(std::uint32_t hash, Thing thing)
    {
        std::uint32_t place = unused_;
        if (place == NONE)
        {
            place = static_cast<std::uint32_t>(entries_.size());
            entries_.push_back({hash, NONE, thing});
        }
        else
        {
            unused_ = entries_[place].next;
            entries_[place] = {hash, NONE, thing};
        }
        ++size_;
        if (size_ > buckets_.size())
        {
            growBuckets();
        }
        else
        {
            link(place);
        }
    }

    /**
     * Has what findHash() reads for these hashes brought near, for all of them at once: to wait for one after the other
     * takes far longer. Calls `use` with the first thing of each hash that has one.
     */
    template <typename Hashes, typename Use>
    void expect(const Hashes& hashes, Use use) const
    {
        if (empty())
        {
            return;
        }
        const auto bucketOf = [this](std::uint32_t hash) { return &buckets_[hash & (buckets_.size() - 1)]; };
        for (const std::uint32_t hash : hashes)
        {
            prefetchLine(bucketOf(hash));
        }
        for (const std::uint32_t hash : hashes)
        {
            if (*bucketOf(hash) != NONE)
            {
                prefetchLine(&entries_[*bucketOf(hash)]);
            }
        }
        for (const std::uint32_t hash : hashes)
        {
            const Thing* first = nullptr;
            findHash(hash, // to the end, as collectHash() does
                     [&first](const Thing& thing)
                     {
                         first = first ? first : &thing;
                         return false;
                     });
            if (first)
            {
                use(*first);
            }
        }
    }

    /** Appends the hash of every thing; where things are pointers, and none of them null. */
    void appendHashes(std::vector<std::uint32_t>& hashes) const
    {
        for (const Entry& entry : entries_)
        {
            if (entry.thing)
            {
                hashes.push_back(entry.hash);
            }
        }
    }

    template <typename Things>
    void collectHash(std::uint32_t hash, Things& things) const
    {
        findHash(hash,
                 [&things](Thing thing)
                 {
                     things.push_back(thing);
                     return false;
                 });
    }

    /** The first of the things with this hash for which the test holds; null without one. */
    template <typename Test>
    const Thing* findHash(std::uint32_t hash, Test test) const
    {
        std::uint32_t place = buckets_.empty() ? NONE : buckets_[hash & (buckets_.size() - 1)];
        while (place != NONE && (entries_[place].hash != hash || !test(entries_[place].thing)))
        {
            place = entries_[place].next;
        }
        return place == NONE ? nullptr : &entries_[place].thing;
    }

  private:
    static constexpr std::uint32_t NONE = 0xFFFFFFFFU;
    static constexpr std::size_t FEWEST_BUCKETS = 16; ///< a power of two, as their number always is

    struct Entry
    {
        std::uint32_t hash;
        std::uint32_t next; ///< of the same bucket, or unused
        Thing thing;
    };

    std::uint32_t& bucket(std::uint32_t hash) { return buckets_[hash & (buckets_.size() - 1)]; }

    void link(std::uint32_t place)
    {
        std::uint32_t& first = bucket(entries_[place].hash);
        entries_[place].next = first;
        first = place;
    }

    /** Twice as many as there are entries, all of which are in use: most of what is sought meets an empty bucket. */
    void growBuckets()
    {
        buckets_.assign(std::max(FEWEST_BUCKETS, 2 * buckets_.size()), NONE);
        for (std::uint32_t place = 0; place < entries_.size(); ++place)
        {
            link(place);
        }
    }

    std::vector<Entry> entries_;
    std::vector<std::uint32_t> buckets_; ///< the first entry of each
    std::uint32_t unused_ = NONE;        ///< the first of the entries that are free
    std::size_t size_ = 0;
};
} // namespace ConversationAPI
