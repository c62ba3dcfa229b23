/**
 * What a conversation source can offer beside getInUseConversationIds(): the same ids, without a copy of each.
 *
 * Unused identifiers are looked for whenever the conversations are made anew. That takes no more than hashes, which the
 * lists have at hand, where the ids of thousands of conversations lie all over the memory. UI thread.
 */
#pragma once

#include <cstdint>
#include <vector>

namespace ConversationAPI
{
class IdsInUseIfc
{
  public:
    virtual ~IdsInUseIfc() = default;

    /**
     * Appends hashOfText() of every id of getInUseConversationIds() that is not empty, in any order, some perhaps more
     * than once. Whoever overrides one of the two overrides both: only one is asked.
     */
    virtual void appendIdHashes(std::vector<std::uint32_t>& hashes) const = 0;
};
} // namespace ConversationAPI
