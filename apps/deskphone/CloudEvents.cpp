#include "EventCatalogue.h"
#include "FieldWriter.h"
#include "Telephone.h"

namespace Deskphone
{
using Quorvel::PresenceState;

namespace
{
constexpr long MOST_ATTACHMENTS = 999;

/** The cloud's own numbers for what a notice tells, and why. */
constexpr long HIGHEST_NOTICE = 99;
constexpr long NO_NOTICE = -1;
constexpr Quorvel::ConversationIfc::Type GROUP = 1;

const EventFields::Choices<PresenceState>& presences()
{
    static const EventFields::Choices<PresenceState> all = {
        {"offline", PresenceState::OFFLINE}, {"available", PresenceState::AVAILABLE}, {"away", PresenceState::AWAY},
        {"busy", PresenceState::BUSY},       {"unknown", PresenceState::UNKNOWN},
    };
    return all;
}

void require(bool wasDone, const std::string& problem)
{
    if (!wasDone)
    {
        throw NotPossible(problem);
    }
}

/** How to dial in; nothing when neither number nor PIN is told. */
std::optional<Host::CloudMeeting> readMeeting(EventFields& fields)
{
    const bool isTold = fields.has("bridgeNumbers") || fields.has("pin");
    const Host::CloudMeeting meeting{fields.texts("bridgeNumbers"), fields.text("pin")};
    return isTold ? std::optional(meeting) : std::nullopt;
}

void writeMeeting(FieldWriter& fields, const std::optional<Host::CloudMeeting>& meeting)
{
    if (meeting)
    {
        fields.textsEvenIfNone("bridgeNumbers", meeting->bridgeNumbers);
        fields.text("pin", meeting->pin);
    }
}

class CloudLogin : public Event
{
  public:
    CloudLogin(EventFields& fields, long) : userId_(fields.requiredText("userId")) {}

    void apply(Telephone& telephone) const override
    {
        require(telephone.cloud().logIn(userId_), "the cloud has no user " + inQuotes(userId_));
    }

    void write(FieldWriter& fields) const override { fields.text("userId", userId_); }

  private:
    const std::string userId_;
};

class CloudUserTold : public Event
{
  public:
    CloudUserTold(EventFields& fields, long)
        : user_{fields.requiredText("userId"),
                fields.text("first"),
                fields.text("last"),
                fields.text("displayName"),
                fields.text("email"),
                fields.text("picture"),
                fields.choice("presence", presences(), PresenceState::UNKNOWN)}
    {
    }

    void apply(Telephone& telephone) const override { telephone.cloud().putUser(user_); }

    void write(FieldWriter& fields) const override
    {
        fields.text("userId", user_.id);
        fields.text("first", user_.firstName);
        fields.text("last", user_.lastName);
        fields.text("displayName", user_.displayName);
        fields.text("email", user_.email);
        fields.text("picture", user_.picturePath);
        fields.choice("presence", presences(), user_.presence);
    }

  private:
    const Host::CloudUser user_;
};

class CloudConversationTold : public Event
{
  public:
    CloudConversationTold(EventFields& fields, long)
    {
        conversation_.id = fields.requiredText("conversationId");
        conversation_.type = fields.flag("group") ? GROUP : 0;
        conversation_.topic = fields.text("topic");
        conversation_.creatorId = fields.text("creatorId");
        conversation_.participantIds = fields.texts("participantIds");
        conversation_.isModerated = fields.flag("moderated");
        conversation_.meeting = readMeeting(fields);
    }

    void apply(Telephone& telephone) const override { telephone.cloud().putConversation(conversation_); }

    void write(FieldWriter& fields) const override
    {
        fields.text("conversationId", conversation_.id);
        fields.flag("group", conversation_.type == GROUP);
        fields.text("topic", conversation_.topic);
        fields.text("creatorId", conversation_.creatorId);
        fields.texts("participantIds", conversation_.participantIds);
        fields.flag("moderated", conversation_.isModerated);
        writeMeeting(fields, conversation_.meeting);
    }

  private:
    Host::CloudConversation conversation_;
};

/** A user's text, or a notice of the cloud itself. What is asked of one only is an unknown field of the other. */
class CloudItemTold : public Event
{
  public:
    CloudItemTold(EventFields& fields, long time)
    {
        item_.id = fields.requiredText("itemId");
        item_.conversationId = fields.requiredText("conversationId");
        item_.creatorId = fields.text("creatorId");
        item_.creationTime = fields.moment("created", time);
        item_.modificationTime = fields.moment("modified", 0);
        const long notice = fields.number("notice", 0, HIGHEST_NOTICE, NO_NOTICE);
        if (notice == NO_NOTICE)
        {
            item_.subject = fields.text("subject");
            item_.text = fields.text("text");
            item_.numberOfAttachments = static_cast<int>(fields.number("attachments", 0, MOST_ATTACHMENTS, 0));
            return;
        }
        const long reason = fields.number("reason", 0, HIGHEST_NOTICE, 0);
        item_.systemMessage = Host::CloudSystemMessage{static_cast<int>(notice), static_cast<int>(reason),
                                                       fields.texts("affectedUserIds")};
    }

    void apply(Telephone& telephone) const override
    {
        require(telephone.cloud().putItem(item_),
                "the cloud has no conversation " + inQuotes(item_.conversationId) + ", or the item is in another one");
    }

    void write(FieldWriter& fields) const override
    {
        fields.text("itemId", item_.id);
        fields.text("conversationId", item_.conversationId);
        fields.text("creatorId", item_.creatorId);
        fields.moment("created", item_.creationTime);
        if (item_.modificationTime != 0)
        {
            fields.moment("modified", item_.modificationTime);
        }
        fields.text("subject", item_.subject);
        fields.text("text", item_.text);
        fields.number("attachments", item_.numberOfAttachments, 0);
        if (item_.systemMessage)
        {
            fields.number("notice", item_.systemMessage->type, NO_NOTICE);
            fields.number("reason", item_.systemMessage->reason, 0);
            fields.texts("affectedUserIds", item_.systemMessage->affectedUserIds);
        }
    }

  private:
    Host::CloudItem item_;
};

class CloudPresence : public Event
{
  public:
    CloudPresence(EventFields& fields, long)
        : userId_(fields.requiredText("userId")), presence_(fields.requiredChoice("presence", presences()))
    {
    }

    void apply(Telephone& telephone) const override
    {
        require(telephone.cloud().setPresence(userId_, presence_), "the cloud has no user " + inQuotes(userId_));
    }

    void write(FieldWriter& fields) const override
    {
        fields.text("userId", userId_);
        fields.choice("presence", presences(), presence_);
    }

  private:
    const std::string userId_;
    const PresenceState presence_;
};

class CloudSession : public Event
{
  public:
    CloudSession(EventFields& fields, long)
        : session_{fields.requiredText("conversationId"), fields.flag("moderated"), readMeeting(fields)}
    {
    }

    void apply(Telephone& telephone) const override
    {
        require(telephone.cloud().putSessionEvent(session_),
                "the cloud has no conversation " + inQuotes(session_.conversationId));
    }

    void write(FieldWriter& fields) const override
    {
        fields.text("conversationId", session_.conversationId);
        fields.flag("moderated", session_.isModerated);
        writeMeeting(fields, session_.meeting);
    }

  private:
    const Host::CloudSessionEvent session_;
};

void logOut(Telephone& telephone)
{
    telephone.cloud().logOut();
}
} // namespace

void addCloudEvents(EventCatalogue& catalogue)
{
    catalogue.add<CloudLogin>("cloud-login");
    catalogue.add("cloud-logout", logOut);
    catalogue.add<CloudUserTold>("cloud-user");
    catalogue.add<CloudConversationTold>("cloud-conversation");
    catalogue.add<CloudItemTold>("cloud-item");
    catalogue.add<CloudPresence>("cloud-presence");
    catalogue.add<CloudSession>("cloud-meeting");
}
} // namespace Deskphone
