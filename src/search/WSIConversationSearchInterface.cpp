#include "ConversationAPI/WSIConversationSearchInterface.h"

#include "Log.h"

#include <utility>

namespace ConversationAPI
{
namespace
{
constexpr const char* SEARCH_INTERFACE_LOG_FILE = "./src/WSIConversationSearchInterface";
constexpr int SEARCH_KIND = 4;
constexpr int MOST_RESULTS = 50;
constexpr std::size_t FEWEST_DIGITS = 3;
} // namespace

WSIConversationSearchInterface::WSIConversationSearchInterface(WSIServiceConversationObserverIfc* conversationObserver)
    : conversationObserver_(conversationObserver)
{
}

WSIConversationSearchInterface::~WSIConversationSearchInterface() = default;

void WSIConversationSearchInterface::addWSISource(WSIServiceIfc* service)
{
    service_ = service;
}

/** The service does not know of search ids; the items get theirs here. */
void WSIConversationSearchInterface::getMatchingConversationIds(const std::string& searchString,
                                                                const std::string& searchId,
                                                                ConversationSearchObserverIfc*)
{
    CONVERSATION_LOG(SEARCH_INTERFACE_LOG_FILE, 5, "getMatchingConversationIds, searchString : %s",
                     searchString.c_str());
    if (searchString.empty() || !service_ || !conversationObserver_)
    {
        return;
    }
    std::vector<WSIItem> items;
    service_->search(searchString, SEARCH_KIND, MOST_RESULTS, items);
    for (WSIItem& item : items)
    {
        item.searchId = searchId;
    }
    conversationObserver_->wsiSearchResults(searchId, std::move(items));
}

bool WSIConversationSearchInterface::searchSystemPhonebook(const std::string& searchString,
                                                           std::vector<WSIItem>& results)
{
    CONVERSATION_LOG(SEARCH_INTERFACE_LOG_FILE, 5, "searchSystemPhonebook , searchString : %s", searchString.c_str());
    if (searchString.size() < FEWEST_DIGITS || !checkSearchStringContainsOnlyNumbers(searchString) || !service_)
    {
        return false;
    }
    return service_->searchPhonebook(searchString, results);
}

bool checkSearchStringContainsOnlyNumbers(const std::string& searchString)
{
    return searchString.find_first_not_of("0123456789") == std::string::npos;
}
} // namespace ConversationAPI
