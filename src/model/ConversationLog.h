/** The name under which everything that a conversation consists of writes its log lines. */
#pragma once

namespace ConversationAPI
{
inline constexpr const char* CONVERSATION_LOG_FILE = "./src/Conversation";
} // namespace ConversationAPI
