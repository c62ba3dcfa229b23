/** Who shows what a search finds. Told on the UI thread; may start another search, or cancel, when told. */
#pragma once

#include "ConversationAPI/ConversationSearchObserverIfc.h"

#include <string>
#include <vector>

namespace ConversationAPI
{
class SearchResultsReceiver
{
  public:
    using SearchResultsType = ConversationSearchObserverIfc::SearchResultsType;

    virtual ~SearchResultsReceiver() = default;

    /** More results of the search that goes on, in the order in which they are to be shown; may be empty. */
    virtual void receiveSearchResults(const std::vector<std::string>& conversationIds, SearchResultsType type) = 0;
    virtual void receiveSearchEnded() = 0;
};
} // namespace ConversationAPI
