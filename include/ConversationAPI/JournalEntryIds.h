/** Journal entry ids in the order in which they were first seen, each once. */
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

namespace ConversationAPI
{
class JournalEntryIds
{
  public:
    /** Appends the id unless it is there; "" is no id. */
    void add(const std::string& id);
    void add(const JournalEntryIds& others);
    void remove(const std::string& id);

    const std::vector<std::string>& inOrder() const { return ids_; }

  private:
    bool contains(const std::string& id) const;

    std::vector<std::string> ids_;
    std::unordered_set<std::string> known_; ///< only filled when there are many
};
} // namespace ConversationAPI
