/**
 * What delivers items: the local journal, the network's call logs, the live calls.
 *
 * Sources and their observer are never owned by each other; the application destroys an observer after it was
 * taken off its sources. UI thread only.
 */
#pragma once

#include <string>
#include <vector>

namespace ConversationAPI
{
class ConversationItem;
class ConversationItemSourceObserverIfc;

class ConversationItemSourceIfc
{
  public:
    /** What getItemSourceType() answers. */
    enum ItemSourceType : int
    {
        LOCAL_JOURNAL = 1,
        NETWORK_CALL_LOGS = 2,
        LIVE_CALLS = 3
    };

    virtual ~ConversationItemSourceIfc() = default;

    /** New items for everything the source knows; the caller owns them. */
    virtual std::vector<ConversationItem*> getConversationItems() = 0;

    /** Reads these history entries anew and reports their items as new. */
    virtual void reloadCalls(const std::vector<std::string>& journalEntryIds) = 0;
    virtual void deleteAllCalls() = 0;
    virtual void deleteCalls(const std::vector<std::string>& journalEntryIds) = 0;

    /** A source reports to one observer; a second call replaces the first. */
    virtual void setObserver(ConversationItemSourceObserverIfc* observer) = 0;
    virtual void clearObserver() = 0;

    /** An ItemSourceType. */
    virtual int getItemSourceType() = 0;

    /** Marks missed calls as seen; false when the source could not. */
    virtual bool ageAllMissedCalls(const std::vector<std::string>& journalEntryIds) = 0;
};
} // namespace ConversationAPI
