/** What an item of a conversation is or, for a live call, what the call is doing. */
#pragma once

#include <cstdint>

namespace ConversationAPI
{
/** The numbers are part of the interface with the display. */
enum class ConversationItemState : std::int32_t
{
    NO_STATE = 0,
    CONNECTED = 1,
    LOCALLY_HELD = 2,
    REMOTELY_HELD = 3,
    MISSED = 4,
    DIALLED = 5,
    RECEIVED = 6,
    PLACEHOLDER = 7,
    CONFERENCE = 8,
    TEXT = 9,
    PROGRESSING_INCOMING = 10,
    PROGRESSING_OUTGOING = 11,
    SYSTEM_MESSAGE = 12,
    STARTED_REMOTE_CALL = 13,
    FORWARDED = 14,
    CLEARING = 15,
    GROUP_PICKUP_CONNECTED = 16,
    GROUP_PICKUP_INCOMING = 17,
    ISOLATED = 18,
    CALL_WAITING_ISOLATED = 19,
    VOICEMAIL = 20,
    CALL_WAITING_IGNORED = 21,
    CALL_WAITING = 22,
    REPRESENTED_HELD_CALL = 23,
    MISSED_ANSWERED_ELSEWHERE = 24,
    MISSED_GROUP_CALL = 25,
    BLIND_TRANSFERRING = 26
};
} // namespace ConversationAPI
