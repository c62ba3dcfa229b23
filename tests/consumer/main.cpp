// Rings one call and prints the name in the one row that the list of conversations then has.

#include "ConversationAPI/ActiveCall.h"
#include "ConversationAPI/ActiveCallConversationItemSource.h"
#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationItemAggregator.h"
#include "ConversationAPI/ConversationItemFactory.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationParticipantFactory.h"
#include "ConversationAPI/RandomCachingConversationIDGenerator.h"

#include <cstdio>
#include <ctime>

using namespace ConversationAPI;

int main()
{
    ConversationParticipantFactory participantFactory(nullptr);
    ConversationItemFactory itemFactory(&participantFactory, nullptr);
    RandomCachingConversationIDGenerator idGenerator;
    ConversationFactory conversationFactory;
    conversationFactory.setConversationItemFactory(&itemFactory);
    conversationFactory.setConversationIDGenerator(&idGenerator);

    ActiveCallConversationItemSource calls(&itemFactory);
    ConversationItemAggregator aggregator(&conversationFactory);
    aggregator.addItemSource(&calls);

    const CallPartyIdentifier caller("Ada", "Example", "+493012345", CallPartyIdentifier::NO_ICON, "", false);
    ActiveCall call(std::time, "call-1", caller, ActiveCall::NO_CONFERENCE);
    call.setState(ActiveCall::INCOMING_CALL);
    calls.activeCallEvent(call);

    const ConversationList* list = aggregator.getConversations();
    if (list->size() != 1)
    {
        std::fprintf(stderr, "one call rings, but the list has %zu rows\n", static_cast<std::size_t>(list->size()));
        return 1;
    }
    std::printf("%s\n", list->atIndex(0)->getContactName().c_str());
    return 0;
}
