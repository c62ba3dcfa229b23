/**
 * Hashes of texts, for telling thousands of times over whether one was there before.
 *
 * They lie in one piece of memory, where a set of the standard library has a piece for each. 0, the hash of no text,
 * counts as always there.
 */
#pragma once

#include "model/Prefetch.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace ConversationAPI
{
class HashSet
{
  public:
    /** Has room for as many. */
    void reserve(std::size_t count)
    {
        std::size_t places = std::max(FEWEST_PLACES, places_.size());
        while (places < 2 * count)
        {
            places *= 2;
        }
        if (places != places_.size())
        {
            moveTo(places);
        }
    }

    /** Answers whether it was not there yet. */
    bool insert(std::uint32_t hash)
    {
        reserve(size_ + 1);
        std::uint32_t& place = places_[placeOf(hash)];
        const bool isNew = place != hash;
        place = hash;
        size_ += isNew ? 1 : 0;
        return isNew;
    }

    /** It is about to be asked for, or inserted. */
    void expect(std::uint32_t hash) const
    {
        if (!places_.empty())
        {
            prefetchLine(&places_[hash & (places_.size() - 1)]);
        }
    }

    bool has(std::uint32_t hash) const { return hash == 0 || (size_ != 0 && places_[placeOf(hash)] == hash); }

  private:
    static constexpr std::size_t FEWEST_PLACES = 16; ///< a power of two, as their number always is

    /** Where it is, or else a free place, of which there is always one. */
    std::size_t placeOf(std::uint32_t hash) const
    {
        const std::size_t mask = places_.size() - 1;
        std::size_t place = hash & mask;
        while (places_[place] != hash && places_[place] != 0)
        {
            place = (place + 1) & mask;
        }
        return place;
    }

    void moveTo(std::size_t places)
    {
        const std::vector<std::uint32_t> before = std::exchange(places_, std::vector<std::uint32_t>(places));
        for (const std::uint32_t hash : before)
        {
            places_[placeOf(hash)] = hash;
        }
    }

    std::vector<std::uint32_t> places_; ///< 0 where it is free, as at least half are
    std::size_t size_ = 0;
};
} // namespace ConversationAPI
