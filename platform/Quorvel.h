/**
 * The cloud collaboration service: users, one-to-one and group conversations, their messages and meetings.
 *
 * Everything here is owned by the service and valid until the service reports a change; look-ups of unknown
 * ids give null. Called on the UI thread.
 */
#pragma once

#include <string>
#include <vector>

namespace Quorvel
{
enum class PresenceState
{
    OFFLINE = 0,
    AVAILABLE = 1,
    AWAY = 2,
    BUSY = 3,
    UNKNOWN = 4
};

class UserIfc
{
  public:
    virtual ~UserIfc() = default;

    virtual std::string id() const = 0;
    virtual std::string firstName() const = 0;
    virtual std::string lastName() const = 0;
    virtual std::string displayName() const = 0;
    virtual std::string email() const = 0;

    /** A path, possibly beginning with "file://"; empty when there is no picture. */
    virtual std::string picturePath() const = 0;
    virtual PresenceState presence() const = 0;
};

class SystemItemIfc;

/** One message of a conversation. */
class ConversationItemIfc
{
  public:
    virtual ~ConversationItemIfc() = default;

    virtual std::string id() const = 0;
    virtual std::string conversationId() const = 0;
    virtual std::string creatorId() const = 0;

    /** Seconds since the epoch, UTC. */
    virtual long creationTime() const = 0;

    /** Seconds since the epoch, UTC; 0 when the message was never changed. */
    virtual long modificationTime() const = 0;

    virtual std::string subject() const = 0;
    virtual std::string text() const = 0;
    virtual int numberOfAttachments() const = 0;

    /** The message as a system message; null when it is a user's text. */
    virtual const SystemItemIfc* asSystemItem() const = 0;
};

/** A message of the service itself: somebody joined, a call was started, and so on. */
class SystemItemIfc
{
  public:
    /** What happened: 0 to 3 and 7 to 9 reach the display, as 0 to 6; anything else counts as unknown, 7 there. */
    using Type = int;

    /** Why somebody was added: 1 and 2 reach the display, as 0 and 1; anything else counts as no reason, 2 there. */
    using Reason = int;

    virtual ~SystemItemIfc() = default;

    virtual Type type() const = 0;
    virtual Reason reason() const = 0;

    /** Whom it concerns. Where the message's creator is among them, he came or went by himself. */
    virtual std::vector<std::string> affectedUserIds() const = 0;
};

/** How to dial into the meeting of a group conversation. */
class JoinDetailsIfc
{
  public:
    virtual ~JoinDetailsIfc() = default;

    virtual std::vector<std::string> bridgeNumbers() const = 0;
    virtual std::string pin() const = 0;
};

/** A change of the real-time meeting of a conversation. */
class RTCSessionEventIfc
{
  public:
    virtual ~RTCSessionEventIfc() = default;

    virtual std::string conversationId() const = 0;
    virtual bool isModerated() const = 0;

    /** Null when the event carries no join details. */
    virtual const JoinDetailsIfc* joinDetails() const = 0;
};

class ConversationIfc
{
  public:
    /** 1 for a group, anything else is direct. */
    using Type = int;

    virtual ~ConversationIfc() = default;

    virtual std::string id() const = 0;
    virtual Type type() const = 0;
    virtual std::string topic() const = 0;
    virtual std::string creatorId() const = 0;
    virtual std::vector<std::string> participantIds() const = 0;
    virtual std::vector<const ConversationItemIfc*> items() const = 0;
    virtual bool isModerated() const = 0;

    /** Null when the conversation has no meeting. */
    virtual const JoinDetailsIfc* joinDetails() const = 0;
};

class ServiceIfc
{
  public:
    virtual ~ServiceIfc() = default;

    virtual std::vector<const ConversationIfc*> conversations() const = 0;
    virtual const ConversationIfc* conversation(const std::string& id) const = 0;
    virtual const UserIfc* user(const std::string& id) const = 0;

    /** The signed-in user; null before log-in. */
    virtual const UserIfc* me() const = 0;
};
} // namespace Quorvel
