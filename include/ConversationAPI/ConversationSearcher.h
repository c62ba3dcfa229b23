/**
 * Searches the searchable sources by priority and passes on what they find, as long as somebody waits for it.
 *
 * One search at a time. A new one replaces the one that goes on: whatever still comes of the old one is dropped, and
 * its receiver hears nothing more. Every other search has exactly one end, which the receiver is told when the first
 * of the sources that answer later reports it, when it is cancelled, or at once when no source is to answer later
 * because there is none or only the network's directory is searched. What other sources find after that still
 * reaches the receiver, until the next search or cancelSearch(). With a single source that search goes on until it
 * is cancelled: nobody is left to report its end; startLocalSearch() is meant for that.
 *
 * Sources and receiver are not owned. A source is removed before it is destroyed, which cancels what it was asked;
 * cancelSearch() before the receiver or the searcher is destroyed, for sources keep the searcher as their observer. UI
 * thread only: services that answer on other threads post their answers there.
 */
#pragma once

#include "ConversationAPI/ConversationSearchObserverIfc.h"
#include "ConversationAPI/ConversationSearcherIfc.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace ConversationAPI
{
/** Whether `a` comes before `b`; of two sources with the same priority neither does. */
bool compareSourcePriorities(const SearchableConversationSourceIfc* a, const SearchableConversationSourceIfc* b);

class ConversationSearcher : public ConversationSearcherIfc, public ConversationSearchObserverIfc
{
  public:
    ConversationSearcher();
    ~ConversationSearcher() override;

    ConversationSearcher(const ConversationSearcher&) = delete;
    ConversationSearcher& operator=(const ConversationSearcher&) = delete;

    void startSearch(const std::string& searchId, const std::string& searchString,
                     SearchResultsReceiver* receiver) override;
    void startLocalSearch(const std::string& searchString, SearchResultsReceiver* receiver) override;

    /** Every source is told, even when no search goes on, and of the search that they were last asked to answer. */
    void cancelSearch() override;
    bool isSearching() const override { return isSearching_; }
    void addSearchableConversationSource(SearchableConversationSourceIfc* source) override;
    void removeSearchableConversationSource(SearchableConversationSourceIfc* source) override;
    void setBroadsoftDirectorySearch(bool networkDirectoryOnly) override;

    void searchResults(const std::string& searchId, const std::vector<std::string>& conversationIds,
                       SearchResultsType type) override;
    void searchEnded(const std::string& searchId) override;

  private:
    using Sources = std::set<SearchableConversationSourceIfc*,
                             bool (*)(const SearchableConversationSourceIfc*, const SearchableConversationSourceIfc*)>;

    std::vector<std::string> searchAtOnce(const std::string& searchString) const;
    SearchableConversationSourceIfc* sourceThatAnswersAtOnce() const;
    void startInSourcesAfter(const SearchableConversationSourceIfc* first);
    void cancelInSources(const std::string& searchId);
    void endIfNobodyIsAsked();
    void endSearch();

    Sources sources_{compareSourcePriorities};
    SearchResultsReceiver* receiver_ = nullptr;
    std::string searchId_;
    std::string searchString_;
    bool isSearching_ = false;
    bool networkDirectoryOnly_ = false;
    std::string handedOutId_; ///< of the search that sources were last asked to answer later
    std::map<SearchableConversationSourceIfc*, std::string> asked_; ///< to answer later, the search that each was told
    bool isHandingOut_ = false;                                     ///< while more of them are about to be asked
    unsigned long searchCount_ = 0;                                 ///< tells searches apart, whatever their ids are
};
} // namespace ConversationAPI
