#include "sources/QuorvelUsers.h"

#include "ConversationAPI/ContactDetails.h"
#include "Log.h"
#include "sources/QuorvelServiceConversationSourceLog.h"
#include "sources/QuorvelValues.h"

#include <algorithm>
#include <filesystem>

namespace ConversationAPI
{
namespace
{
/** Where the directory leaves the picture of whom it found last. */
constexpr const char* DIRECTORY_PICTURE_PATH = "/tmp/ldappic";

class NullUser : public Quorvel::UserIfc
{
  public:
    std::string id() const override { return {}; }
    std::string firstName() const override { return {}; }
    std::string lastName() const override { return {}; }
    std::string displayName() const override { return {}; }
    std::string email() const override { return {}; }
    std::string picturePath() const override { return {}; }
    Quorvel::PresenceState presence() const override { return Quorvel::PresenceState::UNKNOWN; }
};

bool isThereDirectoryPicture()
{
    std::error_code problem;
    return std::filesystem::is_regular_file(DIRECTORY_PICTURE_PATH, problem);
}
} // namespace

const Quorvel::UserIfc* QuorvelUsers::find(const std::string& userId) const
{
    return service_ && !userId.empty() ? service_->user(userId) : nullptr;
}

const Quorvel::UserIfc& QuorvelUsers::get(const std::string& userId) const
{
    static const NullUser nobody;
    const Quorvel::UserIfc* user = find(userId);
    return user ? *user : nobody;
}

std::string QuorvelUsers::myId() const
{
    const Quorvel::UserIfc* user = me();
    return user ? user->id() : lastKnownMyId_;
}

std::string QuorvelUsers::remotePartyOf(const Quorvel::ConversationIfc& conversation) const
{
    std::vector<std::string> parties = conversation.participantIds();
    parties.push_back(conversation.creatorId());
    parties.erase(std::remove(parties.begin(), parties.end(), std::string()), parties.end());
    const std::string mine = myId();
    const auto other = std::find_if(parties.begin(), parties.end(), [&mine](const auto& id) { return id != mine; });
    return other == parties.end() ? mine : *other;
}

ConversationParticipant QuorvelUsers::getUserData(const std::string& userId) const
{
    const Quorvel::UserIfc& user = get(userId);
    CONVERSATION_LOG(
        QUORVEL_SOURCE_LOG_FILE, 5,
        "QuorvelServiceConversationSource::getUserData() firstName='%s' lastName='%s' contactImagePath='%s'",
        user.firstName().c_str(), user.lastName().c_str(), picturePathOf(user).c_str());
    ConversationParticipant participant = participantFrom(user);
    participant.setUserId(userId); // by which he is found when the service comes to know him
    return participant;
}

ConversationParticipant QuorvelUsers::participantFrom(const Quorvel::UserIfc& user)
{
    ConversationParticipant participant(CallPartyIdentifier(user.firstName(), lastNameOf(user), "",
                                                            CallPartyIdentifier::NO_ICON, picturePathOf(user), false));
    participant.setUserId(user.id());
    participant.setPersonalData(user.email(), "", "", "", "");
    return participant;
}

std::string QuorvelUsers::lastNameOf(const Quorvel::UserIfc& user)
{
    const std::string name = user.lastName();
    return name.empty() && user.firstName().empty() ? user.displayName() : name;
}

std::string QuorvelUsers::displayNameOf(const Quorvel::UserIfc& user)
{
    const std::string name = user.displayName();
    return name.empty() ? joinNames(user.firstName(), user.lastName()) : name;
}

std::string QuorvelUsers::picturePathOf(const Quorvel::UserIfc& user)
{
    const std::string path = convertQuorvelPicturePath(user.picturePath());
    const bool hasOnlyDirectoryPicture = path.empty() && !user.id().empty() && isThereDirectoryPicture();
    return hasOnlyDirectoryPicture ? DIRECTORY_PICTURE_PATH : path;
}
} // namespace ConversationAPI
