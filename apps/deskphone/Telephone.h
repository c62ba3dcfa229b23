/**
 * A telephone: library and platform services, wired together, to be read from top to bottom and copied.
 *
 * The members stand in the order in which they are built. Each needs only what stands above it, and is destroyed
 * before that. Where something points downwards, as a source does to its observer, the destructor takes it off. Whoever
 * makes a telephone has declared an event loop the current one of the thread (Host::EventLoop::Scope) and keeps it for
 * the telephone's whole life: the timers of the display run on it. UI thread only.
 *
 * Who tells whom:
 *
 *     calls ─────────▶ callControl() ──▶ liveCalls_ ─┐ items              conversations         rows
 *                      callControl() ──▶ journal()   │
 *     journal() ─────▶ journalUpdates_ ─▶ history_ ──┴──▶ itemAggregator_ ────┬─▶ local_ ──┬──▶ display_
 *     mailbox ───────▶ mailbox() (history_)                                   │            └──▶ provider_ ──▶ display_
 *     phonebook ─────▶ contacts() ────────────────────────────────────────────┘
 *     configuration ─▶ setVoiceMailNumber()
 *     user ──────────▶ conversations() ──▶ provider_ ──▶ local_ ──▶ contacts()
 *                                                        local_ ──▶ itemAggregator_ ──▶ history_ ──▶ journal()
 *     contacts() ────▶ local_ ──▶ itemAggregator_, which groups calls by the numbers of a contact
 */
#pragma once

#include "CombinedList.h"
#include "ContactBook.h"
#include "ConversationAPI/ActiveCallConversationItemSource.h"
#include "ConversationAPI/AggregatorSwitch.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationItemAggregator.h"
#include "ConversationAPI/ConversationItemFactory.h"
#include "ConversationAPI/ConversationListProvider.h"
#include "ConversationAPI/ConversationParticipantFactory.h"
#include "ConversationAPI/JournalServiceConversationItemSource.h"
#include "ConversationAPI/RandomCachingConversationIDGenerator.h"
#include "ConversationAPI/RelativeTimeFormatter.h"
#include "JournalUpdates.h"
#include "TelephoneSettings.h"
#include "host/CallControl.h"
#include "host/DigitAnalysis.h"
#include "host/DisplayModel.h"
#include "host/Journal.h"
#include "host/Translator.h"

#include <filesystem>
#include <string>

namespace Deskphone
{
class Telephone
{
  public:
    enum RowOrder
    {
        BY_TIME = 0, ///< live calls first, then newest first
        BY_NAME = 1
    };

    /** The history is kept in the file; "" for a history that nobody keeps. */
    explicit Telephone(const TelephoneSettings& settings, const std::filesystem::path& journalFile = {});
    ~Telephone();

    Telephone(const Telephone&) = delete;
    Telephone& operator=(const Telephone&) = delete;

    // What the telephone's services report to.

    /** The calls that go on, until they end in the journal. */
    Host::CallControl& callControl() { return callControl_; }

    /** The calls that ended. */
    Host::Journal& journal() { return journal_; }

    /** The message-waiting indication: setVoiceMailMessagesCount(), setNoVoiceMailMessageWaiting(). */
    ConversationAPI::JournalServiceConversationItemSource& mailbox() { return history_; }

    /** The phonebook. */
    ContactBook& contacts() { return contacts_; }

    /** The mailbox's number, in any spelling; "" when there is none. Its row and its calls are made anew. */
    void setVoiceMailNumber(const std::string& number);

    // What the user interface uses.

    /** Look-ups, deletion, marking as read. */
    ConversationAPI::AggregatorSwitchIfc& conversations() { return switch_; }

    /** The user has looked at the missed calls of a row. */
    void markMissedRead(const ConversationAPI::Conversation& row);

    /** Has the rows of the history made anew from the journal. */
    void reloadHistory();
    void sortRows(RowOrder order);

    /** What the screen shows, from top to bottom; valid until the next event. */
    const Host::DisplayModel::Rows& rows() const { return display_.rows(); }

    /** The row at a place, counted from 1; null when there is none. */
    const ConversationAPI::Conversation* row(long place) const;

    /** The form in which spellings of one number are equal. */
    std::string comparable(const std::string& number);

    DisplayAPI::TimeStringFormatter& times() { return times_; }

  private:
    void wireFactories();
    void wireLists();
    void wireDisplay(const TelephoneSettings& settings);
    void startSources();

    // What the library builds on.
    Host::DigitAnalysis digitAnalysis_;
    Host::Translator translator_;
    Host::Journal journal_;

    // Factories; the generator remembers which conversation had which id.
    ConversationAPI::ConversationParticipantFactory participantFactory_;
    ConversationAPI::ConversationItemFactory itemFactory_;
    ConversationAPI::RandomCachingConversationIDGenerator idGenerator_;
    ConversationAPI::ConversationFactory conversationFactory_;

    // The rows of the screen. It asks nobody; all that tells it something stands below.
    Host::DisplayModel display_;

    // Sources of items.
    ConversationAPI::ActiveCallConversationItemSource liveCalls_;
    ConversationAPI::JournalServiceConversationItemSource history_;

    // What reports to them.
    JournalUpdates journalUpdates_;
    Host::CallControl callControl_;

    // Sources of conversations.
    ConversationAPI::ConversationItemAggregator itemAggregator_;
    ContactBook contacts_;

    // The list in which each party stands once. A second one, for a cloud service, would stand beside it; whoever
    // turns the switch to the other list also hands its source to the provider.
    CombinedList local_;

    // What the user interface sees of them.
    ConversationAPI::AggregatorSwitch switch_;
    ConversationAPI::ConversationListProvider provider_;
    ConversationAPI::RelativeTimeFormatter times_;
};
} // namespace Deskphone
