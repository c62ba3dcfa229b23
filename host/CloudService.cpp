#include "host/CloudService.h"

#include <algorithm>
#include <set>
#include <utility>

namespace Host
{
namespace
{
class JoinDetails final : public Quorvel::JoinDetailsIfc
{
  public:
    explicit JoinDetails(CloudMeeting meeting) : meeting_(std::move(meeting)) {}

    std::vector<std::string> bridgeNumbers() const override { return meeting_.bridgeNumbers; }
    std::string pin() const override { return meeting_.pin; }

  private:
    CloudMeeting meeting_;
};

class SessionEvent final : public Quorvel::RTCSessionEventIfc
{
  public:
    explicit SessionEvent(const CloudSessionEvent& record) : record_(record)
    {
        if (record_.meeting)
        {
            joinDetails_.emplace(*record_.meeting);
        }
    }

    std::string conversationId() const override { return record_.conversationId; }
    bool isModerated() const override { return record_.isModerated; }
    const Quorvel::JoinDetailsIfc* joinDetails() const override { return joinDetails_ ? &*joinDetails_ : nullptr; }

  private:
    CloudSessionEvent record_;
    std::optional<JoinDetails> joinDetails_;
};

class SystemItem final : public Quorvel::SystemItemIfc
{
  public:
    explicit SystemItem(CloudSystemMessage record) : record_(std::move(record)) {}

    Type type() const override { return record_.type; }
    Reason reason() const override { return record_.reason; }
    std::vector<std::string> affectedUserIds() const override { return record_.affectedUserIds; }

  private:
    CloudSystemMessage record_;
};
} // namespace

class CloudService::User final : public Quorvel::UserIfc
{
  public:
    std::string id() const override { return record.id; }
    std::string firstName() const override { return record.firstName; }
    std::string lastName() const override { return record.lastName; }
    std::string displayName() const override { return record.displayName; }
    std::string email() const override { return record.email; }
    std::string picturePath() const override { return record.picturePath; }
    Quorvel::PresenceState presence() const override { return record.presence; }

    CloudUser record;
};

class CloudService::Item final : public Quorvel::ConversationItemIfc
{
  public:
    void put(const CloudItem& record)
    {
        record_ = record;
        systemItem_.reset();
        if (record.systemMessage)
        {
            systemItem_.emplace(*record.systemMessage);
        }
    }

    std::string id() const override { return record_.id; }
    std::string conversationId() const override { return record_.conversationId; }
    std::string creatorId() const override { return record_.creatorId; }
    long creationTime() const override { return record_.creationTime; }
    long modificationTime() const override { return record_.modificationTime; }
    std::string subject() const override { return record_.subject; }
    std::string text() const override { return record_.text; }
    int numberOfAttachments() const override { return record_.numberOfAttachments; }
    const Quorvel::SystemItemIfc* asSystemItem() const override { return systemItem_ ? &*systemItem_ : nullptr; }

  private:
    CloudItem record_;
    std::optional<SystemItem> systemItem_;
};

class CloudService::Conversation final : public Quorvel::ConversationIfc
{
  public:
    void put(const CloudConversation& record)
    {
        record_ = record;
        putMeeting(record.meeting);
        parties_.insert(record.creatorId);
        parties_.insert(record.participantIds.begin(), record.participantIds.end());
    }

    bool wasEverOf(const std::string& userId) const { return parties_.count(userId) != 0; }

    void put(const CloudSessionEvent& event)
    {
        record_.isModerated = event.isModerated;
        if (event.meeting)
        {
            putMeeting(event.meeting);
        }
    }

    void add(const Item* item) { items_.push_back(item); }

    std::string id() const override { return record_.id; }
    Type type() const override { return record_.type; }
    std::string topic() const override { return record_.topic; }
    std::string creatorId() const override { return record_.creatorId; }
    std::vector<std::string> participantIds() const override { return record_.participantIds; }
    std::vector<const Quorvel::ConversationItemIfc*> items() const override { return items_; }
    bool isModerated() const override { return record_.isModerated; }
    const Quorvel::JoinDetailsIfc* joinDetails() const override { return joinDetails_ ? &*joinDetails_ : nullptr; }

  private:
    void putMeeting(const std::optional<CloudMeeting>& meeting)
    {
        joinDetails_.reset();
        if (meeting)
        {
            joinDetails_.emplace(*meeting);
        }
    }

    CloudConversation record_;
    std::set<std::string> parties_; ///< also those who have left
    std::optional<JoinDetails> joinDetails_;
    std::vector<const Quorvel::ConversationItemIfc*> items_;
};

CloudService::CloudService() = default;

CloudService::~CloudService() = default;

bool CloudService::logIn(const std::string& userId)
{
    const User* user = findUser(userId);
    if (!user)
    {
        return false;
    }
    me_ = user;
    tell([](CloudServiceObserver& observer) { observer.loggedIn(); });
    return true;
}

void CloudService::logOut()
{
    const bool wasLoggedIn = std::exchange(me_, nullptr) != nullptr;
    if (wasLoggedIn && observer_)
    {
        observer_->loggedOut();
    }
}

bool CloudService::putUser(const CloudUser& user)
{
    if (user.id.empty())
    {
        return false;
    }
    std::unique_ptr<User>& place = users_[user.id];
    if (!place)
    {
        place = std::make_unique<User>();
    }
    const User* known = place.get();
    place->record = user;
    tell([known](CloudServiceObserver& observer) { observer.updatedUser(*known); });
    return true;
}

bool CloudService::setPresence(const std::string& userId, Quorvel::PresenceState state)
{
    User* user = findUser(userId);
    if (user && user->record.presence != state)
    {
        user->record.presence = state;
        const std::string id = userId;
        tell([&](CloudServiceObserver& observer) { observer.userPresenceChanged(id, state); });
    }
    return user != nullptr;
}

bool CloudService::putConversation(const CloudConversation& conversation)
{
    if (conversation.id.empty())
    {
        return false;
    }
    Conversation* known = findConversation(conversation.id);
    const bool wasMine = known && isMine(*known);
    if (!known)
    {
        known = conversations_.emplace_back(std::make_unique<Conversation>()).get();
    }
    known->put(conversation);
    tellOf(*known, [&](CloudServiceObserver& observer)
           { wasMine ? observer.updatedConversation(*known) : observer.newConversation(*known); });
    return true;
}

bool CloudService::putItem(const CloudItem& item)
{
    Conversation* conversation = findConversation(item.conversationId);
    const auto found = items_.find(item.id);
    const bool isOthers = found != items_.end() && found->second->conversationId() != item.conversationId;
    if (item.id.empty() || !conversation || isOthers)
    {
        return false;
    }
    if (found != items_.end())
    {
        Item* known = found->second.get();
        known->put(item);
        tellOf(*conversation, [known](CloudServiceObserver& observer) { observer.updatedConversationItem(*known); });
        return true;
    }
    Item* added = items_.emplace(item.id, std::make_unique<Item>()).first->second.get();
    added->put(item);
    conversation->add(added);
    tellOf(*conversation, [added](CloudServiceObserver& observer) { observer.newConversationItem(*added); });
    return true;
}

bool CloudService::putSessionEvent(const CloudSessionEvent& event)
{
    Conversation* conversation = findConversation(event.conversationId);
    if (!conversation)
    {
        return false;
    }
    conversation->put(event);
    const SessionEvent told(event);
    tellOf(*conversation, [&told](CloudServiceObserver& observer) { observer.sessionEvent(told); });
    return true;
}

std::vector<const Quorvel::ConversationIfc*> CloudService::conversations() const
{
    std::vector<const Quorvel::ConversationIfc*> mine;
    for (const auto& conversation : conversations_)
    {
        if (isMine(*conversation))
        {
            mine.push_back(conversation.get());
        }
    }
    return mine;
}

const Quorvel::ConversationIfc* CloudService::conversation(const std::string& id) const
{
    const Conversation* found = findConversation(id);
    return found && isMine(*found) ? found : nullptr;
}

const Quorvel::UserIfc* CloudService::user(const std::string& id) const
{
    return findUser(id);
}

CloudService::Conversation* CloudService::findConversation(const std::string& id) const
{
    const auto found = std::find_if(conversations_.begin(), conversations_.end(),
                                    [&id](const auto& conversation) { return conversation->id() == id; });
    return found == conversations_.end() ? nullptr : found->get();
}

CloudService::User* CloudService::findUser(const std::string& id) const
{
    const auto found = users_.find(id);
    return found == users_.end() ? nullptr : found->second.get();
}

bool CloudService::isMine(const Conversation& conversation) const
{
    return me_ && conversation.wasEverOf(me_->id());
}

void CloudService::tell(const std::function<void(CloudServiceObserver&)>& notice) const
{
    if (observer_ && me_)
    {
        notice(*observer_);
    }
}

/** Others' conversations are nothing that the signed-in user is told of. */
void CloudService::tellOf(const Conversation& conversation,
                          const std::function<void(CloudServiceObserver&)>& notice) const
{
    if (isMine(conversation))
    {
        tell(notice);
    }
}
} // namespace Host
