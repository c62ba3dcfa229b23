/** The name under which everything that the source of the network's call logs consists of writes its log lines. */
#pragma once

namespace ConversationAPI
{
inline constexpr const char* BROADSOFT_SOURCE_LOG_FILE = "./src/BroadsoftServiceConversationItemSource";
} // namespace ConversationAPI
