/**
 * The entries of the network's call log that a row of the screen holds.
 *
 * The source names its conversations anew with every change of the log; an entry keeps its own id, which is unique
 * among those of a kind.
 */
#pragma once

#include "ConversationAPI/ConversationItemState.h"

#include <string>
#include <vector>

namespace ConversationAPI
{
class BroadsoftServiceConversationItemSource;
class Conversation;
} // namespace ConversationAPI

namespace Deskphone
{
struct NetworkEntry
{
    ConversationAPI::ConversationItemState state = ConversationAPI::ConversationItemState::MISSED;
    std::string callLogId;
};

/** Also those that the row is too short to show. */
std::vector<NetworkEntry> networkEntriesOf(ConversationAPI::BroadsoftServiceConversationItemSource& source,
                                           const ConversationAPI::Conversation& row);

/** Entries that are gone already are passed over. */
void deleteNetworkEntries(ConversationAPI::BroadsoftServiceConversationItemSource& source,
                          const std::vector<NetworkEntry>& entries);
} // namespace Deskphone
