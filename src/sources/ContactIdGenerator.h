/**
 * Decides which identifier the conversation of a contact gets: that of the calls with the contact's numbers, unless
 * another contact has it, else a new one.
 *
 * Identifiers come from the factory's generator, but other than that one it remembers nobody: a contact that is only
 * looked at, or stands hidden behind another, must not group calls. rememberContact() is for those who are stored. The
 * factory is not owned; it and the generator outlive the conversations made with it and all their clones.
 */
#pragma once

#include "ConversationAPI/ConversationIDGenerator.h"

#include <functional>
#include <string>

namespace ConversationAPI
{
class ConversationFactory;

class ContactIdGenerator : public ConversationIDGenerator
{
  public:
    /** Whether the id stands for another contact than this one. */
    using IsOthers = std::function<bool(const std::string& id, const Conversation& contact)>;

    ContactIdGenerator(ConversationFactory& factory, IsOthers isOthers);

    /** The next contact gets this id, which is known beforehand; "" to have it decided. */
    ContactIdGenerator& giveNext(const std::string& id);

    std::string getConversationID(Conversation* contact) override;
    void updateCache(const std::string&, ConversationItem*) override {}
    void garbageCollect() override {}

    /** From now on, calls from and to all of the contact's numbers get its id. */
    void rememberContact(const Conversation& contact);

  private:
    ConversationFactory& factory_;
    const IsOthers isOthers_;
    std::string next_;
};
} // namespace ConversationAPI
