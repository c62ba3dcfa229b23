/**
 * Whether two rows may have one id, which is told by hashes that are taken down while the rows are at hand.
 *
 * Nearly always they have not, and no walk over all rows is needed to know it.
 */
#pragma once

#include "ConversationAPI/SharedText.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace ConversationAPI
{
class RowIds
{
  public:
    void reserve(std::size_t count) { hashes_.reserve(count); }
    void add(const SharedText& id) { hashes_.push_back(id.hash()); }

    /** A row without id may get any. Puts what was taken down into another order. */
    bool mayBeShared()
    {
        std::sort(hashes_.begin(), hashes_.end());
        return (!hashes_.empty() && hashes_.front() == 0) ||
               std::adjacent_find(hashes_.begin(), hashes_.end()) != hashes_.end();
    }

  private:
    std::vector<std::uint32_t> hashes_;
};
} // namespace ConversationAPI
