#include "ConversationAPI/ConversationSearcher.h"

#include "ConversationAPI/SearchResultsReceiver.h"
#include "ConversationAPI/SearchableConversationSourceIfc.h"
#include "Log.h"
#include "Observers.h"

#include <algorithm>
#include <utility>

namespace ConversationAPI
{
namespace
{
constexpr const char* SEARCHER_LOG_FILE = "./src/ConversationSearcher";
constexpr unsigned LOCAL_PRIORITY = 0;
constexpr unsigned NETWORK_DIRECTORY_PRIORITY = 1;
} // namespace

bool compareSourcePriorities(const SearchableConversationSourceIfc* a, const SearchableConversationSourceIfc* b)
{
    return a->getSourceTypeWithPriority() < b->getSourceTypeWithPriority();
}

ConversationSearcher::ConversationSearcher() = default;

ConversationSearcher::~ConversationSearcher() = default;

void ConversationSearcher::startSearch(const std::string& searchId, const std::string& searchString,
                                       SearchResultsReceiver* receiver)
{
    CONVERSATION_LOG(SEARCHER_LOG_FILE, 5, "startSearch called searchId = %s, searchString = %s", searchId.c_str(),
                     searchString.c_str());
    const unsigned long search = ++searchCount_;
    receiver_ = receiver;
    searchId_ = searchId;
    searchString_ = searchString;
    isSearching_ = true;
    const SearchableConversationSourceIfc* first = sources_.empty() ? nullptr : *sources_.begin();
    const std::vector<std::string> ids = searchAtOnce(searchString_);
    const auto isReplaced = [&] { return search != searchCount_; }; // by another search, or cancelled
    if (receiver_ && !isReplaced())
    {
        receiver_->receiveSearchResults(ids, LOCAL_RESULTS);
    }
    if (isReplaced())
    {
        return;
    }
    if (!sources_.empty() && !networkDirectoryOnly_)
    {
        startInSourcesAfter(first);
    }
    else
    {
        endSearch();
    }
}

std::vector<std::string> ConversationSearcher::searchAtOnce(const std::string& searchString) const
{
    return sources_.empty() ? std::vector<std::string>()
                            : sourceThatAnswersAtOnce()->getMatchingConversationIds(searchString);
}

SearchableConversationSourceIfc* ConversationSearcher::sourceThatAnswersAtOnce() const
{
    const unsigned priority = networkDirectoryOnly_ ? NETWORK_DIRECTORY_PRIORITY : LOCAL_PRIORITY;
    const auto found =
        std::find_if(sources_.begin(), sources_.end(),
                     [priority](const auto* source) { return source->getSourceTypeWithPriority() == priority; });
    return found == sources_.end() ? *sources_.begin() : *found;
}

/** The texts are copies: a source may answer at once, and its answer make the receiver start another search. */
void ConversationSearcher::startInSourcesAfter(const SearchableConversationSourceIfc* first)
{
    const unsigned long search = searchCount_;
    const std::string searchString = searchString_;
    const std::string searchId = searchId_;
    bool wasAnyAsked = false;
    isHandingOut_ = true;
    tellEach(sources_,
             [&](SearchableConversationSourceIfc& source)
             {
                 if (&source != first && search == searchCount_)
                 {
                     handedOutId_ = searchId;
                     asked_[&source] = searchId;
                     wasAnyAsked = true;
                     source.getMatchingConversationIds(searchString, searchId, this);
                 }
             });
    isHandingOut_ = false; // also for a search that one from inside has replaced: nobody else is asked for either
    if (wasAnyAsked && search == searchCount_)
    {
        endIfNobodyIsAsked();
    }
}

/** All that were to report the end may have been removed. */
void ConversationSearcher::endIfNobodyIsAsked()
{
    const bool isAnyAsked =
        std::any_of(asked_.begin(), asked_.end(), [this](const auto& asked) { return asked.second == searchId_; });
    if (isSearching_ && !isAnyAsked)
    {
        endSearch();
    }
}

void ConversationSearcher::endSearch()
{
    isSearching_ = false;
    if (receiver_)
    {
        receiver_->receiveSearchEnded();
    }
}

void ConversationSearcher::startLocalSearch(const std::string& searchString, SearchResultsReceiver* receiver)
{
    CONVERSATION_LOG(SEARCHER_LOG_FILE, 5, "startSearch called, searchString = %s", searchString.c_str());
    std::vector<std::string> ids;
    if (!sources_.empty())
    {
        ids = (*sources_.begin())->getMatchingConversationIds(searchString);
    }
    if (!receiver)
    {
        return;
    }
    const unsigned long search = searchCount_;
    receiver->receiveSearchResults(ids, LOCAL_RESULTS);
    if (search == searchCount_) // else the end would pass for that of the search that it has started meanwhile
    {
        receiver->receiveSearchEnded();
    }
}

/**
 * Forgets the search before anybody is told, so that nothing of it is passed on any more. Sources that the search never
 * reached still keep the searcher as the observer of the one before.
 */
void ConversationSearcher::cancelSearch()
{
    CONVERSATION_LOG(SEARCHER_LOG_FILE, 5, "cancelSearch called");
    ++searchCount_;
    const bool wasSearching = std::exchange(isSearching_, false);
    SearchResultsReceiver* const receiver = std::exchange(receiver_, nullptr);
    const std::string searchId = std::exchange(searchId_, std::string());
    const std::string handedOutId = std::exchange(handedOutId_, std::string());
    asked_.clear();
    searchString_.clear();
    cancelInSources(searchId);
    if (!handedOutId.empty() && handedOutId != searchId)
    {
        cancelInSources(handedOutId);
    }
    if (wasSearching && receiver) // who waits for more results after the end was told of that end: each has but one
    {
        receiver->receiveSearchEnded();
    }
}

void ConversationSearcher::cancelInSources(const std::string& searchId)
{
    tellEach(sources_, [&searchId](SearchableConversationSourceIfc& source) { source.cancelSearch(searchId); });
}

void ConversationSearcher::addSearchableConversationSource(SearchableConversationSourceIfc* source)
{
    if (!source)
    {
        CONVERSATION_LOG(SEARCHER_LOG_FILE, 2, "addSearchableConversationSource called without a source");
    }
    else if (!sources_.insert(source).second)
    {
        CONVERSATION_LOG(SEARCHER_LOG_FILE, 3,
                         "addSearchableConversationSource there is a source of priority %u already",
                         source->getSourceTypeWithPriority());
    }
}

/** By the pointer: another source of the same priority, which was not added, takes none away. */
void ConversationSearcher::removeSearchableConversationSource(SearchableConversationSourceIfc* source)
{
    const auto found = std::find(sources_.begin(), sources_.end(), source);
    if (found == sources_.end())
    {
        return;
    }
    sources_.erase(found);
    const auto asked = asked_.find(source);
    if (asked == asked_.end())
    {
        return;
    }
    const unsigned long search = searchCount_;
    const std::string searchId = asked->second;
    asked_.erase(asked);
    source->cancelSearch(searchId); // else it would keep the searcher as its observer
    if (search == searchCount_ && searchId == searchId_ && !isHandingOut_)
    {
        endIfNobodyIsAsked();
    }
}

void ConversationSearcher::setBroadsoftDirectorySearch(bool networkDirectoryOnly)
{
    networkDirectoryOnly_ = networkDirectoryOnly;
}

void ConversationSearcher::searchResults(const std::string& searchId, const std::vector<std::string>& conversationIds,
                                         SearchResultsType type)
{
    CONVERSATION_LOG(SEARCHER_LOG_FILE, 5, "Search results received for searchId = %s, currentSearchId = %s",
                     searchId.c_str(), searchId_.c_str());
    if (searchId == searchId_ && receiver_)
    {
        CONVERSATION_LOG(SEARCHER_LOG_FILE, 5, " Sending search results to resultsReceiver");
        receiver_->receiveSearchResults(conversationIds, type);
    }
}

/** The first source to report the end ends the search; what the others report then changes nothing. */
void ConversationSearcher::searchEnded(const std::string& searchId)
{
    CONVERSATION_LOG(SEARCHER_LOG_FILE, 5, "Search searchEnded received for searchId = %s, currentSearchId = %s",
                     searchId.c_str(), searchId_.c_str());
    if (searchId != searchId_ || !isSearching_)
    {
        return;
    }
    if (receiver_)
    {
        CONVERSATION_LOG(SEARCHER_LOG_FILE, 5, " Sending search ended to resultsReceiver");
    }
    endSearch();
}
} // namespace ConversationAPI
