/** Free-text search: does a conversation's text or one of its numbers contain what the user typed? */
#pragma once

#include <string>

namespace ConversationAPI
{
class Conversation;

class ConversationMatcher
{
  public:
    virtual ~ConversationMatcher();

    /**
     * Looks in the conversation's toString() and, for a text that is_digits(), in its four numbers as they are stored.
     * ASCII letters match in either case, others as they are written, unless the program's global locale has letters
     * of one byte beyond ASCII. "" matches every conversation. The conversation is not null.
     */
    bool matches(Conversation* conversation, const std::string& searchString);
};

/** Whether the text holds nothing that a telephone's keypad does not have; "" does. */
bool is_digits(const std::string& text);
} // namespace ConversationAPI
