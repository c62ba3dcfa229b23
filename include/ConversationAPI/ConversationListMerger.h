/**
 * Merges the conversations of one source into those of a list that are the same.
 *
 * Applied to each conversation of the combined list in turn, it folds in all of the source's that are the same,
 * as ConversationMerger run over the whole of the source's list would; it finds them by what their initial items
 * have in common, so that not every pair is compared. A conversation that has a contact's id takes in no other contact,
 * whose number may be the same. Nothing is owned, and the source's list must not change meanwhile.
 */
#pragma once

#include "ConversationAPI/ConversationExecutor.h"
#include "ConversationAPI/SharedText.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace ConversationAPI
{
class ConversationList;
class ConversationMerger;
class InitialItemIndex;
class MergesAhead;

class ConversationListMerger : public ConversationExecutor
{
  public:
    explicit ConversationListMerger(const ConversationList& source);
    ~ConversationListMerger() override;

    ConversationListMerger(const ConversationListMerger&) = delete;
    ConversationListMerger& operator=(const ConversationListMerger&) = delete;

    void operator()(Conversation* conversation) override;

    /**
     * Tells that it will be applied to the rows of this list, which outlives it, in their order; what it needs for the
     * next ones is then brought near in time.
     */
    void expectRowsOf(const ConversationList& list) { rows_ = &list; }

    /** Those of the source that no conversation took in so far, in the source's order. */
    std::vector<Conversation*> notMerged() const;

  private:
    void makeIndex();
    std::size_t mergeFirst(ConversationMerger& merger, const Conversation& target, const SharedText& id,
                           std::size_t first);
    bool isOtherContact(const Conversation& candidate, const SharedText& id) const;

    const ConversationList& source_;
    std::vector<Conversation*> conversations_;
    std::vector<bool> isMerged_;
    const ConversationList* rows_ = nullptr;  ///< null when it is not known what comes
    std::unique_ptr<InitialItemIndex> index_; ///< made when it is asked for first
    std::unique_ptr<MergesAhead> ahead_;      ///< null when it is not known what comes
};
} // namespace ConversationAPI
