#include "Telephone.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "NetworkEntries.h"
#include "host/Clock.h"

#include <vector>

namespace Deskphone
{
namespace
{
Host::Journal openJournal(const std::filesystem::path& file, const Host::JournalLimits& limits)
{
    return file.empty() ? Host::Journal(limits) : Host::Journal(file, limits);
}

Host::Phonebook openPhonebook(const std::filesystem::path& file)
{
    return file.empty() ? Host::Phonebook() : Host::Phonebook(file);
}

std::filesystem::path inFolder(const std::filesystem::path& folder, const char* name)
{
    return folder.empty() ? folder : folder / name;
}
} // namespace

std::filesystem::path Telephone::journalFile(const std::filesystem::path& folder)
{
    return inFolder(folder, "call-journal.sqlite");
}

std::filesystem::path Telephone::phonebookFile(const std::filesystem::path& folder)
{
    return inFolder(folder, "phonebook.sqlite");
}

Telephone::Telephone(const TelephoneSettings& settings, const std::filesystem::path& folder)
    : digitAnalysis_(settings.numbers), translator_(settings.language),
      journal_(openJournal(journalFile(folder), settings.history)), people_(*Host::EventLoop::current()),
      phonebook_(openPhonebook(phonebookFile(folder))), participantFactory_(&digitAnalysis_),
      itemFactory_(&participantFactory_, &digitAnalysis_), liveCalls_(&itemFactory_),
      history_(&journal_, &itemFactory_, &digitAnalysis_, &Host::currentTime),
      networkCalls_(&networkLog_, &itemFactory_, &conversationFactory_), journalUpdates_(history_, journal_),
      callControl_(liveCalls_, journal_), itemAggregator_(&conversationFactory_),
      contacts_(&conversationFactory_, &phonebook_, &webDirectory_),
      contactGrouping_(contacts_, itemAggregator_, idGenerator_),
      cloudConversations_(&itemFactory_, &conversationFactory_, &cloudListStarter_),
      cloudNotices_(cloudService_, cloudConversations_), cloudSearch_(cloudConversations_), local_(itemFactory_),
      cloud_(itemFactory_), provider_(&itemFactory_), networkProvider_(&itemFactory_), times_(&Host::currentTime),
      finder_(local_.aggregator), webSearch_(&contacts_)
{
    wireFactories();
    wireLists();
    wireDisplay(settings);
    contacts_.setPictureDirectory(folder.empty() ? folder : folder / "pictures");
    startSources();
}

/** Nobody reports any more, and nothing points to what goes before it. The lists take themselves off their sources. */
Telephone::~Telephone()
{
    searcher_.cancelSearch();
    webDirectory_.setObserver(nullptr);
    phonebook_.setDirectory(nullptr);
    phonebook_.removeObserver(&contacts_);
    journal_.removeObserver(&journalUpdates_);
    networkLog_.setObserver(nullptr);
    networkCalls_.clearObserver();
    liveCalls_.clearObserver();
    history_.clearObserver();
    provider_.setSource(nullptr, false);
    networkProvider_.setSource(nullptr, false);
    contacts_.removeObserver(&contactGrouping_);
    cloudListStarter_.setAggregator(nullptr);
    idGenerator_.setConversationSources({});
}

void Telephone::wireFactories()
{
    conversationFactory_.setConversationItemFactory(&itemFactory_);
    conversationFactory_.setDigitAnalysisServiceIfc(&digitAnalysis_);
    conversationFactory_.setConversationIDGenerator(&idGenerator_);
    idGenerator_.setConversationSources({&itemAggregator_, &contacts_});
}

/** Sources in preferred order: what the first one says of a party comes first. */
void Telephone::wireLists()
{
    contacts_.addObserver(&contactGrouping_);
    local_.aggregator.setSources({&itemAggregator_, &contacts_}, false);
    cloud_.aggregator.setSources({&cloudConversations_}, false);
    cloudListStarter_.setAggregator(&cloud_.aggregator);
    switch_.addNormalAggregator(&local_.aggregator);
    switch_.addQuorvelAggregator(&cloud_.aggregator);
    switch_.addConversationListProvider(&provider_);
    switch_.useConversationListProvider();
}

/**
 * Whole lists come from the provider, too; single rows from the aggregator alone, whichever is the current one. The
 * first list comes when the sources are ready, not now: until then it may be made anew without a word.
 */
void Telephone::wireDisplay(const TelephoneSettings& settings)
{
    switch_.addConversationEventObserver(&display_);
    switch_.addConversationEventObserverToProvider(&display_);
    provider_.setSource(&local_.forProvider, false);
    networkProvider_.addObserver(&networkDisplay_);
    networkProvider_.setSource(&networkCalls_, true);
    times_.setTranslatorIfc(&translator_);
    times_.timeFormatChanged(settings.timeFormat);
    times_.dateFormatChanged(settings.dateFormat);
}

/**
 * The history is there as soon as the journal service has accepted the subscription; this one does so at once. The
 * cloud's conversations come when somebody signs in. Of two items of one row and second the later source's stays: what
 * both logs have of a call is to be the journal's, which alone knows whether the user has seen it.
 */
void Telephone::startSources()
{
    std::vector<ConversationAPI::ConversationItemSourceIfc*> sources{&networkCalls_, &history_, &liveCalls_};
    itemAggregator_.addItemSources(sources);
    journal_.addObserver(&journalUpdates_);
    history_.setJournalServiceSubscribed(true);
    history_.notifyObserversForSubscription();
    networkLog_.setObserver([this](const auto& updatedDirectories, const auto& entries)
                            { networkCalls_.broadsoftCallLogChanged(updatedDirectories, entries); });
    networkCalls_.init();
    phonebook_.setDirectory(&people_);
    phonebook_.addObserver(&contacts_);
    contacts_.phonebookDatabaseUpdated(true);
    webDirectory_.setObserver(&contacts_);
    webSearch_.addWSISource(&webDirectory_);
    searcher_.addSearchableConversationSource(&finder_);
    searcher_.addSearchableConversationSource(&contacts_);
    searcher_.addSearchableConversationSource(&webSearch_);
    searcher_.addSearchableConversationSource(&cloudSearch_);
    local_.aggregator.start();
}

/** The order matters: rows of both numbers go first, and what the source tells then brings them back. */
void Telephone::setVoiceMailNumber(const std::string& number)
{
    const std::string before = itemFactory_.getVoiceMailNumber();
    itemFactory_.setVoiceMailNumber(number);
    local_.aggregator.voiceMailChanged(before, itemFactory_.getVoiceMailNumber());
    reloadHistory();
}

void Telephone::reloadHistory()
{
    history_.notifyObserver();
}

/**
 * Also the entries whose calls the row is too short to show. What the journal reports then brings the row up to date.
 * The network keeps no marks, and the id of one of its entries may be that of one of the journal's.
 */
void Telephone::markMissedRead(const ConversationAPI::Conversation& row)
{
    if (shownList_ != NETWORK_LIST)
    {
        history_.ageAllMissedCalls(row.getJournalServiceEntries());
    }
}

void Telephone::markAllMissedRead()
{
    shownList_ == NETWORK_LIST ? networkProvider_.markAllMissedCallsRead() : switch_.markAllMissedCallsRead();
}

/**
 * The network deletes entry by entry, and only when asked through its source: left alone, its calls would bring the
 * row back with the next change of the log. They come last: without them the row might be a contact's alone, who
 * would be deleted with it.
 */
void Telephone::deleteRow(const ConversationAPI::Conversation& row)
{
    if (shownList_ == NETWORK_LIST)
    {
        networkProvider_.deleteConversation(row.getConversationId());
        return;
    }
    const std::vector<NetworkEntry> entries = networkEntriesOf(networkCalls_, row);
    switch_.deleteConversation(row.getConversationId());
    deleteNetworkEntries(networkCalls_, entries);
}

void Telephone::deleteAllRows()
{
    shownList_ == NETWORK_LIST ? networkProvider_.deleteConversations() : switch_.deleteConversations();
}

/** The source tells those who show its own list; which items it gives for the history depends on the state, too. */
void Telephone::networkShowStateChanged(int state)
{
    networkCalls_.showStateChanged(state);
    itemAggregator_.conversationItemsChanged();
}

/** Each search has an id of its own, so that answers to what was typed before are dropped. */
void Telephone::search(const std::string& text)
{
    searchField_.begin(text);
    if (text.empty())
    {
        searcher_.cancelSearch();
        local_.aggregator.clearTemporaryConversations();
        cloud_.aggregator.clearTemporaryConversations();
        return;
    }
    searcher_.startSearch("search " + std::to_string(++searches_), text, &searchField_);
}

/** Whichever list is shown: a search looks for everybody. */
ConversationAPI::Conversation* Telephone::conversationWithId(const std::string& id)
{
    ConversationAPI::Conversation* local = local_.aggregator.getConversationByConversationID(id);
    return local ? local : cloud_.aggregator.getConversationByConversationID(id);
}

std::vector<Telephone::Found> Telephone::found()
{
    std::vector<Found> all;
    for (const SearchField::Result& result : searchField_.found())
    {
        if (ConversationAPI::Conversation* one = conversationWithId(result.conversationId))
        {
            all.push_back({one, result.type});
        }
    }
    return all;
}

bool Telephone::storeOrAbandon()
{
    const auto storeOrAbandonOne = [](auto& file)
    {
        const bool isStored = file.store();
        if (!isStored)
        {
            file.abandon();
        }
        return isStored;
    };
    const bool isHistoryStored = storeOrAbandonOne(journal_);
    return storeOrAbandonOne(phonebook_) && isHistoryStored;
}

bool Telephone::isOfCloud(const ConversationAPI::Conversation& row)
{
    return cloudConversations_.getConversation(row.getConversationId()) != nullptr;
}

bool Telephone::isContact(const ConversationAPI::Conversation& row)
{
    const ConversationAPI::ConversationListConditions::ConversationIDCondition hasId(row.getConversationId());
    return contacts_.getConversations()->find(hasId) != nullptr;
}

void Telephone::saveContact(ConversationAPI::Conversation& person)
{
    contacts_.saveContact(&person);
}

/** The network's source puts its list in order and tells nobody. */
void Telephone::sortRows(RowOrder order)
{
    if (shownList_ == NETWORK_LIST)
    {
        networkCalls_.sortBroadsoftCallLogs(order);
        networkProvider_.start();
        return;
    }
    combinedList().aggregator.setSortType(order);
    switch_.conversationsChanged();
}

/**
 * start() puts a list in order whose rows changed one by one. The provider comes last: it tells the display, which has
 * moved by then, also a list that is not ready yet. The network's list has a display of its own, which is up to date.
 */
void Telephone::showList(ShownList list)
{
    shownList_ = list;
    if (list == NETWORK_LIST)
    {
        return;
    }
    if (list == CLOUD_LIST)
    {
        switch_.useQuorvelConversationAggregator();
    }
    else
    {
        switch_.useNormalConversationAggregator();
    }
    combinedList().aggregator.start();
    provider_.setSource(&combinedList().forProvider, true);
}

const ConversationAPI::Conversation* Telephone::row(long place) const
{
    const bool exists = place >= 1 && static_cast<std::size_t>(place) <= rows().size();
    return exists ? rows()[static_cast<std::size_t>(place) - 1] : nullptr;
}

std::string Telephone::comparable(const std::string& number)
{
    std::string converted = number;
    digitAnalysis_.convertDialString(converted);
    return converted;
}
} // namespace Deskphone
