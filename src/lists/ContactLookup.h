/** Finding the conversation of a contact of which only names and a number are known. */
#pragma once

#include <string>

namespace ConversationAPI
{
class Conversation;
class ConversationItemFactory;
class ConversationList;

/** The first conversation of the list that the contact belongs to; null for none and without a factory. */
Conversation* findByContact(const ConversationList& list, ConversationItemFactory* itemFactory,
                            const std::string& firstName, const std::string& lastName, const std::string& number);

/** The same among the direct conversations. */
Conversation* findDirectByContact(const ConversationList& list, ConversationItemFactory* itemFactory,
                                  const std::string& firstName, const std::string& lastName, const std::string& number);
} // namespace ConversationAPI
