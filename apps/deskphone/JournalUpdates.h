/**
 * Hands what the call journal reports on to the source of the history.
 *
 * The source makes one item of a report: the newest call of the entry. That is all there is to most reports. Whatever
 * else may have changed has all of the history made anew: calls that were seen, calls or entries that went, a call
 * that began before one that ended earlier, calls that come together. It is made anew once, as soon as the event loop
 * gets to it, for everything that was reported until then, or at once on a thread without a loop. The source is not
 * owned and outlives this object; the journal is read at first only. UI thread only.
 */
#pragma once

#include "platform/JournalServiceIfc.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ConversationAPI
{
class JournalServiceConversationItemSource;
}

namespace Deskphone
{
class JournalUpdates : public JournalServiceObserverIfc
{
  public:
    JournalUpdates(ConversationAPI::JournalServiceConversationItemSource& history, JournalServiceIfc& journal);

    void missedCallsUpdate(MissedCallItem entry, std::string entryId, ActionType action) override;
    void receivedCallsUpdate(ReceivedCallItem entry, std::string entryId, ActionType action) override;
    void dialledCallsUpdate(DialledCallItem entry, std::string entryId, ActionType action) override;
    void forwardedCallsUpdate(ForwardedCallItem entry, std::string entryId, ActionType action) override;

  private:
    using Times = std::vector<std::string>; ///< of calls, newest first

    template <typename Record>
    void rememberCalls(JournalServiceIfc& journal);
    static bool isOneNewerCall(const Times& before, const Times& now);
    template <typename Record, typename Forward>
    void forwardOrMakeAnew(const Record& entry, const std::string& entryId, ActionType action, Forward forward);
    void makeHistoryAnewSoon();

    ConversationAPI::JournalServiceConversationItemSource& history_;
    std::map<std::string, Times> shown_; ///< the calls of each entry that the history has
    bool isToBeMadeAnew_ = false;
    std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true); ///< what is posted asks it
};
} // namespace Deskphone
