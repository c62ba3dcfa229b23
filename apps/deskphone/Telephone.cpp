#include "Telephone.h"

#include "host/Clock.h"

#include <vector>

namespace Deskphone
{
Telephone::Telephone(const TelephoneSettings& settings)
    : digitAnalysis_(settings.numbers), translator_(settings.language), participantFactory_(&digitAnalysis_),
      itemFactory_(&participantFactory_, &digitAnalysis_), liveCalls_(&itemFactory_), history_(itemFactory_),
      itemAggregator_(&conversationFactory_), contacts_(conversationFactory_), local_(itemFactory_),
      provider_(&itemFactory_), times_(&Host::currentTime)
{
    wireFactories();
    wireLists();
    wireDisplay(settings);
    startSources();
}

/** Nobody reports any more, and nothing points to what goes before it. The lists take themselves off their sources. */
Telephone::~Telephone()
{
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

/** A source that subscribes to a service reports sourceSubscribed() itself; the stand-in for the journal is ready. */
void Telephone::startSources()
{
    std::vector<ConversationAPI::ConversationItemSourceIfc*> sources{&history_, &liveCalls_};
    itemAggregator_.addItemSources(sources);
    itemAggregator_.sourceSubscribed();
    local_.aggregator.start();
}

/** The order matters: rows of both numbers go first, and what the source tells then brings them back. */
void Telephone::setVoiceMailNumber(const std::string& number)
{
    const std::string before = itemFactory_.getVoiceMailNumber();
    itemFactory_.setVoiceMailNumber(number);
    local_.aggregator.voiceMailChanged(before, itemFactory_.getVoiceMailNumber());
    history_.reload();
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
