/** The name under which everything that the source of cloud conversations consists of writes its log lines. */
#pragma once

namespace ConversationAPI
{
inline constexpr const char* QUORVEL_SOURCE_LOG_FILE = "./src/QuorvelServiceConversationSource";
} // namespace ConversationAPI
