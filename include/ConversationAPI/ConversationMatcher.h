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

    /** Letters match in either case, numbers as they are stored; "" matches every conversation. */
    bool matches(Conversation* conversation, const std::string& searchString);
};

/** Whether the text holds nothing that a telephone's keypad does not have; "" does. */
bool is_digits(const std::string& text);
} // namespace ConversationAPI
