/**
 * The contacts of the phonebook: their conversations, and which of the phonebook's contacts each stands for.
 *
 * Contacts that share the number to call stand in one conversation, which shows the one that came first and nothing of
 * the others; these are read again when that changes. Which contact is which is told by the phonebook's ids: a contact
 * keeps its conversation's id for as long as it is shown, and never gets that of another one. What is being saved is
 * among the contacts before the phonebook tells its id.
 *
 * It owns the conversations; what goes while observers are being told something lives until all have been. Everything
 * given to it is not owned and outlives it; without a directory service nothing is read.
 */
#pragma once

#include "ConversationAPI/ConversationList.h"
#include "sources/ContactIdPairs.h"
#include "sources/PhonebookMessage.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

class DirectoryServiceIfc;

namespace ConversationAPI
{
class ContactConversations;
class ContactPictures;
class ConversationIDGenerator;
class NotificationRound;

class StoredContacts
{
  public:
    StoredContacts(ContactConversations& maker, const ContactPictures& pictures, DirectoryServiceIfc* directoryService,
                   NotificationRound& round);

    ConversationList& list() { return list_; }

    /** Null for "" and when there is none. */
    Conversation* find(const std::string& conversationId) const;
    std::string contactIdOf(const std::string& conversationId) const { return ids_.shownContactOf(conversationId); }

    /** The phonebook may use our ids as its own: a contact that is not known is one of these. */
    std::string conversationIdOf(const std::string& contactId) const;

    /** Whether the id is a contact's, listed or about to be read again. */
    bool isTaken(const std::string& conversationId) const;

    std::unique_ptr<Conversation> createConversationFromXml(const std::string& xml, ConversationIDGenerator* generator);

    /** What the phonebook has of the person, hidden or not; without a contact id when it does not know the person. */
    PhonebookEntry findEntryOf(const Conversation& person);

    /** Has the phonebook store a contact, anew when it has no contact id. False when it is refused. */
    bool write(const DirectoryContact& contact, const std::string& contactId);

    /** A contact that is being saved: it stays if the phonebook takes it. */
    Conversation* addUnconfirmed(std::unique_ptr<Conversation> contact);

    /** Whether it had not been confirmed, and went. */
    bool dropUnconfirmed(const std::string& conversationId);

    /** Everything anew. */
    void retrieveDataAndCreateConversations();

    /** What the phonebook has and nobody told of; answers the conversations that show it. */
    std::vector<Conversation*> readUnknownContacts();

    /** The conversation that shows the message's contact from now on; null when it tells of nobody. */
    Conversation* addConversationFromContact(const std::string& xml);

    /** Answers whom that changes, the contact itself last; nobody when it is not known. */
    std::vector<Conversation*> updateContact(const std::string& xml);

    /** False when no conversation went. */
    bool removeContact(const std::string& contactId);

  private:
    PhonebookEntry readEntry(const std::string& xml) const;
    void findPicture(PhonebookEntry& entry) const;
    std::unique_ptr<Conversation> createConversation(const PhonebookEntry& entry, ConversationIDGenerator* generator);
    std::vector<std::string> phonebook() const;
    PhonebookEntry readFromPhonebook(const std::string& contactId) const;
    Conversation* readContact(const std::string& contactId);
    std::vector<Conversation*> readAgain(const std::vector<std::string>& contactIds);
    Conversation* add(PhonebookEntry entry);
    Conversation* join(std::unique_ptr<Conversation> contact, const PhonebookEntry& entry);
    Conversation* append(std::unique_ptr<Conversation> contact);
    Conversation* findUnconfirmed(const Conversation& contact) const;
    void update(Conversation& known, const PhonebookEntry& entry);

    ContactConversations& maker_;
    const ContactPictures& pictures_;
    DirectoryServiceIfc* directoryService_;
    NotificationRound& round_;
    ConversationList list_;
    ContactIdPairs ids_;
    std::set<std::string> unconfirmed_; ///< conversations of the list, of whose contacts the phonebook has not told yet
};
} // namespace ConversationAPI
