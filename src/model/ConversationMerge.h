/**
 * Takes one conversation into another.
 *
 * The work of Conversation::mergeWith(), foldIn() and mergeItems(), for the length of one call. `from` stays as it
 * is; whoever called owns the items that are handed back.
 */
#pragma once

#include "ConversationAPI/Conversation.h"

#include <vector>

namespace ConversationAPI
{
class ConversationMerge
{
  public:
    /** Two different conversations, which outlive this object. */
    ConversationMerge(Conversation& into, const Conversation& from);

    std::vector<ConversationItem*> merge();
    std::vector<ConversationItem*> fold(const Conversation::Folding& folding);

    /**
     * Adds all items, which the conversation owns then. A live call that comes first takes the place of the one that
     * the conversation shows if they are the same.
     */
    static void addItems(Conversation& into, std::vector<Conversation::HeldItem> items);

  private:
    using Items = std::vector<const ConversationItem*>;
    using HeldItems = std::vector<Conversation::HeldItem>;
    using OwnedItem = Conversation::OwnedItem;

    static bool insertItems(Conversation& into, HeldItems items, bool replacesShownCall);
    bool replacesShownCall() const;
    bool fromIsContactOnly() const;
    bool contactsDiffer() const;
    HeldItems copyItems() const;
    bool dropCallsAmong(const Items& arrived);
    Items itemsNotCovered() const;
    void keepArrivedAndClaimed(Items& strangers, const Items& arrived) const;
    void takeOrigin(const Conversation::Folding& folding);
    HeldItems extract(const Items& items);
    std::vector<ConversationItem*> handOver(HeldItems items);
    void takeId();
    void rememberOwnContact();
    void traceItems() const;
    void finish();
    void makePermanent();
    void restampItems();
    void updateIdGeneratorCache();
    const ConversationItem* lastingItem() const;

    Conversation& into_;
    const Conversation& from_;
    const CopyOnWrite<ContactDetails> contactBefore_;
};
} // namespace ConversationAPI
