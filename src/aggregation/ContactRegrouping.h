/**
 * Unites conversations of a list that turn out to be one party's, because a contact is known now whose numbers they
 * are, or because the live call that kept them apart is over.
 *
 * Works on the list of the item aggregator, which owns everything that is given to the constructor and outlives this
 * object. What is united away, or left empty, is retired from the list, so a notification has to be going on.
 */
#pragma once

#include "ConversationAPI/ConversationItemAggregator.h"

#include <string>
#include <vector>

namespace ConversationAPI
{
class ItemPlacement;

class ContactRegrouping
{
  public:
    using UniqueConversationList = ConversationItemAggregator::UniqueConversationList;

    /** Items that turn out to belong elsewhere are given to `newItems`, as if a source reported them. */
    ContactRegrouping(ConversationList& conversations, ItemPlacement& placement, NotificationRound& round,
                      ConversationItemSourceObserverIfc& newItems);

    /** The conversations of the contact's id and of its numbers, without the contact itself. */
    UniqueConversationList findConversationsOf(const Conversation& contact) const;

    /** The first conversation found takes in the others, save those that are live with another call. */
    void conversationUpdatedByNumber(Conversation& contact, const UniqueConversationList& found);

    /**
     * Two live calls of a contact on two of its numbers stand in two conversations of one id. When one has ended
     * there is no reason for that any more.
     */
    void uniteWithConversationOfSameId(const Conversation& conversation);

  private:
    std::vector<Conversation*> mergeWithContact(Conversation& contact, const UniqueConversationList& found,
                                                bool hasOwnConversation);
    void groupAround(Conversation* root, const std::vector<Conversation*>& united);
    void mergeConversations(Conversation& target, Conversation& source);

    ConversationList& conversations_;
    ItemPlacement& placement_;
    NotificationRound& round_;
    ConversationItemSourceObserverIfc& newItems_;
};
} // namespace ConversationAPI
