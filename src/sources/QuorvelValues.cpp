#include "sources/QuorvelValues.h"

#include <string_view>

namespace ConversationAPI
{
namespace
{
constexpr std::string_view FILE_PREFIX = "file://";
}

ConversationContact::PresenceState convertQuorvelPresenceState(Quorvel::PresenceState state)
{
    switch (state)
    {
    case Quorvel::PresenceState::OFFLINE:
        return ConversationContact::OFFLINE;
    case Quorvel::PresenceState::AVAILABLE:
        return ConversationContact::AVAILABLE;
    case Quorvel::PresenceState::AWAY:
        return ConversationContact::AWAY;
    case Quorvel::PresenceState::BUSY:
        return ConversationContact::BUSY;
    default:
        return ConversationContact::UNKNOWN_PRESENCE;
    }
}

ConversationContact::Type convertQuorvelConversationType(Quorvel::ConversationIfc::Type type)
{
    return type == 1 ? ConversationContact::GROUP : ConversationContact::DIRECT;
}

/** 4 to 6 are other messages in the cloud than here; they are not shown as anything in particular. */
ConversationItem::systemMessageType convertQuorvelSystemMessageType(Quorvel::SystemItemIfc::Type type)
{
    switch (type)
    {
    case 0:
    case 1:
    case 2:
    case 3:
        return static_cast<ConversationItem::systemMessageType>(type);
    case 7:
    case 8:
    case 9:
        return static_cast<ConversationItem::systemMessageType>(type - 3);
    default:
        return ConversationItem::NO_SYSTEM_MESSAGE;
    }
}

ConversationItem::addParticipantReason convertQuorvelSystemMessageReason(Quorvel::SystemItemIfc::Reason reason)
{
    return reason == 1 || reason == 2 ? static_cast<ConversationItem::addParticipantReason>(reason - 1)
                                      : ConversationItem::NO_ADD_PARTICIPANT_REASON;
}

std::string convertQuorvelPicturePath(const std::string& path)
{
    const bool isPrefixed = path.compare(0, FILE_PREFIX.size(), FILE_PREFIX) == 0;
    return isPrefixed ? path.substr(FILE_PREFIX.size()) : path;
}
} // namespace ConversationAPI
