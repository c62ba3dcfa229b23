/**
 * Has what a walk over rows needs next to merge others into them brought near: those that are likely to be merged, and
 * what is remembered under their ids.
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ConversationAPI
{
class Conversation;
class ConversationItem;
class ConversationList;
class InitialItemIndex;

class MergesAhead
{
  public:
    /** The source's conversations are known to the index by their places. All outlive this object. */
    MergesAhead(const ConversationList& rows, const ConversationList& source,
                const std::vector<Conversation*>& conversations, const InitialItemIndex& index)
        : rows_(rows), source_(source), conversations_(conversations), index_(index)
    {
    }

    /** The walk has come to the next row. Those behind it are looked at. */
    void comeToNext();

  private:
    template <typename Use>
    void forEachRow(std::size_t from, Use use) const;
    void findLikely();
    void expectParts() const;

    const ConversationList& rows_;
    const ConversationList& source_;
    const std::vector<Conversation*>& conversations_;
    const InitialItemIndex& index_;
    std::size_t place_ = 0;
    std::vector<const ConversationItem*> items_;
    std::vector<const Conversation*> likely_;
    std::vector<std::uint32_t> idHashes_;
};
} // namespace ConversationAPI
