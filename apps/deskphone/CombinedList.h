/**
 * One list in which each party stands once, and the face that it shows to a list provider.
 *
 * A telephone has one of these for its own conversations and one for those of a cloud service. The item factory and the
 * sources are not owned and outlive the list, which takes itself off the sources. UI thread only.
 */
#pragma once

#include "ConversationAPI/AggregatorConversationSource.h"
#include "ConversationAPI/SearchableConversationSource.h"

namespace Deskphone
{
struct CombinedList
{
    explicit CombinedList(ConversationAPI::ConversationItemFactory& itemFactory)
        : aggregator(&itemFactory), forProvider(aggregator)
    {
    }

    ~CombinedList() { aggregator.setSources({}, false); }

    CombinedList(const CombinedList&) = delete;
    CombinedList& operator=(const CombinedList&) = delete;

    ConversationAPI::SearchableConversationSource aggregator;
    ConversationAPI::AggregatorConversationSource forProvider;
};
} // namespace Deskphone
