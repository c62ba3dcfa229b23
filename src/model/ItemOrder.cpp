#include "model/ItemOrder.h"

namespace ConversationAPI
{
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

ItemStanding standingOf(const ConversationItem* item)
{
    if (!item)
    {
        return {};
    }
    const ConversationItemState state = item->getState();
    return isOrderedByTimeAlone(state)
               ? ItemStanding{ItemStanding::BY_TIME, item->timeStampUTC(), ConversationItemState::NO_STATE}
               : ItemStanding{ItemStanding::BESIDE_OTHERS, item->timeStampUTC(), state};
}

bool comesBefore(const ConversationItem& timed, const ConversationItem& other, bool cameBefore)
{
    return !other.lessThanOtherConsideringCreationTime(timed) &&
           (timed.lessThanOtherConsideringCreationTime(other) || cameBefore);
}
} // namespace ConversationAPI
