/**
 * The search that directory and web service are answering, and who waits for the answers.
 *
 * Both answer under one id, in any order; the observer is told of one end, the first. It may start another search while
 * it is told something. Nothing given to it is owned. Services, maker and contacts outlive it; an observer is known
 * until both have answered to the end, or its search is cancelled, dropped or replaced.
 */
#pragma once

#include "ConversationAPI/ConversationSearchObserverIfc.h"
#include "platform/DirectoryServiceIfc.h"
#include "platform/WSIServiceIfc.h"

#include <string>
#include <vector>

namespace ConversationAPI
{
class ContactConversations;
class FoundContacts;

class RemoteSearch
{
  public:
    using Type = ConversationSearchObserverIfc::SearchResultsType;

    /** Without a directory service, the directory's part of a search ends at once. */
    RemoteSearch(DirectoryServiceIfc* directoryService, ContactConversations& maker, FoundContacts& found);

    /** In the place of the search before, of which nothing is awaited any more and whose results go. */
    void start(const std::string& searchId, const std::string& text, ConversationSearchObserverIfc& observer);

    /** Nothing is told of the search any more; what it has found stays. Another search than that goes on. */
    void cancel(const std::string& searchId);

    /** The same, whichever search it is. */
    void drop();

    /** Results and ends that nobody waits for are dropped. */
    void directorySearchResults(const std::string& searchId, const PhonebookSearchResults& results);
    void wsiSearchResults(const std::string& searchId, std::vector<WSIItem> items);
    void end(const std::string& searchId, Type from);

  private:
    bool awaits(const std::string& searchId, Type from) const;
    std::string addConversationFromSearchResult(const PhonebookSearchResults::Entry& entry);
    std::string addConversationFromWSIItem(const WSIItem& item);

    DirectoryServiceIfc* directoryService_;
    ContactConversations& maker_;
    FoundContacts& found_;
    std::string id_;
    ConversationSearchObserverIfc* observer_ = nullptr;
    bool isDirectoryAwaited_ = false;
    bool isWebServiceAwaited_ = false;
    bool isEndTold_ = false;
};
} // namespace ConversationAPI
