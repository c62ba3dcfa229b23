/**
 * What a display asks to search for conversations: at once those that are known, later those in directories.
 *
 * Sources and receivers are not owned. UI thread only.
 */
#pragma once

#include <string>

namespace ConversationAPI
{
class SearchableConversationSourceIfc;
class SearchResultsReceiver;

class ConversationSearcherIfc
{
  public:
    virtual ~ConversationSearcherIfc() = default;

    /** Local results come before this returns, the rest later. `searchId` is to be another one for each search. */
    virtual void startSearch(const std::string& searchId, const std::string& searchString,
                             SearchResultsReceiver* receiver) = 0;

    /**
     * The first source's results and the end, before this returns; a search that goes on is left alone. A receiver that
     * starts another search, or cancels, while it is told the results hears of this one's end no more.
     */
    virtual void startLocalSearch(const std::string& searchString, SearchResultsReceiver* receiver) = 0;
    virtual void cancelSearch() = 0;
    virtual bool isSearching() const = 0;

    /** A source of the same priority as one that is there is not added. */
    virtual void addSearchableConversationSource(SearchableConversationSourceIfc* source) = 0;
    virtual void removeSearchableConversationSource(SearchableConversationSourceIfc* source) = 0;

    /** Whether to search in the network's directory alone, which answers at once. */
    virtual void setBroadsoftDirectorySearch(bool networkDirectoryOnly) = 0;
};
} // namespace ConversationAPI
