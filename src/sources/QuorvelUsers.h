/**
 * The users of the cloud service, as the conversation model wants to know them.
 *
 * The service is not owned; users stay the service's and are valid until it reports a change. UI thread only.
 */
#pragma once

#include "ConversationAPI/ConversationParticipant.h"
#include "platform/Quorvel.h"

#include <string>

namespace ConversationAPI
{
/** Matches a user by id. */
class UserIdMatcher
{
  public:
    explicit UserIdMatcher(const std::string& userId) : userId_(userId) {}

    bool operator()(const ConversationParticipant& user) const { return user.getUserId() == userId_; }

  private:
    std::string userId_;
};

class QuorvelUsers
{
  public:
    /** Null for none: then nobody is known. */
    void setService(const Quorvel::ServiceIfc* service) { service_ = service; }

    /** Null for a user whom the service does not know. */
    const Quorvel::UserIfc* find(const std::string& userId) const;

    /** Of a user whom the service does not know, every text is empty. */
    const Quorvel::UserIfc& get(const std::string& userId) const;

    /** The signed-in user; null before log-in. */
    const Quorvel::UserIfc* me() const { return service_ ? service_->me() : nullptr; }

    /** The last one known when the service does not tell; "" before log-in. */
    std::string myId() const;
    void rememberMyId(const std::string& userId) { lastKnownMyId_ = userId; }

    /** Whom a direct conversation is with: the first participant who is not the signed-in user, if there is any. */
    std::string remotePartyOf(const Quorvel::ConversationIfc& conversation) const;

    ConversationParticipant getUserData(const std::string& userId) const;

    static ConversationParticipant participantFrom(const Quorvel::UserIfc& user);

    /** A user of whom only the display name is known has that one for a last name, lest he be taken for anonymous. */
    static std::string lastNameOf(const Quorvel::UserIfc& user);

    /** The display name, else first and last name. */
    static std::string displayNameOf(const Quorvel::UserIfc& user);

    /** "" for a user without a picture. */
    static std::string picturePathOf(const Quorvel::UserIfc& user);

  private:
    const Quorvel::ServiceIfc* service_ = nullptr;
    std::string lastKnownMyId_;
};
} // namespace ConversationAPI
