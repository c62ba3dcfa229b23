#include "model/ItemOrder.h"

#include <optional>

namespace ConversationAPI
{
namespace
{
bool isIsolatedOrTransferring(const ConversationItem& item)
{
    return item.isIsolated() || item.isCallWaitingIsolated() || item.isBlindTransferring();
}

/** Whether an item precedes another one for what kind of call they are; nothing when their times tell. */
std::optional<bool> precedesByState(const ConversationItem& item, const ConversationItem& other)
{
    if (item.isConnected() != other.isConnected())
    {
        return item.isConnected();
    }
    if (item.isActiveOrClearing() != other.isActiveOrClearing())
    {
        return item.isActiveOrClearing();
    }
    if (item.isActiveOrClearing() && isIsolatedOrTransferring(other))
    {
        return true;
    }
    if (other.isActiveOrClearing() && isIsolatedOrTransferring(item))
    {
        return false;
    }
    if (item.isProgressing() != other.isProgressing())
    {
        return item.isProgressing();
    }
    // True for two started remote calls in either order: whichever is asked first comes first.
    if (item.isStartedRemoteCall() || other.isStartedRemoteCall())
    {
        return item.isStartedRemoteCall();
    }
    if (other.isNonActiveCall() && item.isRepresentedHeldCall())
    {
        return true;
    }
    if (item.isNonActiveCall() && other.isRepresentedHeldCall())
    {
        return false;
    }
    return std::nullopt;
}
} // namespace

bool isOrderedByTimeAlone(ConversationItemState state)
{
    switch (state)
    {
    case ConversationItemState::NO_STATE:
    case ConversationItemState::MISSED:
    case ConversationItemState::DIALLED:
    case ConversationItemState::RECEIVED:
    case ConversationItemState::PLACEHOLDER:
    case ConversationItemState::TEXT:
    case ConversationItemState::SYSTEM_MESSAGE:
    case ConversationItemState::FORWARDED:
    case ConversationItemState::VOICEMAIL:
    case ConversationItemState::CALL_WAITING_IGNORED:
    case ConversationItemState::MISSED_ANSWERED_ELSEWHERE:
    case ConversationItemState::MISSED_GROUP_CALL:
        return true;
    default:
        return false;
    }
}

bool precedes(const ConversationItem& item, const ConversationItem& other, long time, long otherTime)
{
    if (item.hasConversationItemId() && item.conversationItemIdText() == other.conversationItemIdText())
    {
        return false;
    }
    if (isOrderedByTimeAlone(item.getState()) && isOrderedByTimeAlone(other.getState()))
    {
        return time > otherTime;
    }
    if (item.isActiveOrProgressingOrClearing() && other.isActiveOrProgressingOrClearing() &&
        item.callIdText() == other.callIdText())
    {
        return false;
    }
    return precedesByState(item, other).value_or(time > otherTime);
}

ItemStanding standingOf(const ConversationItem* item)
{
    if (!item)
    {
        return {};
    }
    const ConversationItemState state = item->getState();
    return isOrderedByTimeAlone(state)
               ? ItemStanding{item->timeStampUTC(), ItemStanding::BY_TIME, ConversationItemState::NO_STATE}
               : ItemStanding{item->timeStampUTC(), ItemStanding::BESIDE_OTHERS, state};
}

bool comesBefore(const ConversationItem& timed, const ConversationItem& other, bool cameBefore)
{
    return !other.lessThanOtherConsideringCreationTime(timed) &&
           (timed.lessThanOtherConsideringCreationTime(other) || cameBefore);
}
} // namespace ConversationAPI
