/**
 * Gives conversations random identifiers, and the old one back to a conversation that is built anew.
 *
 * For each id it remembers a copy of the item that the conversation was built from, which it owns; a later
 * conversation whose initial item counts as the same conversation gets the same id. Ids live until
 * garbageCollect() finds that no source uses them. Sources are not owned. Conversations may be made on several
 * threads with one generator: the operations of the interface hold its lock, so they must not be called from inside
 * a sameness test or a source.
 */
#pragma once

#include "ConversationAPI/ConversationIDGenerator.h"
#include "platform/Semaphore.h"

#include <memory>
#include <string>
#include <vector>

namespace ConversationAPI
{
class ConversationIDCache;
class ConversationSourceIfc;

class RandomCachingConversationIDGenerator : public ConversationIDGenerator
{
  public:
    using SamenessTest = bool (*)(const ConversationItem* cached, const ConversationItem* candidate);

    /** Sameness as items see it; but placeholders of two contacts that share a number are still two. */
    static bool isSameConversation(const ConversationItem* cached, const ConversationItem* candidate);

    /** Sameness as items see it, of one time. */
    static bool isSameConversationAtSameTime(const ConversationItem* cached, const ConversationItem* candidate);

    /** Tests with isSameConversation(). */
    RandomCachingConversationIDGenerator();

    /**
     * The two tests above are looked up in an index; with any other the cache is walked. They are known by their
     * addresses, which are others in a program that is not position-independent.
     */
    explicit RandomCachingConversationIDGenerator(SamenessTest test);
    ~RandomCachingConversationIDGenerator() override;

    RandomCachingConversationIDGenerator(const RandomCachingConversationIDGenerator&) = delete;
    RandomCachingConversationIDGenerator& operator=(const RandomCachingConversationIDGenerator&) = delete;

    /** A conversation without an initial item gets a fresh id that is not remembered. */
    std::string getConversationID(Conversation* conversation) override;
    void updateCache(const std::string& id, ConversationItem* item) override;
    void garbageCollect() override;
    void remember(const std::string& id, const ConversationItem* item) override;
    bool remembersContact(const SharedText& id, const ConversationContact& contact) const override;
    void expect(const std::vector<const ConversationItem*>& items,
                std::vector<std::uint32_t>& likelyIds) const override;
    void expectIds(const std::vector<std::uint32_t>& idHashes) const override;
    void callEnded(const std::string& id, const std::string& callId, const ConversationItem* remaining) override;
    void callJoinedOther(const std::string& id) override;
    bool isRememberedAs(const std::string& id, const ConversationItem& item) const override;
    std::string knownConversationID(Conversation* conversation) override;
    SharedText getSharedConversationID(Conversation* conversation) override;

    /** Whether an id was given for this item already. */
    bool remembers(const ConversationItem& item) const;

    /** Whose ids are in use. Called once, before the first id is asked for; takes no lock. */
    void setConversationSources(const std::vector<ConversationSourceIfc*>& sources);

    /** These assume that the lock is held. "" and -1 when there is none. */
    std::string findConversationIDForItem(Conversation* conversation);
    int getIndexOfConversationItem(const std::string& id);
    bool itemNeedsUpdating(const ConversationItem* cached, const ConversationItem* fresh);
    std::string generateConversationId() const;

  private:
    std::unique_ptr<ConversationIDCache> cache_;
    SamenessTest test_;
    std::vector<ConversationSourceIfc*> sources_;
    mutable Semaphore lock_{1, 1, false};
};
} // namespace ConversationAPI
