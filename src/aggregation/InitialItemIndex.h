/**
 * Finds the conversations whose initial item may be the same as another one.
 *
 * Keeps no texts but their hashes: it names too many now and then, never too few, so whoever asks tests what he
 * is given. The conversations are not owned and must not change while the index is in use.
 */
#pragma once

#include "model/KeyIndex.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ConversationAPI
{
class Conversation;
class ConversationItem;

class InitialItemIndex
{
  public:
    using Places = std::vector<std::uint32_t>;

    explicit InitialItemIndex(const std::vector<Conversation*>& conversations);

    /**
     * Has what placesLike() reads for the numbers of these items brought near. Calls `use` with the first place of each
     * number.
     */
    template <typename Use>
    void expect(const std::vector<const ConversationItem*>& items, Use use) const
    {
        index_.expect(hashesOfNumbers(items), use);
    }

    /** The places, from `first` on and in order, of those that share something by which items can be the same. */
    const Places& placesLike(const ConversationItem& item, std::size_t first);

  private:
    /** What two items can have in common; each kind has hashes of its own. */
    enum class Kind : std::uint32_t;

    static constexpr std::uint32_t ALL_KINDS = 0xFFFFFFFFU;

    static constexpr std::uint32_t bitOf(Kind kind) { return 1U << static_cast<std::uint32_t>(kind); }
    static std::uint32_t hashOf(Kind kind, std::uint32_t hash);
    static std::vector<std::uint32_t> hashesOfNumbers(const std::vector<const ConversationItem*>& items);

    template <typename Use>
    static void forEachKey(const ConversationItem& item, std::uint32_t kinds, Use use);

    KeyIndex<std::uint32_t> index_;
    std::uint32_t kinds_ = 0; ///< of what is in the index: contacts, say, have no conversation ids to look for
    Places places_;
};
} // namespace ConversationAPI
