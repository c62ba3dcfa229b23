/** Names and identifiers that carry a meaning of their own throughout the library. */
#pragma once

#include <string_view>

namespace ConversationAPI
{
/** Surname of a caller of whom nothing is known; all such callers share one conversation. */
inline constexpr std::string_view ANONYMOUS_NAME = "Caller.Unknown.XXX";

/** Surname of a call placed by a computer on the user's behalf until its party is known; never groups. */
inline constexpr std::string_view CTI_ASSISTED_NAME = "CTI Assisted";

/** Number of a party that the network does not tell. */
inline constexpr std::string_view NO_NUMBER_PROVIDED = "NoNumberProvided";

/** Call id of a ringing call of the user's pickup group. */
inline constexpr std::string_view GROUP_PICKUP_CALL_ID = "GPU";

/** Id under which every phantom conversation shows itself. */
inline constexpr std::string_view PHANTOM_CONVERSATION_ID = "PhantomConversation";

/** Id of a conversation that is only on its way into another one. */
inline constexpr std::string_view TEMPORARY_CONVERSATION_ID = "tempId";
} // namespace ConversationAPI
