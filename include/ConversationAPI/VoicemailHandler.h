/**
 * Turns the message-waiting indication of the voice mailbox into an item.
 *
 * It owns the item that it made last and gives copies away. Item factory and observer are not owned. The items of
 * all counts carry one conversation item id, so that a new one takes the place of the one before in its row; those of
 * the mailbox's calls have none and stand there by their times. UI thread only.
 */
#pragma once

#include "ConversationAPI/ActiveCall.h"

#include <cstdint>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

namespace ConversationAPI
{
class ConversationItem;
class ConversationItemFactory;
class ConversationItemSourceObserverIfc;

class VoicemailHandler
{
  public:
    /** The clock tells when the count changed. */
    explicit VoicemailHandler(ConversationItemFactory* itemFactory, ActiveCall::TimeFunction clock = &std::time);
    ~VoicemailHandler();

    VoicemailHandler(const VoicemailHandler&) = delete;
    VoicemailHandler& operator=(const VoicemailHandler&) = delete;

    /** Who is handed new items; null for nobody. */
    void setObserver(ConversationItemSourceObserverIfc* observer);

    /**
     * So many messages wait. Reported 0 at first, some wait that nobody has counted, which counts as -1.
     * Otherwise 0, less, and the number that is known already change nothing; more than 99 count as 99.
     */
    void setVoiceMailMessagesCount(int count);
    void setNoVoiceMailMessageWaiting();

    /** A copy of the item; the caller owns it. Null when there is none. */
    ConversationItem* cachedVoiceMailConversationItem();

    /**
     * The same for a rebuild of a source that has these items already. The item is made anew when the mailbox has
     * another number by now, when the count changed while nobody could be told, or when messages wait and nothing
     * was made of them yet.
     */
    ConversationItem* cachedVoiceMailConversationItem(const std::vector<ConversationItem*>& items);

    /**
     * An item for a call of the mailbox at this time (ISO 8601), kept in the place of the one before; the caller owns
     * the copy it gets.
     */
    ConversationItem* createVoiceMailConversationItem(const std::string& timeAndDate);

  private:
    void setTimeStamp();
    void publish();

    /** A new item that tells the count. */
    void keepCountAt(long time);

    /** In the place of the item before, with the count and the flag of now. */
    void keep(ConversationItem* item);
    bool hasMailbox() const;
    bool isOutdated() const;

    ConversationItemFactory* itemFactory_;
    ConversationItemSourceObserverIfc* observer_ = nullptr;
    bool isMessageWaiting_ = false;
    std::int32_t messageCount_ = 0;
    std::int32_t timeStamp_ = 0; ///< of the last change: seconds since the epoch, UTC
    std::unique_ptr<ConversationItem> cachedItem_;
    const ActiveCall::TimeFunction clock_;
};
} // namespace ConversationAPI
