/**
 * The source of live calls: keeps what call control last told of each and reports them as items.
 *
 * Item factory and observer are not owned; items passed to the observer are. Call control delivers its events
 * on the UI thread. A call ends by clearActiveCallEvent() alone, whatever its state.
 */
#pragma once

#include "ConversationAPI/ActiveCall.h"
#include "ConversationAPI/ConversationItemSourceIfc.h"

#include <map>
#include <string>
#include <vector>

namespace ConversationAPI
{
class ConversationItemFactory;

class ActiveCallConversationItemSource : public ConversationItemSourceIfc
{
  public:
    explicit ActiveCallConversationItemSource(ConversationItemFactory* itemFactory);

    /** A call appeared or changed. Without an observer it is kept and reported when somebody asks. */
    void activeCallEvent(const ActiveCall& call);

    /** A call is gone; an id that was never seen is passed over. */
    void clearActiveCallEvent(const std::string& callId);

    /** Accepted and ignored: changes of details arrive through activeCallEvent(). */
    void callDetailsUpdatedEvent(const ActiveCall& call);

    bool callIsCached(const std::string& callId) const;
    bool callNotCached(const std::string& callId) const;

    /** One new item for each call, in the order of their ids; the caller owns them. */
    std::vector<ConversationItem*> getConversationItems() override;

    /** Live calls are no history: these do nothing. */
    void reloadCalls(const std::vector<std::string>& journalEntryIds) override;
    void deleteAllCalls() override;
    void deleteCalls(const std::vector<std::string>& journalEntryIds) override;
    void setObserver(ConversationItemSourceObserverIfc* observer) override;
    void clearObserver() override;
    int getItemSourceType() override;

    /** Nothing to mark; always true. */
    bool ageAllMissedCalls(const std::vector<std::string>& journalEntryIds) override;

  private:
    void addCallToCache(const ActiveCall& call);
    void updateCachedCall(const ActiveCall& call);
    ConversationItem* createItemFromCache(const ActiveCall& call);

    ConversationItemSourceObserverIfc* observer_ = nullptr;
    std::map<std::string, ActiveCall> calls_;
    ConversationItemFactory* itemFactory_;
};
} // namespace ConversationAPI
