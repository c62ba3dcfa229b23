/**
 * Hands what the call journal reports on to the source of the history.
 *
 * The source makes one item of a change: the newest call of the entry. That is all there is to a new entry and to a
 * call that is newer than the others. Whatever else may have changed has all of the history made anew: calls that
 * were seen, entries that went, a call that began before one that ended earlier. It is made anew once, as soon as the
 * event loop gets to it, for everything that was reported until then. The source is not owned and outlives this
 * object; the journal is read at first only. UI thread only.
 */
#pragma once

#include "platform/JournalServiceIfc.h"

#include <map>
#include <memory>
#include <string>

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
    template <typename Record>
    void learn(JournalServiceIfc& journal);
    template <typename Record, typename Forward>
    void handOn(const Record& entry, const std::string& entryId, ActionType action, Forward forward);
    void makeHistoryAnewSoon();

    ConversationAPI::JournalServiceConversationItemSource& history_;
    std::map<std::string, std::string> newestCalls_; ///< of the entries: when it was
    bool isToBeMadeAnew_ = false;
    std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true); ///< what is posted asks it
};
} // namespace Deskphone
