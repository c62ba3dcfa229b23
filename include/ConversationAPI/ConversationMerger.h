/**
 * Folds every conversation that is the same as a target into it.
 *
 * Run over a list that does not hold the target. Neither target nor conversations are owned, and those that
 * were merged stay as they are: copies of their items go into the target.
 *
 * An additional live call of a party only takes a contact's details and does not count as merged with it: the call's
 * row goes with the call, and the contact must not.
 */
#pragma once

#include "ConversationAPI/ConversationExecutor.h"

#include <boost/container/small_vector.hpp>

namespace ConversationAPI
{
class ConversationMerger : public ConversationExecutor
{
  public:
    /** Nearly always there is just one. */
    using Conversations = boost::container::small_vector<Conversation*, 1>;

    explicit ConversationMerger(Conversation* target);

    void operator()(Conversation* conversation) override;

    bool hasMerged() const { return hasMerged_; }

    /** In the order in which they were merged. */
    const Conversations& merged() const { return merged_; }

  private:
    Conversation* target_;
    bool hasMerged_ = false;
    Conversations merged_;
};
} // namespace ConversationAPI
