/**
 * Gives conversations their identifiers.
 *
 * A generator outlives the conversations made with it and does not own them.
 */
#pragma once

#include "ConversationAPI/SharedText.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ConversationAPI
{
class Conversation;
class ConversationContact;
class ConversationItem;

class ConversationIDGenerator
{
  public:
    virtual ~ConversationIDGenerator() = default;

    virtual std::string getConversationID(Conversation* conversation) = 0;

    /** What was remembered under `id` from now on looks like `item`, which stays the caller's. */
    virtual void updateCache(const std::string& id, ConversationItem* item) = 0;

    /** Forgets the ids that nobody uses any more. */
    virtual void garbageCollect() = 0;

    /**
     * Like updateCache(), but of a contact (a placeholder) the id is remembered even if it was not before, and what
     * was remembered as a contact does not become one of its calls.
     */
    virtual void remember(const std::string& id, const ConversationItem* item);

    /** Whether remember() would change nothing for a contact of these details. False when that is not known. */
    virtual bool remembersContact(const SharedText& id, const ConversationContact& contact) const;

    /** If what was remembered under `id` is this call, it is `remaining` from now on, which stays the caller's. */
    virtual void callEnded(const std::string& id, const std::string& callId, const ConversationItem* remaining);

    /** If what was remembered under `id` is a call, that has joined a conversation of another id and is forgotten. */
    virtual void callJoinedOther(const std::string& id);

    /** Whether what is remembered under `id` is of one conversation with the item. False when that is not known. */
    virtual bool isRememberedAs(const std::string& id, const ConversationItem& item) const;

    /** The id that getConversationID() gives once more, "" when it would be a new one. Nothing is remembered. */
    virtual std::string knownConversationID(Conversation* conversation);

    /**
     * Conversations that begin with these items, none of them null, are about to ask for their ids. Changes nothing.
     * Appends the hashes (hashOfText()) of ids that they are likely to get, as far as any are known.
     */
    virtual void expect(const std::vector<const ConversationItem*>& items, std::vector<std::uint32_t>& likelyIds) const;

    /** What is remembered under ids with these hashes (hashOfText()) is about to be looked at. Changes nothing. */
    virtual void expectIds(const std::vector<std::uint32_t>& idHashes) const;

    /** As getConversationID(); a generator that keeps the text need not copy it. */
    virtual SharedText getSharedConversationID(Conversation* conversation);
};
} // namespace ConversationAPI
