/**
 * Orders conversations by their place in a list as it was when the comparison was made.
 *
 * Copies share the places. Conversations that were not in the list come first.
 */
#pragma once

#include <boost/unordered_map.hpp>

#include <memory>
#include <vector>

namespace ConversationAPI
{
class Conversation;

class ConversationListComparison
{
  public:
    /** Conversations in list order. */
    explicit ConversationListComparison(const std::vector<Conversation*>& conversations);

    bool operator()(Conversation* a, Conversation* b) const;

  private:
    int indexOf(Conversation* conversation) const;

    std::shared_ptr<const boost::unordered_map<Conversation*, int>> indexes_;
};
} // namespace ConversationAPI
