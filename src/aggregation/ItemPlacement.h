/**
 * Finds the conversation of a list that an item belongs to, or starts one.
 *
 * Works on a list of the item aggregator, which owns everything that is given to the constructor and outlives
 * this object.
 */
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace ConversationAPI
{
class Conversation;
class ConversationFactory;
class ConversationIDGenerator;
class ConversationItem;
class ConversationList;
class RandomCachingConversationIDGenerator;

class ItemPlacement
{
  public:
    using BeforeJoining = std::function<void(Conversation& existing)>;

    /** `extraCallIds` numbers the conversations of a party's second live call. */
    ItemPlacement(ConversationList& conversations, ConversationFactory& factory,
                  RandomCachingConversationIDGenerator& extraCallIds);

    /**
     * Gives an item of a rebuild to the conversation that it belongs to or starts, and answers that one; null when none
     * could be made. `beforeJoining` is told of a conversation that is there already before it gets the item.
     */
    Conversation* placeItemOfRebuild(ConversationItem* item, const BeforeJoining& beforeJoining);

    /** Where a single item belongs; null when it starts a conversation. */
    Conversation* getConversationAssociatedWithItem(ConversationItem* item);

    /** Who has the number, the party's own conversation before those that only last as long as a call. */
    Conversation* getConversationOfNumber(const std::string& number);

    /** Who holds an item of this call, wherever it stands among the items; null for nobody and for "". */
    Conversation* getConversationHoldingCall(const std::string& callId);

    /**
     * Starts a conversation with a single item, which it takes. Answers the conversation of its id that was there
     * already if the item belongs to it, null when no conversation could be made.
     */
    Conversation* startConversation(ConversationItem* item);

    /** As startConversation(), with an item of a rebuild that is no live call; `beforeJoining` as above. */
    Conversation* startConversationOfRebuild(ConversationItem* item, const BeforeJoining& beforeJoining);

    /** Names second calls of a party, where they bring no name, like the party's conversation. */
    void nameExtraConversations();

  private:
    /** How an item came from its source. */
    enum Origin
    {
        TOLD, ///< alone
        READ  ///< with all others, for a rebuild: nobody else has a pointer to it
    };

    /** The generator for a live call with a party that is in one already; null for everything else. */
    ConversationIDGenerator* getIDGeneratorForItem(ConversationItem* item);

    /** Without a generator, the factory's own gives the id. */
    Conversation* addNewConversation(ConversationItem* item, ConversationIDGenerator* generator, Origin origin,
                                     const BeforeJoining& beforeJoining);
    static void give(ConversationItem* item, Conversation& conversation, Origin origin);

    /** Where an item of a rebuild that is no live call belongs; null when it starts a conversation. */
    Conversation* findTarget(ConversationItem* item);

    /**
     * As getIDGeneratorForItem(), for a rebuild, in which the calls may come in another order than they began: what was
     * an additional call stays one, and keeps its id, even if the other call is over. A ringing group call is none
     * beside the call that it was picked up as.
     */
    ConversationIDGenerator* getIDGeneratorForItemOfRebuild(ConversationItem* item);
    static void nameLike(const Conversation* beside, Conversation& conversation);
    Conversation* findAnonymousTarget(ConversationItem* item);
    Conversation* getLiveConversationBeside(ConversationItem* item);
    std::unique_ptr<Conversation> makeConversation(ConversationItem* item, Origin origin);
    std::unique_ptr<Conversation> makeExtraConversation(ConversationItem* item, ConversationIDGenerator& generator,
                                                        Origin origin);
    static bool joins(const ConversationItem& item, const Conversation& existing);

    ConversationList& conversations_;
    ConversationFactory& factory_;
    RandomCachingConversationIDGenerator& extraCallIds_;
    bool madeExtraConversation_ = false; ///< since nameExtraConversations()
};
} // namespace ConversationAPI
