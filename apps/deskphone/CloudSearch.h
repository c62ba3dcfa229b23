/**
 * The cloud's conversations as one source of a search among others.
 *
 * A searcher takes the first end that a source reports for the end of the search. The cloud's source would report it at
 * once, while a directory is still asked: here it finds without a word about the end, which is left to another source.
 * The source is not owned and outlives this. UI thread only.
 */
#pragma once

#include "ConversationAPI/ConversationSearchObserverIfc.h"
#include "ConversationAPI/SearchableConversationSourceIfc.h"

#include <string>
#include <vector>

namespace Deskphone
{
class CloudSearch : public ConversationAPI::SearchableConversationSourceIfc
{
  public:
    explicit CloudSearch(ConversationAPI::SearchableConversationSourceIfc& conversations)
        : conversations_(conversations)
    {
    }

    std::vector<std::string> getMatchingConversationIds(std::string searchString) override
    {
        return conversations_.getMatchingConversationIds(searchString);
    }

    void getMatchingConversationIds(const std::string& searchString, const std::string& searchId,
                                    ConversationAPI::ConversationSearchObserverIfc* observer) override
    {
        if (observer != nullptr && !searchString.empty())
        {
            observer->searchResults(searchId, getMatchingConversationIds(searchString),
                                    ConversationAPI::ConversationSearchObserverIfc::LOCAL_RESULTS);
        }
    }

    void cancelSearch(const std::string& searchId) override { conversations_.cancelSearch(searchId); }
    unsigned getSourceTypeWithPriority() const override { return conversations_.getSourceTypeWithPriority(); }

  private:
    ConversationAPI::SearchableConversationSourceIfc& conversations_;
};
} // namespace Deskphone
