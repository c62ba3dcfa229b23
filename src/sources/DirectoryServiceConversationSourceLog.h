/** The name under which everything that the directory source consists of writes its log lines. */
#pragma once

namespace ConversationAPI
{
inline constexpr const char* DIRECTORY_SOURCE_LOG_FILE = "./src/DirectoryServiceConversationSource";
} // namespace ConversationAPI
