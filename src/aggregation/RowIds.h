/**
 * Whether two rows may have one id, which is told by hashes that are taken down while the rows are at hand.
 *
 * Nearly always they have not, and no walk over all rows is needed to know it.
 */
#pragma once

#include "ConversationAPI/SharedText.h"
#include "model/HashSet.h"

#include <cstddef>

namespace ConversationAPI
{
class RowIds
{
  public:
    void reserve(std::size_t count) { hashes_.reserve(count); }

    /** It is about to be added. */
    void expect(const SharedText& id) const { hashes_.expect(id.hash()); }

    /** A row without id may get any. */
    void add(const SharedText& id)
    {
        const bool isNew = hashes_.insert(id.hash());
        mayBeShared_ = mayBeShared_ || !isNew;
    }

    bool mayBeShared() const { return mayBeShared_; }

  private:
    HashSet hashes_;
    bool mayBeShared_ = false;
};
} // namespace ConversationAPI
