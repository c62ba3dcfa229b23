#include "ConversationAPI/ConversationFinder.h"

#include "ConversationAPI/ConversationAggregatorIfc.h"
#include "Log.h"
#include "search/FinderIndex.h"
#include "search/SearchQuery.h"
#include "search/TextFolding.h"

namespace ConversationAPI
{
namespace
{
constexpr const char* FINDER_LOG_FILE = "./src/ConversationFinder";
} // namespace

ConversationFinder::ConversationFinder(ConversationAggregatorIfc& aggregator)
    : aggregator_(aggregator), folding_(std::make_unique<TextFolding>()),
      index_(std::make_unique<FinderIndex>(*folding_))
{
    aggregator_.addObserver(this);
}

ConversationFinder::~ConversationFinder()
{
    aggregator_.removeObserver(this);
}

/** Until the aggregator has told its first list, rows may come and go without a word. */
std::vector<std::string> ConversationFinder::getMatchingConversationIds(std::string searchString)
{
    CONVERSATION_LOG(FINDER_LOG_FILE, 6, "getMatchingConversationIds, searchString : %s", searchString.c_str());
    const ConversationList* list = aggregator_.getConversations();
    if (!list)
    {
        return {};
    }
    if (!hearsOfAllChanges_)
    {
        index_->forgetAll();
    }
    index_->follow(*list);
    return index_->find(SearchQuery(searchString, *folding_));
}

std::vector<TextRange> ConversationFinder::matchingRangesInName(const std::string& searchString,
                                                                const std::string& name)
{
    return SearchQuery(searchString, *folding_).rangesInName(name, *folding_);
}

std::vector<TextRange> ConversationFinder::matchingRangesInNumber(const std::string& searchString,
                                                                  const std::string& number)
{
    return SearchQuery(searchString, *folding_).rangesInNumber(number, *folding_);
}

void ConversationFinder::conversationListChanged(ConversationList*)
{
    hearsOfAllChanges_ = true;
    index_->forgetAll();
}

void ConversationFinder::conversationUpdatedAndMoved(Conversation* conversation, int)
{
    index_->forget(conversation);
}

void ConversationFinder::newConversation(Conversation* conversation, int)
{
    index_->forget(conversation);
}

void ConversationFinder::conversationDeleted(Conversation* conversation)
{
    index_->forget(conversation);
}
} // namespace ConversationAPI
