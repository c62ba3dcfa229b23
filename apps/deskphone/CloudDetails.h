/** What a conversation of the cloud tells besides name, state and time, in the words that are shown. */
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ConversationAPI
{
class Conversation;
}

namespace Deskphone
{
/** The newest message: a user's text, or a notice of the cloud itself. */
struct CloudMessage
{
    std::string sender; ///< "" when nothing is known of him
    std::string subject;
    std::string text;
    int attachments = 0;
    std::optional<int> notice;              ///< what a notice tells, as a number of the library's
    std::vector<std::string> affectedUsers; ///< whom it concerns
};

/** All empty for a conversation of the telephone's own. */
struct CloudDetails
{
    std::string presence; ///< of the other party; "" when not known
    std::optional<CloudMessage> message;
    std::vector<std::string> participants; ///< of a group
    std::vector<std::string> bridgeNumbers;
    std::string pin;
    bool isModerated = false;

    /** For people, a line each: the message, the participants, how to dial in. */
    std::vector<std::string> lines() const;
};

CloudDetails cloudDetailsOf(const ConversationAPI::Conversation& conversation);
} // namespace Deskphone
