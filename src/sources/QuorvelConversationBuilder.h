/**
 * Makes conversations and their items from those of the cloud service, and brings them up to date.
 *
 * Factories and users are not owned. It owns the identifier generators, one for each conversation id ever seen,
 * since copies of the conversations refer to them for as long as they live. What the cloud tells is read at once;
 * nothing of it is kept. UI thread only.
 */
#pragma once

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/StaticConversationIDGenerator.h"
#include "platform/Quorvel.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ConversationAPI
{
class ConversationFactory;
class ConversationItemFactory;
class QuorvelUsers;

class QuorvelConversationBuilder
{
  public:
    QuorvelConversationBuilder(ConversationItemFactory* itemFactory, ConversationFactory* conversationFactory,
                               const QuorvelUsers& users);

    /** With its items, under the cloud's own id. */
    // NOLINTNEXTLINE(readability-identifier-naming): known by this name
    std::unique_ptr<Conversation> CreateConversationFromQuorvelConversation(const Quorvel::ConversationIfc& cloud);

    /**
     * Whether it is of another kind now, or with somebody else. Nothing of such a conversation may stay, not even in
     * the copies of it, which keep a name when there is none in its place: it is to be made anew, and not updated.
     */
    bool isAnotherNow(const Conversation& conversation, const Quorvel::ConversationIfc& cloudConversation) const;

    /** Keeps what the cloud does not tell this time: unknown users' names, earlier items. */
    void update(Conversation& conversation, const Quorvel::ConversationIfc& cloudConversation);

    /** Replaces the item of the same id, else adds it. */
    void putItem(Conversation& conversation, const Quorvel::ConversationItemIfc& cloudItem);

    /** Without join details the ways to dial in stay what they were. */
    void updateMeeting(Conversation& conversation, const Quorvel::RTCSessionEventIfc& event);

    /**
     * Whether anything in the conversation shows the user; that is brought up to date. Whom a notice affects is asked
     * of the cloud's conversation: without it, null, notices stay as they are.
     */
    bool updateUser(Conversation& conversation, const Quorvel::ConversationIfc* cloudConversation,
                    const Quorvel::UserIfc& user);

  private:
    using OwnedItem = std::unique_ptr<ConversationItem>;

    void describe(Conversation& conversation, const Quorvel::ConversationIfc& cloudConversation);
    void describeGroup(Conversation& conversation, const Quorvel::ConversationIfc& cloudConversation);
    void describeRemoteParty(Conversation& conversation, const Quorvel::ConversationIfc& cloudConversation);
    void updateGroupParticipants(Conversation& conversation, const Quorvel::ConversationIfc& cloudConversation);
    void setGroupCallNumbers(const Quorvel::JoinDetailsIfc* joinDetails, Conversation& conversation);
    void setGroupCallPin(const Quorvel::JoinDetailsIfc* joinDetails, Conversation& conversation);

    std::vector<OwnedItem> getItemsForConversation(const Conversation& conversation,
                                                   const Quorvel::ConversationIfc& cloudConversation);
    OwnedItem createConversationItem(const Conversation& conversation, const Quorvel::ConversationItemIfc& cloudItem);
    OwnedItem createTextItem(const Quorvel::UserIfc& party, const Quorvel::ConversationItemIfc& cloudItem);
    OwnedItem createSystemItem(const Quorvel::UserIfc& party, const Quorvel::ConversationItemIfc& cloudItem,
                               const Quorvel::SystemItemIfc& systemItem);
    std::string shownNameOf(const std::string& userId) const;
    static void renameInItems(Conversation& conversation, const Quorvel::UserIfc& user);
    static void renameParty(Conversation& conversation, const Quorvel::UserIfc& user);

    ConversationItemFactory* itemFactory_;
    ConversationFactory* conversationFactory_;
    const QuorvelUsers& users_;
    std::map<std::string, StaticConversationIDGenerator> idGenerators_;
};
} // namespace ConversationAPI
