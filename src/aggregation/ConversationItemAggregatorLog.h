/** The name under which everything that the item aggregator consists of writes its log lines. */
#pragma once

namespace ConversationAPI
{
inline constexpr const char* ITEM_AGGREGATOR_LOG_FILE = "./src/ConversationItemAggregator";
} // namespace ConversationAPI
