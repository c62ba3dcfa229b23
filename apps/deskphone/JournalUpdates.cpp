#include "JournalUpdates.h"

#include "ConversationAPI/JournalServiceConversationItemSource.h"
#include "host/EventLoop.h"

#include <deque>
#include <vector>

namespace Deskphone
{
namespace
{
template <typename Call>
std::string timeOfNewest(const std::vector<Call>& calls)
{
    return calls.empty() ? "" : calls.front().getCallTime();
}

std::string timeOfNewestCall(const MissedCallItem& entry)
{
    return timeOfNewest(entry.getMissedCallInfoList());
}

std::string timeOfNewestCall(const ReceivedCallItem& entry)
{
    return timeOfNewest(entry.getReceivedCallInfoList());
}

std::string timeOfNewestCall(const DialledCallItem& entry)
{
    return timeOfNewest(entry.getDialledCallInfoList());
}

std::string timeOfNewestCall(const ForwardedCallItem& entry)
{
    return timeOfNewest(entry.getForwardedCallInfoList());
}
} // namespace

JournalUpdates::JournalUpdates(ConversationAPI::JournalServiceConversationItemSource& history,
                               JournalServiceIfc& journal)
    : history_(history)
{
    learn<MissedCallItem>(journal);
    learn<ReceivedCallItem>(journal);
    learn<DialledCallItem>(journal);
    learn<ForwardedCallItem>(journal);
}

template <typename Record>
void JournalUpdates::learn(JournalServiceIfc& journal)
{
    std::deque<Record> entries;
    journal.getCalls(entries);
    for (const Record& entry : entries)
    {
        newestCalls_[entry.getEntryId()] = timeOfNewestCall(entry);
    }
}

void JournalUpdates::missedCallsUpdate(MissedCallItem entry, std::string entryId, ActionType action)
{
    handOn(entry, entryId, action, [&] { history_.missedCallsUpdate(entry, entryId, action); });
}

void JournalUpdates::receivedCallsUpdate(ReceivedCallItem entry, std::string entryId, ActionType action)
{
    handOn(entry, entryId, action, [&] { history_.receivedCallsUpdate(entry, entryId, action); });
}

void JournalUpdates::dialledCallsUpdate(DialledCallItem entry, std::string entryId, ActionType action)
{
    handOn(entry, entryId, action, [&] { history_.dialledCallsUpdate(entry, entryId, action); });
}

void JournalUpdates::forwardedCallsUpdate(ForwardedCallItem entry, std::string entryId, ActionType action)
{
    handOn(entry, entryId, action, [&] { history_.forwardedCallsUpdate(entry, entryId, action); });
}

template <typename Record, typename Forward>
void JournalUpdates::handOn(const Record& entry, const std::string& entryId, ActionType action, Forward forward)
{
    if (action == DELETED)
    {
        newestCalls_.erase(entryId);
        makeHistoryAnewSoon();
        return;
    }
    const std::string newest = timeOfNewestCall(entry);
    const auto before = newestCalls_.find(entryId);
    const bool hasNewerCall = before == newestCalls_.end() || before->second != newest;
    newestCalls_[entryId] = newest;
    hasNewerCall ? forward() : makeHistoryAnewSoon();
}

void JournalUpdates::makeHistoryAnewSoon()
{
    if (isToBeMadeAnew_)
    {
        return;
    }
    isToBeMadeAnew_ = true;
    Host::EventLoop::current()->post(
        [this, isAlive = std::weak_ptr<bool>(isAlive_)]
        {
            if (!isAlive.expired())
            {
                isToBeMadeAnew_ = false;
                history_.notifyObserver();
            }
        });
}
} // namespace Deskphone
