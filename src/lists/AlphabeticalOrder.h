/** Conversations in the order of the names that they show. */
#pragma once

#include <vector>

namespace ConversationAPI
{
class Conversation;

/** Those of one name, whatever its capitals, stay in the order in which they are given. */
std::vector<Conversation*> inAlphabeticalOrder(const std::vector<Conversation*>& conversations);
} // namespace ConversationAPI
