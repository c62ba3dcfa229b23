#include "ConversationAPI/SearchableConversationSource.h"

#include "ConversationAPI/GatherMatchingConversationIds.h"

namespace ConversationAPI
{
SearchableConversationSource::SearchableConversationSource() = default;

SearchableConversationSource::SearchableConversationSource(ConversationItemFactory* factory)
    : ConversationAggregator(factory)
{
}

SearchableConversationSource::~SearchableConversationSource() = default;

std::vector<std::string> SearchableConversationSource::getMatchingConversationIds(std::string searchString)
{
    GatherMatchingConversationIds gather(searchString);
    getConversations()->foreach (gather);
    return gather.ids;
}
} // namespace ConversationAPI
