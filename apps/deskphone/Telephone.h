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
 *     journal() ─────▶ journalUpdates_ ─▶ history_ ──┼──▶ itemAggregator_ ────┬─▶ local_ ──┬──▶ display_
 *     mailbox ───────▶ mailbox() (history_)          │                        │            └──▶ provider_ ──▶ display_
 *     networkLog() ──▶ networkCalls_ ────────────────┘                        │
 *                      networkCalls_ ──▶ networkProvider_ ──▶ networkDisplay_ │
 *     phonebook() ───▶ contacts_ ─────────────────────────────────────────────┘
 *     cloud() ───────▶ cloudNotices_ ──▶ cloudConversations_ ───────────────────▶ cloud_, in place of local_
 *     configuration ─▶ setVoiceMailNumber()
 *     user ──────────▶ conversations() ──▶ provider_ ──▶ local_ ──▶ itemAggregator_ ──▶ history_ ──▶ journal()
 *                                                        local_ ──▶ contacts()
 *                                          provider_ ──▶ cloud_ ──▶ cloudConversations_
 *     user ──────────▶ showList() ──▶ conversations(), provider_: local_ or cloud_; rows(): display_ or networkDisplay_
 *     contacts_ ─────▶ contactGrouping_, local_ ──▶ itemAggregator_, which groups calls by the numbers of a contact
 *     user ──────────▶ search() ──▶ searcher_ ──▶ finder_ (local_), contacts_ ──▶ phonebook() ──▶ people()
 *                                   searcher_ ──▶ webSearch_ ──▶ webDirectory() and contacts_
 *                                   searcher_ ──▶ cloudSearch_ ──▶ cloudConversations_
 *     webDirectory() ▶ contacts_
 */
#pragma once

#include "CloudListStarter.h"
#include "CloudSearch.h"
#include "CombinedList.h"
#include "ContactGrouping.h"
#include "ConversationAPI/ActiveCallConversationItemSource.h"
#include "ConversationAPI/AggregatorSwitch.h"
#include "ConversationAPI/BroadsoftServiceConversationItemSource.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationFinder.h"
#include "ConversationAPI/ConversationItemAggregator.h"
#include "ConversationAPI/ConversationItemFactory.h"
#include "ConversationAPI/ConversationListProvider.h"
#include "ConversationAPI/ConversationParticipantFactory.h"
#include "ConversationAPI/ConversationSearcher.h"
#include "ConversationAPI/DirectoryServiceConversationSource.h"
#include "ConversationAPI/JournalServiceConversationItemSource.h"
#include "ConversationAPI/QuorvelServiceConversationSource.h"
#include "ConversationAPI/RandomCachingConversationIDGenerator.h"
#include "ConversationAPI/RelativeTimeFormatter.h"
#include "ConversationAPI/WSIConversationSearchInterface.h"
#include "JournalUpdates.h"
#include "SearchField.h"
#include "TelephoneSettings.h"
#include "host/CallControl.h"
#include "host/CloudNotices.h"
#include "host/CloudService.h"
#include "host/DigitAnalysis.h"
#include "host/DisplayModel.h"
#include "host/Journal.h"
#include "host/NetworkCallLog.h"
#include "host/PeopleDirectory.h"
#include "host/Phonebook.h"
#include "host/Translator.h"
#include "host/WebDirectory.h"

#include <filesystem>
#include <string>
#include <vector>

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

    /** Which conversations the screen shows. */
    enum ShownList
    {
        LOCAL_LIST, ///< calls, the mailbox and contacts
        CLOUD_LIST,
        NETWORK_LIST ///< the network's call logs and directories, each entry a row of its own
    };

    /** Where a telephone keeps its history and its contacts, in the folder of its data; "" without one. */
    static std::filesystem::path journalFile(const std::filesystem::path& folder);
    static std::filesystem::path phonebookFile(const std::filesystem::path& folder);

    /** History, phonebook and pictures are kept in the folder; "" for a telephone that keeps nothing. */
    explicit Telephone(const TelephoneSettings& settings, const std::filesystem::path& folder = {});
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

    /** The call logs and directories that the network keeps for the user. */
    Host::NetworkCallLog& networkLog() { return networkLog_; }

    /** The cloud service. */
    Host::CloudService& cloud() { return cloudService_; }

    /** The contacts. */
    Host::Phonebook& phonebook() { return phonebook_; }

    /** A contact, as a write request, that came from a telephone connected by bluetooth. */
    void importBluetoothContact(const std::string& message) { contacts_.newContact(message, "bluetooth"); }

    /** Whom the directory knows unless another one is set. */
    Host::PeopleDirectory& people() { return people_; }

    /** A hit that the directory told by itself, under a search id that is not the user's. */
    void directoryHit(const DirectoryContact& hit) { contacts_.directorySearchResponseEvent(hit); }

    /** The contacts of the web service. */
    Host::WebDirectory& webDirectory() { return webDirectory_; }

    /** A contact of the web service is to go there; whom the user saved stays in the phonebook. */
    void deleteWebContact(const std::string& itemId) { contacts_.wsiItemDeleted(itemId); }

    /** Not owned; outlives the telephone. */
    void setDirectory(Host::DirectorySearch& directory) { phonebook_.setDirectory(&directory); }

    /** The mailbox's number, in any spelling; "" when there is none. Its row and its calls are made anew. */
    void setVoiceMailNumber(const std::string& number);

    /** Whether history and contacts are read, and all that changed is on the disk; true when nothing is kept. */
    bool isStored() const { return journal_.isStored() && phonebook_.isStored(); }

    /** Tries once more to store what waits, and whether all is stored then. What is not will not be stored later. */
    bool storeOrAbandon();

    // What the user interface uses.

    /** Look-ups, deletion, marking as read: of the local or the cloud's list, whichever was shown last. */
    ConversationAPI::AggregatorSwitchIfc& conversations() { return switch_; }

    /** Deletes a row of the shown list: of the history's with the calls that the network has of it. */
    void deleteRow(const ConversationAPI::Conversation& row);

    /** Deletes what the shown list can delete. */
    void deleteAllRows();

    /** The user has looked at the missed calls of a row. */
    void markMissedRead(const ConversationAPI::Conversation& row);

    /** The user has looked at all missed calls of the shown list. */
    void markAllMissedRead();

    /** Has the rows of the history made anew from the journal. */
    void reloadHistory();

    /** 0 or 6 while the display shows the call history; in any other state the network's entries are not part of it. */
    void networkShowStateChanged(int state);

    /** Which calls the network's own list shows: see BroadsoftServiceConversationItemSource. */
    void filterNetworkList(const std::string& filter) { networkCalls_.bwCallLogFilterChanged(filter); }

    /** Each list keeps its own order, the network's until its next change; this one is the shown list's. */
    void sortRows(RowOrder order);

    /** At first the local list is shown. The others are kept up to date meanwhile. */
    void showList(ShownList list);
    ShownList shownList() const { return shownList_; }

    /** What stands in the search field: the people of the telephone's lists and those of the web service are there at
     *  once, the directory's come later. "" closes it. */
    void search(const std::string& text);
    const SearchField& searchField() const { return searchField_; }

    /** Whom a search found. */
    struct Found
    {
        ConversationAPI::Conversation* conversation; ///< valid until the next event
        ConversationAPI::ConversationSearchObserverIfc::SearchResultsType type;
    };

    /** In the order in which they are shown; who is not there any more is left out. */
    std::vector<Found> found();

    bool isOfCloud(const ConversationAPI::Conversation& row);

    /** Whether the phonebook has the row's party. */
    bool isContact(const ConversationAPI::Conversation& row);

    /** Stores somebody in the phonebook. */
    void saveContact(ConversationAPI::Conversation& person);

    /** Who is signed in to the cloud; "" for nobody. */
    std::string cloudUserName() const { return cloudConversations_.displayName(); }

    /** What the screen shows, from top to bottom; valid until the next event. */
    const Host::DisplayModel::Rows& rows() const
    {
        return (shownList_ == NETWORK_LIST ? networkDisplay_ : display_).rows();
    }

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
    CombinedList& combinedList() { return shownList_ == CLOUD_LIST ? cloud_ : local_; }
    ConversationAPI::Conversation* conversationWithId(const std::string& id);

    // What the library builds on.
    Host::DigitAnalysis digitAnalysis_;
    Host::Translator translator_;
    Host::Journal journal_;
    Host::PeopleDirectory people_;
    Host::WebDirectory webDirectory_;
    Host::Phonebook phonebook_;
    Host::NetworkCallLog networkLog_;
    Host::CloudService cloudService_;

    // Factories; the generator remembers which conversation had which id.
    ConversationAPI::ConversationParticipantFactory participantFactory_;
    ConversationAPI::ConversationItemFactory itemFactory_;
    ConversationAPI::RandomCachingConversationIDGenerator idGenerator_;
    ConversationAPI::ConversationFactory conversationFactory_;

    // The rows of the screen. They ask nobody; all that tells them something stands below. What the network's own list
    // is told does not go through the switch, which never lets an observer go.
    Host::DisplayModel display_;
    Host::DisplayModel networkDisplay_;

    // Sources of items.
    ConversationAPI::ActiveCallConversationItemSource liveCalls_;
    ConversationAPI::JournalServiceConversationItemSource history_;
    ConversationAPI::BroadsoftServiceConversationItemSource networkCalls_;

    // What reports to them.
    JournalUpdates journalUpdates_;
    Host::CallControl callControl_;

    // Sources of conversations.
    ConversationAPI::ConversationItemAggregator itemAggregator_;
    ConversationAPI::DirectoryServiceConversationSource contacts_;
    ContactGrouping contactGrouping_;   ///< is told of contacts before the lists are
    CloudListStarter cloudListStarter_; ///< what the next tells of log-ins
    ConversationAPI::QuorvelServiceConversationSource cloudConversations_;
    Host::CloudNotices cloudNotices_; ///< what reports to the last
    CloudSearch cloudSearch_;

    // The lists in which each party stands once. Whoever turns the switch to the other one also hands its source to the
    // provider: see showList().
    CombinedList local_;
    CombinedList cloud_;
    ShownList shownList_ = LOCAL_LIST;

    // What the user interface sees of them.
    ConversationAPI::AggregatorSwitch switch_;
    ConversationAPI::ConversationListProvider provider_;
    ConversationAPI::ConversationListProvider networkProvider_;
    ConversationAPI::RelativeTimeFormatter times_;
    SearchField searchField_;
    ConversationAPI::ConversationFinder finder_;
    ConversationAPI::WSIConversationSearchInterface webSearch_;
    ConversationAPI::ConversationSearcher searcher_;
    unsigned long searches_ = 0; ///< so many there have been
};
} // namespace Deskphone
