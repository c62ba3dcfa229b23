#include "model/ItemOrder.h"

#include <optional>

namespace ConversationAPI
{
namespace
{
using State = ConversationItemState;

/** Whether an item precedes another one for what kind of call they are; nothing when their times tell. */
std::optional<bool> precedesByState(State state, State other)
{
    if ((state == State::CONNECTED) != (other == State::CONNECTED))
    {
        return state == State::CONNECTED;
    }
    const bool isActive = States::ACTIVE_OR_CLEARING.has(state);
    if (isActive != States::ACTIVE_OR_CLEARING.has(other))
    {
        return isActive;
    }
    if (isActive && States::ISOLATED_OR_TRANSFERRING.has(other))
    {
        return true;
    }
    if (isActive && States::ISOLATED_OR_TRANSFERRING.has(state))
    {
        return false;
    }
    if (States::PROGRESSING.has(state) != States::PROGRESSING.has(other))
    {
        return States::PROGRESSING.has(state);
    }
    // True for two started remote calls in either order: whichever is asked first comes first.
    if (state == State::STARTED_REMOTE_CALL || other == State::STARTED_REMOTE_CALL)
    {
        return state == State::STARTED_REMOTE_CALL;
    }
    if (States::NON_ACTIVE_CALL.has(other) && state == State::REPRESENTED_HELD_CALL)
    {
        return true;
    }
    if (States::NON_ACTIVE_CALL.has(state) && other == State::REPRESENTED_HELD_CALL)
    {
        return false;
    }
    return std::nullopt;
}
} // namespace

bool precedes(const ConversationItem& item, const ConversationItem& other, long time, long otherTime)
{
    if (item.hasConversationItemId() && item.conversationItemIdText() == other.conversationItemIdText())
    {
        return false;
    }
    const State state = item.getState();
    const State otherState = other.getState();
    if (isOrderedByTimeAlone(state) && isOrderedByTimeAlone(otherState))
    {
        return time > otherTime;
    }
    if (States::ACTIVE_OR_PROGRESSING_OR_CLEARING.has(state) &&
        States::ACTIVE_OR_PROGRESSING_OR_CLEARING.has(otherState) && item.callIdText() == other.callIdText())
    {
        return false;
    }
    return precedesByState(state, otherState).value_or(time > otherTime);
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
