/** What the cloud service's values are in the conversation model. */
#pragma once

#include "ConversationAPI/ConversationContact.h"
#include "ConversationAPI/ConversationItem.h"
#include "platform/Quorvel.h"

#include <string>

namespace ConversationAPI
{
ConversationContact::PresenceState convertQuorvelPresenceState(Quorvel::PresenceState state);

/** What is no group counts as direct. */
ConversationContact::Type convertQuorvelConversationType(Quorvel::ConversationIfc::Type type);
ConversationItem::systemMessageType convertQuorvelSystemMessageType(Quorvel::SystemItemIfc::Type type);
ConversationItem::addParticipantReason convertQuorvelSystemMessageReason(Quorvel::SystemItemIfc::Reason reason);

/** Where the picture lies: the path without "file://". */
std::string convertQuorvelPicturePath(const std::string& path);
} // namespace ConversationAPI
