#include "sources/RemoteSearch.h"

#include "ConversationAPI/Conversation.h"
#include "Log.h"
#include "sources/ContactConversations.h"
#include "sources/DirectoryServiceConversationSourceLog.h"
#include "sources/FoundContacts.h"

#include <set>
#include <utility>

namespace ConversationAPI
{
namespace
{
constexpr auto DIRECTORY_RESULTS = ConversationSearchObserverIfc::DIRECTORY_RESULTS;
constexpr auto WEB_SERVICE_RESULTS = ConversationSearchObserverIfc::WEB_SERVICE_RESULTS;

/** Ids in the order in which they came, each once and none empty. */
class DistinctIds
{
  public:
    void add(const std::string& id)
    {
        if (!id.empty() && known_.insert(id).second)
        {
            ids_.push_back(id);
        }
    }
    const std::vector<std::string>& inOrder() const { return ids_; }

  private:
    std::vector<std::string> ids_;
    std::set<std::string> known_;
};
} // namespace

RemoteSearch::RemoteSearch(DirectoryServiceIfc* directoryService, ContactConversations& maker, FoundContacts& found)
    : directoryService_(directoryService), maker_(maker), found_(found)
{
}

bool RemoteSearch::awaits(const std::string& searchId, Type from) const
{
    if (searchId != id_ || !(from == WEB_SERVICE_RESULTS ? isWebServiceAwaited_ : isDirectoryAwaited_))
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "nobody waits for results or end of searchId = %s any more",
                         searchId.c_str());
        return false;
    }
    return true;
}

/** Typing goes on while the directory still answers: it need not finish what nobody waits for. */
void RemoteSearch::start(const std::string& searchId, const std::string& text, ConversationSearchObserverIfc& observer)
{
    const std::string before = isDirectoryAwaited_ ? id_ : "";
    const std::string id = searchId;
    id_ = id;
    observer_ = &observer;
    isDirectoryAwaited_ = isWebServiceAwaited_ = true;
    isEndTold_ = false;
    found_.keepOnly(id);
    if (!directoryService_)
    {
        end(id, DIRECTORY_RESULTS);
        return;
    }
    if (!before.empty() && before != id)
    {
        directoryService_->cancelSearch(before);
    }
    if (awaits(id, DIRECTORY_RESULTS)) // and no other search began meanwhile
    {
        directoryService_->search(id, text);
    }
}

void RemoteSearch::cancel(const std::string& searchId)
{
    if (searchId == id_)
    {
        drop();
    }
}

void RemoteSearch::drop()
{
    const std::string id = std::exchange(id_, "");
    observer_ = nullptr;
    isDirectoryAwaited_ = isWebServiceAwaited_ = false;
    if (directoryService_ && !id.empty())
    {
        directoryService_->cancelSearch(id);
    }
}

void RemoteSearch::directorySearchResults(const std::string& searchId, const PhonebookSearchResults& results)
{
    if (!awaits(searchId, DIRECTORY_RESULTS))
    {
        return;
    }
    DistinctIds ids;
    for (const PhonebookSearchResults::Entry& entry : results.entries)
    {
        ids.add(addConversationFromSearchResult(entry));
    }
    observer_->searchResults(std::string(id_), ids.inOrder(), DIRECTORY_RESULTS);
}

/** "" for an entry that is no contact. */
std::string RemoteSearch::addConversationFromSearchResult(const PhonebookSearchResults::Entry& entry)
{
    const DirectoryContact contact = contactOfEntry(entry, id_);
    if (entryIsNicknameResults(entry) || namesNobody(contact))
    {
        return {};
    }
    FoundContacts::Made found = maker_.createConversationFromContact(contact);
    return found ? found_.addDirectoryResult(std::move(found)) : std::string();
}

void RemoteSearch::wsiSearchResults(const std::string& searchId, std::vector<WSIItem> items)
{
    for (const WSIItem& item : items)
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "wsiSearchResults item firstname: %s, surname: %s",
                         item.firstName.c_str(), item.lastName.c_str());
    }
    if (!awaits(searchId, WEB_SERVICE_RESULTS))
    {
        return;
    }
    DistinctIds ids;
    for (WSIItem& item : items)
    {
        item.searchId = id_;
        ids.add(addConversationFromWSIItem(item));
    }
    observer_->searchResults(std::string(id_), ids.inOrder(), WEB_SERVICE_RESULTS);
}

std::string RemoteSearch::addConversationFromWSIItem(const WSIItem& item)
{
    FoundContacts::Made found = maker_.createConversationFromWSIItem(item);
    return found ? found_.addWebServiceResult(std::move(found)) : std::string();
}

void RemoteSearch::end(const std::string& searchId, Type from)
{
    if (!awaits(searchId, from))
    {
        return;
    }
    (from == WEB_SERVICE_RESULTS ? isWebServiceAwaited_ : isDirectoryAwaited_) = false;
    ConversationSearchObserverIfc* const observer = observer_;
    if (!isWebServiceAwaited_ && !isDirectoryAwaited_)
    {
        observer_ = nullptr; // it may go now, as nothing will be told any more
    }
    if (!std::exchange(isEndTold_, true))
    {
        observer->searchEnded(std::string(id_));
    }
}
} // namespace ConversationAPI
