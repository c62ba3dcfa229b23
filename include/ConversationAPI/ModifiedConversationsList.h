/** The ids of the conversations that changed lately, most recent first; at most 50. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace ConversationAPI
{
class ModifiedConversationsList
{
  public:
    using Ids = std::deque<std::string>;

    /** An id that is queued already keeps its place. */
    void insert(const std::string& id);
    void remove(const std::string& id);

    /** "" when empty. */
    std::string first() const;
    Ids getModifiedConversations() const { return ids_; }
    void clear();
    std::size_t size() const { return ids_.size(); }
    bool isEmpty() const { return ids_.empty(); }
    Ids::const_iterator begin() const { return ids_.begin(); }
    Ids::const_iterator end() const { return ids_.end(); }

  private:
    void noteHash(std::uint32_t hash);

    Ids ids_;
    unsigned capacity_ = 50;
    std::vector<std::uint32_t> hashes_; ///< of the ids: a ring once there are as many as can be
    std::size_t oldestHash_ = 0;        ///< its place then
};
} // namespace ConversationAPI
