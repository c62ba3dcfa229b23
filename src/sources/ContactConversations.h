/**
 * Makes conversations of contacts, and takes what is told of a contact into the conversation that is there.
 *
 * Factory, source and generators given to it are not owned and outlive the conversations. The generators of web-service
 * contacts are its own: it outlives the conversations made of these, and every clone of them.
 */
#pragma once

#include "ConversationAPI/StaticConversationIDGenerator.h"
#include "sources/ContactIdPairs.h"
#include "sources/PhonebookMessage.h"

#include <map>
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

    ContactConversations(ConversationFactory& factory, ConversationSourceIfc& source);

    /**
     * A contact of the phonebook, with an id of the generator or, without one, of the factory's. Null, as below, when
     * the factory has none.
     */
    Made createConversationFromEntry(const PhonebookEntry& entry, ConversationIDGenerator* generator);

    /** A temporary conversation for what a directory search has found. */
    Made createConversationFromContact(const DirectoryContact& contact, ConversationIDGenerator* generator = nullptr);

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

    /** The web service's id of whom the conversation was made for, and the other way round; "" when there is none. */
    std::string wsiIdOf(const std::string& conversationId) const { return wsiIds_.shownContactOf(conversationId); }
    std::string conversationIdOfWSIItem(const std::string& wsiId) const { return wsiIds_.conversationOf(wsiId); }
    void forgetWSIItem(const std::string& wsiId) { wsiIds_.removeContact(wsiId); }

  private:
    Made createEmpty(ConversationIDGenerator* generator);
    void fillIn(Conversation& conversation, const DirectoryContact& contact, const MainNumber& main) const;
    void makeFound(Conversation& conversation, DirectoryContact contact) const;
    ConversationIDGenerator* generatorFor(const WSIItem& item);

    ConversationFactory& factory_;
    ConversationSourceIfc& source_;
    std::map<std::string, StaticConversationIDGenerator> wsiGenerators_; ///< by the contact's id
    ContactIdPairs wsiIds_;
};

/** The conversation of the list that shows the contact, or has its id; null when there is none. */
Conversation* findConversationOf(const ConversationList& list, const Conversation& contact);

/** `other`, of the same party, joins: it may be another contact, so that what is known of this one stays. */
void mergeContact(Conversation& known, Conversation& other);

/** `news` of the same contact takes the place of all that is known of it, but of its id. */
void takeNews(Conversation& known, Conversation& news);
} // namespace ConversationAPI
