/** What an asynchronous search reports to. UI thread only. */
#pragma once

#include <string>
#include <vector>

namespace ConversationAPI
{
class ConversationSearchObserverIfc
{
  public:
    enum SearchResultsType
    {
        LOCAL_RESULTS = 1,
        DIRECTORY_RESULTS = 2,
        WEB_SERVICE_RESULTS = 3
    };

    virtual ~ConversationSearchObserverIfc() = default;

    virtual void searchResults(const std::string& searchId, const std::vector<std::string>& conversationIds,
                               SearchResultsType type) = 0;
    virtual void searchEnded(const std::string& searchId) = 0;
};
} // namespace ConversationAPI
