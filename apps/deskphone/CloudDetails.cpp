#include "CloudDetails.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/WellKnownNames.h"
#include "TextColumn.h"

namespace Deskphone
{
using ConversationAPI::Conversation;
using ConversationAPI::ConversationItem;
using ConversationAPI::ConversationParticipant;
using State = ConversationAPI::ConversationItemState;

namespace
{
std::string presenceText(Conversation::PresenceState presence)
{
    switch (presence)
    {
    case Conversation::OFFLINE:
        return "offline";
    case Conversation::AVAILABLE:
        return "available";
    case Conversation::AWAY:
        return "away";
    case Conversation::BUSY:
        return "busy";
    case Conversation::UNKNOWN_PRESENCE:
        break;
    }
    return "";
}

/** The id, when nothing else is known of the user: without a name, participants count as anonymous. */
std::string userName(const ConversationParticipant& user)
{
    const std::string name = joined({user.getFirstName(), user.getSurname()}, " ");
    return name.empty() || name == ConversationAPI::ANONYMOUS_NAME ? user.getUserId() : name;
}

std::optional<CloudMessage> messageOf(const ConversationItem* item)
{
    const bool isNotice = item != nullptr && item->getState() == State::SYSTEM_MESSAGE;
    if (item == nullptr || (!isNotice && item->getState() != State::TEXT))
    {
        return std::nullopt;
    }
    CloudMessage message;
    message.sender = userName(item->creator());
    message.subject = item->getItemSubjectText();
    message.text = item->getItemText();
    message.attachments = item->getNumberOfAttachments();
    if (isNotice)
    {
        message.notice = item->getType();
        message.affectedUsers = item->getAffectedParticipants();
    }
    return message;
}

std::string describe(const CloudMessage& message)
{
    const std::string what =
        message.notice
            ? joined({"notice " + std::to_string(*message.notice), joined(message.affectedUsers, ", ")}, ", ")
            : joined({message.subject, message.text}, " – ");
    const std::string attachments =
        message.attachments == 0 ? "" : "(attachments: " + std::to_string(message.attachments) + ")";
    return joined({message.sender, joined({what, attachments}, " ")}, ": ");
}

std::string describeMeeting(const CloudDetails& details)
{
    const std::string pin = details.pin.empty() ? "" : "PIN " + details.pin;
    return joined({joined(details.bridgeNumbers, ", "), pin, details.isModerated ? "moderated" : ""}, ", ");
}
} // namespace

std::vector<std::string> CloudDetails::lines() const
{
    std::vector<std::string> all;
    if (message)
    {
        all.push_back(describe(*message));
    }
    if (!participants.empty())
    {
        all.push_back("with " + joined(participants, ", "));
    }
    const std::string meeting = describeMeeting(*this);
    if (!meeting.empty())
    {
        all.push_back("meeting: " + meeting);
    }
    return all;
}

CloudDetails cloudDetailsOf(const Conversation& conversation)
{
    CloudDetails details;
    details.presence = presenceText(conversation.getPresenceState());
    details.message = messageOf(conversation.shownItem());
    for (const ConversationParticipant& participant : conversation.getGroupParticipants())
    {
        details.participants.push_back(userName(participant));
    }
    details.bridgeNumbers = conversation.getBridgeNumbers();
    details.pin = conversation.getGroupCallPin();
    details.isModerated = conversation.isModerated();
    return details;
}
} // namespace Deskphone
