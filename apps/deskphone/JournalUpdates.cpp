#include "JournalUpdates.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/JournalServiceConversationItemSource.h"
#include "host/EventLoop.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <utility>

namespace Deskphone
{
namespace
{
template <typename Call>
std::vector<std::string> times(const std::vector<Call>& calls)
{
    std::vector<std::string> all;
    std::transform(calls.begin(), calls.end(), std::back_inserter(all),
                   [](const Call& call) { return call.getCallTime(); });
    return all;
}

std::vector<std::string> timesOf(const MissedCallItem& entry)
{
    return times(entry.getMissedCallInfoList());
}

std::vector<std::string> timesOf(const ReceivedCallItem& entry)
{
    return times(entry.getReceivedCallInfoList());
}

std::vector<std::string> timesOf(const DialledCallItem& entry)
{
    return times(entry.getDialledCallInfoList());
}

std::vector<std::string> timesOf(const ForwardedCallItem& entry)
{
    return times(entry.getForwardedCallInfoList());
}
} // namespace

JournalUpdates::JournalUpdates(ConversationAPI::JournalServiceConversationItemSource& history,
                               JournalServiceIfc& journal)
    : history_(history)
{
    rememberCalls<MissedCallItem>(journal);
    rememberCalls<ReceivedCallItem>(journal);
    rememberCalls<DialledCallItem>(journal);
    rememberCalls<ForwardedCallItem>(journal);
}

template <typename Record>
void JournalUpdates::rememberCalls(JournalServiceIfc& journal)
{
    std::deque<Record> entries;
    journal.getCalls(entries);
    for (const Record& entry : entries)
    {
        shown_[entry.getEntryId()] = timesOf(entry);
    }
}

void JournalUpdates::missedCallsUpdate(MissedCallItem entry, std::string entryId, ActionType action)
{
    forwardOrMakeAnew(entry, entryId, action, [&] { history_.missedCallsUpdate(entry, entryId, action); });
}

void JournalUpdates::receivedCallsUpdate(ReceivedCallItem entry, std::string entryId, ActionType action)
{
    forwardOrMakeAnew(entry, entryId, action, [&] { history_.receivedCallsUpdate(entry, entryId, action); });
}

void JournalUpdates::dialledCallsUpdate(DialledCallItem entry, std::string entryId, ActionType action)
{
    forwardOrMakeAnew(entry, entryId, action, [&] { history_.dialledCallsUpdate(entry, entryId, action); });
}

void JournalUpdates::forwardedCallsUpdate(ForwardedCallItem entry, std::string entryId, ActionType action)
{
    forwardOrMakeAnew(entry, entryId, action, [&] { history_.forwardedCallsUpdate(entry, entryId, action); });
}

template <typename Record, typename Forward>
void JournalUpdates::forwardOrMakeAnew(const Record& entry, const std::string& entryId, ActionType action,
                                       Forward forward)
{
    if (action == DELETED)
    {
        shown_.erase(entryId);
        makeHistoryAnewSoon();
        return;
    }
    Times now = timesOf(entry);
    Times& before = shown_[entryId];
    const bool newestIsAll = isOneNewerCall(before, now);
    before = std::move(now);
    newestIsAll ? forward() : makeHistoryAnewSoon();
}

bool JournalUpdates::isOneNewerCall(const Times& before, const Times& now)
{
    // An entry with more calls than a row shows: nobody sees the oldest go.
    const bool hasOldestGone =
        before.size() == now.size() && now.size() >= ConversationAPI::Conversation::MOST_HISTORY_ITEMS;
    return (now.size() == before.size() + 1 || hasOldestGone) && std::equal(now.begin() + 1, now.end(), before.begin());
}

void JournalUpdates::makeHistoryAnewSoon()
{
    if (isToBeMadeAnew_)
    {
        return;
    }
    Host::EventLoop* const loop = Host::EventLoop::current();
    if (loop == nullptr)
    {
        history_.notifyObserver();
        return;
    }
    isToBeMadeAnew_ = true;
    loop->post(
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
