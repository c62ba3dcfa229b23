/**
 * Which conversation stands for which contact of another service.
 *
 * A conversation may stand for several contacts, of which it shows the one that came first.
 */
#pragma once

#include <map>
#include <string>
#include <vector>

namespace ConversationAPI
{
class ContactIdPairs
{
  public:
    /** The contact comes after those that the conversation stands for already. Empty ids are passed over. */
    void add(const std::string& contactId, const std::string& conversationId);
    void removeContact(const std::string& contactId);

    /** Forgets contacts that are not among these, and those that are hidden by others. */
    void keepShown(const std::vector<std::string>& contactIds);

    /** "" when there is none. */
    std::string conversationOf(const std::string& contactId) const;

    /** The contact that the conversation shows; "" when there is none. */
    std::string shownContactOf(const std::string& conversationId) const;

    /** In the order in which they came. */
    std::vector<std::string> contactsOf(const std::string& conversationId) const;

    /** Whether the contact's conversation shows another one. */
    bool isHiddenByOther(const std::string& contactId) const;

  private:
    std::map<std::string, std::string> conversations_;         ///< by contact
    std::map<std::string, std::vector<std::string>> contacts_; ///< by conversation, never none
};
} // namespace ConversationAPI
