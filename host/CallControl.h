/**
 * The part of call control that remembers a live call until it ends, and then enters it in the call journal.
 *
 * It stands between the telephone's calls and the source of live calls, which gets every event unchanged. Of each
 * call it keeps who it is with, when it began and when somebody spoke. The journal is told the moment in local time
 * with its offset: of a received call when it was answered, of any other when it began. Source and journal are not
 * owned and outlive it. UI thread only.
 */
#pragma once

#include "ConversationAPI/ActiveCall.h"
#include "host/JournalCall.h"

#include <map>
#include <string>

namespace ConversationAPI
{
class ActiveCallConversationItemSource;
}

namespace Host
{
class Journal;

/** What is known of a call only when it ends. */
struct CallEnd
{
    /** Somebody else took the call that rang here. */
    bool answeredElsewhere = false;

    /** Where a call went that rang here; a party without a number when it went nowhere. */
    CallPartyIdentifier forwardedTo;

    /** The hunt or pickup group that was called; empty when it was no group call. */
    std::string groupName;
    std::string groupNumber;
};

class CallControl
{
  public:
    CallControl(ConversationAPI::ActiveCallConversationItemSource& liveCalls, Journal& journal);

    /** A call has begun or changed. */
    void callReported(const ConversationAPI::ActiveCall& call);

    /**
     * A call has ended. Its entry is in the journal before the call is cleared: the conversation of a party that
     * nobody knows would otherwise be gone, and its identity with it, before the entry comes. A call of somebody
     * else, that was only shown here, leaves no entry. An unknown id is passed over.
     */
    void callEnded(const std::string& callId, const CallEnd& end = {});

    /** A call is gone without a trace in the journal. */
    void callCleared(const std::string& callId);

  private:
    struct Call
    {
        ConversationAPI::ActiveCall record;
        ConversationAPI::ActiveCall::activeCallState firstState;
        bool isOurs = false; ///< whether it rang, was dialled or was spoken here
        long beganAt = 0;    ///< seconds since the epoch, UTC
        long answeredAt = 0; ///< the same; 0 before anybody spoke
    };

    static void note(Call& call, ConversationAPI::ActiveCall::activeCallState state);
    static bool isOutgoing(const Call& call);
    static bool isReceived(const Call& call);
    static JournalCall entryOf(const Call& call, const CallEnd& end);

    ConversationAPI::ActiveCallConversationItemSource& liveCalls_;
    Journal& journal_;
    std::map<std::string, Call> calls_;
};
} // namespace Host
