/**
 * The telephone's call journal as a source of items: missed, received, dialled and forwarded calls.
 *
 * Each call of a journal entry becomes an item that carries the entry's id; a call of the voicemail number becomes
 * one of the mailbox. The source owns the voicemail handler. Journal service, item factory, digit analysis and
 * observer are not owned; the first and the third may be null. It outlives its items, because a missed call points
 * to it. Whoever wires the telephone passes on here what the journal tells of changes. UI thread only.
 */
#pragma once

#include "ConversationAPI/ActiveCall.h"
#include "ConversationAPI/ConversationItemSourceIfc.h"
#include "ConversationAPI/VoicemailHandler.h"
#include "platform/JournalServiceIfc.h"
#include "platform/NumberType.h"

#include <ctime>
#include <string>
#include <vector>

class DigitAnalysisServiceIfc;

namespace ConversationAPI
{
class ConversationItemFactory;

class JournalServiceConversationItemSource : public ConversationItemSourceIfc
{
  public:
    /** Without a journal there are no calls. The clock is the voicemail handler's. */
    JournalServiceConversationItemSource(JournalServiceIfc* journal, ConversationItemFactory* factory,
                                         DigitAnalysisServiceIfc* digitAnalysis,
                                         ActiveCall::TimeFunction clock = &std::time);
    ~JournalServiceConversationItemSource() override;

    JournalServiceConversationItemSource(const JournalServiceConversationItemSource&) = delete;
    JournalServiceConversationItemSource& operator=(const JournalServiceConversationItemSource&) = delete;

    /** Dialled, received, missed and forwarded calls, then the mailbox; nothing until the journal is subscribed. */
    std::vector<ConversationItem*> getConversationItems() override;
    void reloadCalls(const std::vector<std::string>& entryIds) override;

    /** Deletions are passed on to the journal, which tells when they are done. */
    void deleteAllCalls() override;
    void deleteCalls(const std::vector<std::string>& entryIds) override;
    void setObserver(ConversationItemSourceObserverIfc* observer) override;
    void clearObserver() override;
    int getItemSourceType() override;
    bool ageAllMissedCalls(const std::vector<std::string>& entryIds) override;

    /** Marks one missed entry as seen. */
    virtual void ageMissedCall(const std::string& entryId);

    /**
     * The journal tells of an entry: its newest call is reported as new. A deleted entry is passed over; whoever
     * hears of one asks for a rebuild with notifyObserver().
     */
    void missedCallsUpdate(MissedCallItem entry, std::string entryId, JournalServiceObserverIfc::ActionType action);
    void receivedCallsUpdate(ReceivedCallItem entry, std::string entryId, JournalServiceObserverIfc::ActionType action);
    void dialledCallsUpdate(DialledCallItem entry, std::string entryId, JournalServiceObserverIfc::ActionType action);
    void forwardedCallsUpdate(ForwardedCallItem entry, std::string entryId,
                              JournalServiceObserverIfc::ActionType action);

    /** What the mailbox tells of its messages; see VoicemailHandler. */
    void setVoiceMailMessagesCount(int count);
    void setNoVoiceMailMessageWaiting();

    /** The journal is another one as a whole. */
    void notifyObserver();
    void notifyObserversForSubscription();

    /**
     * Hands over the items in order. Those that nobody takes are deleted: without an observer, and once
     * notifyObserver() was called meanwhile, since the rebuild brings what the journal has by then.
     */
    void notifyObserversForNewConversationItems(const std::vector<ConversationItem*>& items);

    bool getJournalServiceSubscribed() const { return journalServiceSubscribed_; }

    /** Whether the journal can be read; nobody is told, see notifyObserversForSubscription(). */
    void setJournalServiceSubscribed(bool subscribed) { journalServiceSubscribed_ = subscribed; }

    /**
     * Gives the item's party the number as its only one, in the place of its type, else as the first one at work;
     * null is passed over.
     */
    void saveNumberToConversation(ConversationItem* item, const std::string& number, NumberType::NT type);

    /**
     * The item of the call at this index, newest first, whatever its number and without the entry's id; the caller
     * owns it. Null when the entry has no such call.
     */
    ConversationItem* createConversationItemFromCallItem(const MissedCallItem& record, unsigned index);
    ConversationItem* createConversationItemFromCallItem(const ReceivedCallItem& record, unsigned index);
    ConversationItem* createConversationItemFromCallItem(const DialledCallItem& record, unsigned index);
    ConversationItem* createConversationItemFromCallItem(const ForwardedCallItem& record, unsigned index);

  private:
    template <typename Record>
    void loadCalls(std::vector<ConversationItem*>& items);

    template <typename Record>
    std::vector<ConversationItem*> createConversationItems(const Record& record);

    template <typename Record>
    void genericCallUpdate(const Record& record, const std::string& entryId,
                           JournalServiceObserverIfc::ActionType action);

    template <typename Record>
    ConversationItem* createItemAt(const Record& record, unsigned index);

    template <typename Record, typename Call>
    ConversationItem* createItem(const Record& record, const Call& call);

    template <typename Record, typename Call>
    ConversationItem* createItemOrMailbox(const Record& record, const Call& call);

    ConversationItem* createVoiceMailItemUnlessItExists(const std::vector<ConversationItem*>& items);
    void reloadEntry(const std::string& entryId);
    bool isMailbox(const std::string& number) const;

    JournalServiceIfc* journalService_;
    VoicemailHandler voicemailHandler_;
    ConversationItemFactory* itemFactory_;
    ConversationItemSourceObserverIfc* observer_ = nullptr;
    bool journalServiceSubscribed_ = false;
    DigitAnalysisServiceIfc* digitAnalysis_;
    unsigned rebuildsAskedFor_ = 0; ///< so that telling single items notices one
};
} // namespace ConversationAPI
