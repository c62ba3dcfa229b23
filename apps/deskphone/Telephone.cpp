#include "Telephone.h"

#include "ConversationAPI/ConversationList.h"
#include "host/Clock.h"

namespace Deskphone
{
Telephone::Telephone(const TelephoneSettings& settings)
    : digitAnalysis_(settings.numbers), translator_(settings.language), participantFactory_(&digitAnalysis_),
      itemFactory_(&participantFactory_, &digitAnalysis_), liveCalls_(&itemFactory_), history_(itemFactory_),
      aggregator_(&conversationFactory_), times_(&Host::currentTime)
{
    conversationFactory_.setConversationItemFactory(&itemFactory_);
    conversationFactory_.setDigitAnalysisServiceIfc(&digitAnalysis_);
    conversationFactory_.setConversationIDGenerator(&idGenerator_);
    idGenerator_.setConversationSources({&aggregator_});

    std::vector<ConversationAPI::ConversationItemSourceIfc*> sources{&history_, &liveCalls_};
    aggregator_.addItemSources(sources);

    times_.setTranslatorIfc(&translator_);
    times_.timeFormatChanged(settings.timeFormat);
    times_.dateFormatChanged(settings.dateFormat);
}

/** The sources live longer than who observes them. */
Telephone::~Telephone()
{
    liveCalls_.clearObserver();
    history_.clearObserver();
}

/** The aggregator's list grows at its end; whoever shows it puts it in order. */
std::vector<ConversationAPI::Conversation*> Telephone::conversations()
{
    ConversationAPI::ConversationList& list = *aggregator_.getConversations();
    list.sort();
    return {list.begin(), list.end()};
}

std::string Telephone::comparable(const std::string& number)
{
    std::string converted = number;
    digitAnalysis_.convertDialString(converted);
    return converted;
}
} // namespace Deskphone
