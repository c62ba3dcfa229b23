/** Why a conversation tells its lists about a number. */
#pragma once

namespace ConversationAPI
{
enum class numberUpdateReason : int
{
    UPDATED = 0,
    ADDED = 1,
    DELETED = 2,
    DUMMY = 3
};

/** The reason's name for log lines; "UNKNOWN" for a value that is none. */
const char* numberUpdateReasonToString(const numberUpdateReason& reason);
} // namespace ConversationAPI
