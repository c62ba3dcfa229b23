/**
 * A conversation aggregator whose own list can be searched: the local conversations of a search.
 *
 * Ownership, lifetime and thread are those of the aggregator.
 */
#pragma once

#include "ConversationAPI/ConversationAggregator.h"
#include "ConversationAPI/SearchableConversationSourceIfc.h"

#include <string>
#include <vector>

namespace ConversationAPI
{
class SearchableConversationSource : public ConversationAggregator, public SearchableConversationSourceIfc
{
  public:
    SearchableConversationSource();
    explicit SearchableConversationSource(ConversationItemFactory* factory);
    ~SearchableConversationSource() override;

    /** Those whose text or numbers contain the text, in list order; all of them for "". */
    std::vector<std::string> getMatchingConversationIds(std::string searchString) override;

    /** The list is always searched at once. */
    void getMatchingConversationIds(const std::string&, const std::string&, ConversationSearchObserverIfc*) override {}
    void cancelSearch(const std::string&) override {}
    unsigned getSourceTypeWithPriority() const override { return 0; }
};
} // namespace ConversationAPI
