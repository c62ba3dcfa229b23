/** The name under which everything that the conversation aggregator consists of writes its log lines. */
#pragma once

namespace ConversationAPI
{
inline constexpr const char* AGGREGATOR_LOG_FILE = "./src/ConversationAggregator";
} // namespace ConversationAPI
