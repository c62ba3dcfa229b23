/**
 * Makes conversations of contacts, and takes what is told of a contact into the conversation that is there.
 *
 * Factory, source and generators given to it are not owned and outlive the conversations. The generator that decides
 * the ids of contacts is its own: it outlives the conversations made with it, and every clone of them.
 */
#pragma once

#include "sources/ContactIdGenerator.h"
#include "sources/ContactIdPairs.h"
#include "sources/PhonebookMessage.h"

#include <memory>
#include <string>

namespace ConversationAPI
{
class Conversation;
class ConversationFactory;
class ConversationList;
class ConversationSourceIfc;

class ContactConversations
{
  public:
    using Made = std::unique_ptr<Conversation>;

    /** `isOthers` tells which ids other contacts have. */
    ContactConversations(ConversationFactory& factory, ConversationSourceIfc& source,
                         ContactIdGenerator::IsOthers isOthers);

    /** For the next conversation, with the id or, if that is "", with the one that is the contact's. */
    ConversationIDGenerator* idGenerator(const std::string& id = {});

    /**
     * A contact of the phonebook, with an id of the generator or, without one, of the factory's. Null, as below, when
     * the factory has none.
     */
    Made createConversationFromEntry(const PhonebookEntry& entry, ConversationIDGenerator* generator);

    /** A temporary conversation for what a directory search has found. */
    Made createConversationFromContact(const DirectoryContact& contact);

    /** The same for a web-service contact. Its picture is written to a temporary file. */
    Made createConversationFromWSIItem(const WSIItem& item);

    /**
     * The contact with its numbers in the form in which they are compared. No id is asked for: it would be remembered
     * for all numbers of somebody who may never be shown.
     */
    DirectoryContact withComparableNumbers(const DirectoryContact& contact);

    /** Takes in what the news says of a known contact; the rest, its kind and its id stay. */
    void complete(Conversation& known, const DirectoryContact& news);

    /** The same for a stored contact and the web service's news of it, presence and exchange id among them. */
    void takeWSINews(Conversation& stored, const Conversation& news);

    /** The same, but only what is not known yet: the web service tells of a contact that the user has stored. */
    void addWSINews(Conversation& stored, const Conversation& news);

    /** The calls of the contact's numbers are its own from now on, and outlast a rebuild as such. */
    void remember(const Conversation& stored) { ids_.rememberContact(stored); }

    /** The web service's id of whom the conversation was made for, and the other way round; "" when there is none. */
    std::string wsiIdOf(const std::string& conversationId) const { return wsiIds_.shownContactOf(conversationId); }
    std::string conversationIdOfWSIItem(const std::string& wsiId) const { return wsiIds_.conversationOf(wsiId); }
    void forgetWSIItem(const std::string& wsiId) { wsiIds_.removeContact(wsiId); }

  private:
    Made createEmpty(ConversationIDGenerator* generator);
    Made createFound(const DirectoryContact& contact, ConversationIDGenerator* generator);
    void fillIn(Conversation& conversation, const DirectoryContact& contact, const MainNumber& main) const;
    void makeFound(Conversation& conversation, DirectoryContact contact) const;
    static void takeWSIState(Conversation& stored, const Conversation& news);

    ConversationFactory& factory_;
    ConversationSourceIfc& source_;
    ContactIdGenerator ids_;
    ContactIdPairs wsiIds_;
};

/** Whether both go by the same name, which may be none. */
bool haveSameName(const Conversation& a, const Conversation& b);

/** Whether no name tells that two contacts of one number are two people. */
bool mayBeSamePerson(const Conversation& a, const Conversation& b);

/** The conversation of the list that has the contact's number, or its id; null when there is none. */
Conversation* findConversationOf(const ConversationList& list, const Conversation& contact);

/**
 * The same, but only one that is the contact's by `isSamePerson`, by an id or by the exchange id. Who has no number is
 * recognised by name, e-mail address and company.
 */
Conversation* findPerson(const ConversationList& list, const Conversation& contact,
                         bool (*isSamePerson)(const Conversation&, const Conversation&) = mayBeSamePerson);

/** `other`, of the same party, joins: it may be another contact, so that what is known of this one stays. */
void mergeContact(Conversation& known, Conversation& other);

/** `news` of the same contact takes the place of all that is known of it, but of its id. */
void takeNews(Conversation& known, Conversation& news);
} // namespace ConversationAPI
