/**
 * Which conversation of a list has a telephone number: one for each number, the last that claimed it.
 *
 * In the order of the numbers. Forgetting a conversation takes time by its numbers, not by those of the list.
 */
#pragma once

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace ConversationAPI
{
class Conversation;

class NumberIndex
{
  public:
    using Numbers = std::map<std::string, Conversation*>;

    /** The number is this conversation's from now on; "" is nobody's. */
    void associate(const std::string& number, Conversation* conversation);
    void remove(const std::string& number);
    void remove(Conversation* conversation);
    void clear();

    /** Null when nobody has the number. */
    Conversation* find(const std::string& number) const;
    Numbers::const_iterator begin() const { return numbers_.begin(); }
    Numbers::const_iterator end() const { return numbers_.end(); }

  private:
    using Claims = std::vector<Numbers::iterator>;

    void forgetClaim(Numbers::iterator number);

    Numbers numbers_;
    std::unordered_map<Conversation*, Claims> claims_;
};
} // namespace ConversationAPI
