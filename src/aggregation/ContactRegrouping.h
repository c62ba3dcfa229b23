/**
 * Unites conversations of a list that turn out to be one party's, because a contact is known now whose numbers they
 * are, or because the live call that kept them apart is over.
 *
 * Works on the list of the item aggregator, which owns everything that is given to the constructor and outlives this
 * object. What is united away, or left empty, is retired from the list, so a notification has to be going on.
 */
#pragma once

#include "ConversationAPI/ConversationItemAggregator.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ConversationAPI
{
class ItemPlacement;

class ContactRegrouping
{
  public:
    using UniqueConversationList = ConversationItemAggregator::UniqueConversationList;

    /** Items that turn out to belong elsewhere are given to `newItems`, as if a source reported them. */
    ContactRegrouping(ConversationList& conversations, ConversationFactory& factory, ItemPlacement& placement,
                      NotificationRound& round, ConversationItemSourceObserverIfc& newItems);

    /** These, of which one may be null, are all contacts that there are, as far as they are no temporary ones. */
    void noteAllContacts(const std::vector<Conversation*>& contacts);

    /** One more of them, if all have been told of: only who tells of all also tells when some have gone. */
    void noteContact(Conversation& contact);

    /** The conversations of the contact's id and of its numbers, without the contact itself and without others' own. */
    UniqueConversationList findConversationsOf(const Conversation& contact) const;

    /** The first conversation found takes in the others, save those that are live with another call. */
    void conversationUpdatedByNumber(Conversation& contact, const UniqueConversationList& found);

    /** Whether a call that is over was left alone beside another one of its contact. */
    bool isLeftAlone(const std::string& callId) const { return leftAlone_.count(callId) != 0; }

    /**
     * A call that is over was left alone. Whether what it has left belongs to its contact now, of whose id it is then
     * in a rebuild. `conversation` is the one that held it; null when that is gone.
     */
    bool giveUpOwnId(const Conversation* conversation, const std::string& callId);

    /**
     * Live calls of a contact on several of its numbers stand in several conversations of one id. When one has ended
     * there is no reason for that any more.
     */
    void uniteWithConversationsOfSameId(const Conversation& conversation);

  private:
    bool isOfOtherContact(const Conversation& conversation, const Conversation& contact) const;
    std::vector<Conversation*> mergeWithContact(Conversation& contact, const UniqueConversationList& found,
                                                bool hasOwnConversation);
    void groupAround(Conversation* root, const std::vector<Conversation*>& united);
    void uniteWithContact(Conversation& conversation, Conversation& contact);
    void mergeConversations(Conversation& target, Conversation& source);
    void uniteInLast(const std::vector<Conversation*>& ofOneId);

    ConversationList& conversations_;
    ConversationFactory& factory_;
    ItemPlacement& placement_;
    NotificationRound& round_;
    ConversationItemSourceObserverIfc& newItems_;
    /** Calls that only show the name of a contact who is in another one, and the contact's id. */
    std::unordered_map<std::string, std::string> leftAlone_;
    std::optional<std::unordered_set<std::string>> contactIds_; ///< once all contacts have been told of
};
} // namespace ConversationAPI
