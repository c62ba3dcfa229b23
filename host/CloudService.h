/**
 * A cloud collaboration service in memory: users, conversations with their items, meetings, who is signed in.
 *
 * It is told records and keeps them; what it gives out by pointer shows the record as it is now and lives as long as
 * the service. Until somebody signs in it has nothing to tell: records are kept, but nobody is told of them. Who is
 * signed in sees the conversations that he began, takes part in, or has taken part in, and no others; users he sees
 * all.
 *
 * The observer is not owned. Whatever it is told is already so when it asks; it may change the service while it is
 * told. UI thread only.
 */
#pragma once

#include "platform/Quorvel.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Host
{
struct CloudUser
{
    std::string id;
    std::string firstName;
    std::string lastName;
    std::string displayName;
    std::string email;
    std::string picturePath; ///< possibly beginning with "file://"; "" for none
    Quorvel::PresenceState presence = Quorvel::PresenceState::UNKNOWN;
};

struct CloudMeeting
{
    std::vector<std::string> bridgeNumbers;
    std::string pin;
};

struct CloudConversation
{
    std::string id;
    Quorvel::ConversationIfc::Type type = 0; ///< 1 for a group
    std::string topic;
    std::string creatorId;
    std::vector<std::string> participantIds;
    bool isModerated = false;
    std::optional<CloudMeeting> meeting;
};

struct CloudSystemMessage
{
    Quorvel::SystemItemIfc::Type type = 0;
    Quorvel::SystemItemIfc::Reason reason = 0;
    std::vector<std::string> affectedUserIds;
};

struct CloudItem
{
    std::string id;
    std::string conversationId;
    std::string creatorId;
    long creationTime = 0;     ///< seconds since the epoch, UTC
    long modificationTime = 0; ///< 0 when never changed
    std::string subject;
    std::string text;
    int numberOfAttachments = 0;
    std::optional<CloudSystemMessage> systemMessage; ///< none for a user's text
};

/** What becomes of the meeting of a conversation. Without meeting, the ways to dial in stay what they were. */
struct CloudSessionEvent
{
    std::string conversationId;
    bool isModerated = false;
    std::optional<CloudMeeting> meeting;
};

class CloudServiceObserver
{
  public:
    virtual ~CloudServiceObserver() = default;

    virtual void loggedIn() = 0;
    virtual void loggedOut() = 0;
    virtual void newConversation(const Quorvel::ConversationIfc& conversation) = 0;
    virtual void updatedConversation(const Quorvel::ConversationIfc& conversation) = 0;
    virtual void newConversationItem(const Quorvel::ConversationItemIfc& item) = 0;
    virtual void updatedConversationItem(const Quorvel::ConversationItemIfc& item) = 0;
    virtual void updatedUser(const Quorvel::UserIfc& user) = 0;
    virtual void userPresenceChanged(const std::string& userId, Quorvel::PresenceState state) = 0;
    virtual void sessionEvent(const Quorvel::RTCSessionEventIfc& event) = 0;
};

class CloudService final : public Quorvel::ServiceIfc
{
  public:
    CloudService();
    ~CloudService() override;

    CloudService(const CloudService&) = delete;
    CloudService& operator=(const CloudService&) = delete;

    /** Null for nobody. */
    void setObserver(CloudServiceObserver* observer) { observer_ = observer; }

    /** False, and nothing happens, for a user of whom the service has no record. */
    bool logIn(const std::string& userId);
    void logOut();

    /** Each adds a record or replaces the one of the same id. False for one without id. */
    bool putUser(const CloudUser& user);
    bool putConversation(const CloudConversation& conversation);

    /** False also for an item of an unknown conversation, or that is another conversation's. */
    bool putItem(const CloudItem& item);

    /** False for an unknown user. A state that the user has already is no news. */
    bool setPresence(const std::string& userId, Quorvel::PresenceState state);

    /** False for an unknown conversation. */
    bool putSessionEvent(const CloudSessionEvent& event);

    /** Those of the signed-in user, in the order in which they came. */
    std::vector<const Quorvel::ConversationIfc*> conversations() const override;

    /** Null for another's conversation, too. */
    const Quorvel::ConversationIfc* conversation(const std::string& id) const override;
    const Quorvel::UserIfc* user(const std::string& id) const override;
    const Quorvel::UserIfc* me() const override { return me_; }

  private:
    class Conversation;
    class Item;
    class User;

    Conversation* findConversation(const std::string& id) const;
    User* findUser(const std::string& id) const;
    bool isMine(const Conversation& conversation) const;
    void tell(const std::function<void(CloudServiceObserver&)>& notice) const;
    void tellOf(const Conversation& conversation, const std::function<void(CloudServiceObserver&)>& notice) const;

    CloudServiceObserver* observer_ = nullptr;
    std::map<std::string, std::unique_ptr<User>> users_;
    std::map<std::string, std::unique_ptr<Item>> items_;
    std::vector<std::unique_ptr<Conversation>> conversations_;
    const Quorvel::UserIfc* me_ = nullptr;
};
} // namespace Host
