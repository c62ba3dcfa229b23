#include "Telephone.h"

#include "ConversationAPI/Conversation.h"
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
} // namespace

Telephone::Telephone(const TelephoneSettings& settings, const std::filesystem::path& journalFile)
    : digitAnalysis_(settings.numbers), translator_(settings.language),
      journal_(openJournal(journalFile, settings.history)), participantFactory_(&digitAnalysis_),
      itemFactory_(&participantFactory_, &digitAnalysis_), liveCalls_(&itemFactory_),
      history_(&journal_, &itemFactory_, &digitAnalysis_, &Host::currentTime), journalUpdates_(history_, journal_),
      callControl_(liveCalls_, journal_), itemAggregator_(&conversationFactory_), contacts_(conversationFactory_),
      local_(itemFactory_), provider_(&itemFactory_), times_(&Host::currentTime)
{
    wireFactories();
    wireLists();
    wireDisplay(settings);
    startSources();
}

/** Nobody reports any more, and nothing points to what goes before it. The lists take themselves off their sources. */
Telephone::~Telephone()
{
    journal_.removeObserver(&journalUpdates_);
    liveCalls_.clearObserver();
    history_.clearObserver();
    provider_.setSource(nullptr, false);
    idGenerator_.setConversationSources({});
}

void Telephone::wireFactories()
{
    conversationFactory_.setConversationItemFactory(&itemFactory_);
    conversationFactory_.setDigitAnalysisServiceIfc(&digitAnalysis_);
    conversationFactory_.setConversationIDGenerator(&idGenerator_);
    idGenerator_.setConversationSources({&itemAggregator_, &contacts_});
}

/** In preferred order: what the first source says of a party comes first. */
void Telephone::wireLists()
{
    local_.aggregator.setSources({&itemAggregator_, &contacts_}, false);
    switch_.addNormalAggregator(&local_.aggregator);
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
    times_.setTranslatorIfc(&translator_);
    times_.timeFormatChanged(settings.timeFormat);
    times_.dateFormatChanged(settings.dateFormat);
}

/** The history is there as soon as the journal service has accepted the subscription; this one does so at once. */
void Telephone::startSources()
{
    std::vector<ConversationAPI::ConversationItemSourceIfc*> sources{&history_, &liveCalls_};
    itemAggregator_.addItemSources(sources);
    journal_.addObserver(&journalUpdates_);
    history_.setJournalServiceSubscribed(true);
    history_.notifyObserversForSubscription();
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

/** Also the entries whose calls the row is too short to show. What the journal reports then brings the row up to date.
 */
void Telephone::markMissedRead(const ConversationAPI::Conversation& row)
{
    history_.ageAllMissedCalls(row.getJournalServiceEntries());
}

void Telephone::sortRows(RowOrder order)
{
    local_.aggregator.setSortType(order);
    switch_.conversationsChanged();
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
