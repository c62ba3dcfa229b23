/**
 * The contacts of a phonebook as a source of conversations, filled from outside.
 *
 * It stands where a telephone has its directory. Each contact is a conversation without items, which the book owns;
 * it lives until the contact is removed, and then until whoever is being told of it has been told. A contact keeps
 * its conversation identifier whatever changes about it. The factory and its generator are not owned and outlive the
 * book; observers are not owned and are taken off before they go. UI thread only.
 */
#pragma once

#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationSourceIfc.h"
#include "ConversationAPI/NotificationRound.h"

#include <map>
#include <string>
#include <vector>

namespace ConversationAPI
{
class ConversationFactory;
}

namespace Deskphone
{
/** One entry of the phonebook; numbers in any spelling, "" for none. */
struct Contact
{
    std::string contactId;
    std::string first;
    std::string last;
    std::string work;
    std::string work2;
    std::string mobile;
    std::string home;
};

class ContactBook : public ConversationAPI::ConversationSourceIfc
{
  public:
    explicit ContactBook(ConversationAPI::ConversationFactory& factory);

    /** A new contact, or all that is known of it from now on when the book has one of this contact id. */
    void put(const Contact& contact);

    /** Takes a contact out of the book; one that is unknown is passed over. */
    void remove(const std::string& contactId);

    ConversationAPI::ConversationList* getConversations() const override { return &contacts_; }
    ConversationAPI::Conversation* getConversation(const std::string& conversationId) override;
    void addObserver(ConversationAPI::ConversationSourceObserverIfc* observer) override;
    void removeObserver(ConversationAPI::ConversationSourceObserverIfc* observer) override;
    std::vector<std::string> getInUseConversationIds() override;

    /** Deletes the contact for good. */
    void deleteConversation(const std::string& conversationId) override;
    int getSourceType() override;

    /** Deleting all is about the history: contacts stay. */
    void deleteConversations() override {}

    // A book has no users, no search, no mailbox and no calls.
    ConversationAPI::Conversation* getConversationForUser(const std::string&) override { return nullptr; }
    void clearSearchResults() override {}
    void voiceMailChanged(const std::string&, const std::string&) override {}
    void conversationUpdated(ConversationAPI::Conversation*) override {}
    void markAllMissedCallsRead() override {}

  private:
    template <typename Notification>
    void tellObservers(Notification notification);
    void tellUpdated(ConversationAPI::Conversation* contact);

    ConversationAPI::ConversationFactory& factory_;
    mutable ConversationAPI::ConversationList contacts_;
    std::map<std::string, ConversationAPI::Conversation*> byContactId_;
    std::vector<ConversationAPI::ConversationSourceObserverIfc*> observers_;
    ConversationAPI::NotificationRound round_;
};
} // namespace Deskphone
