#include "ConversationAPI/ConversationParticipantFactory.h"

namespace ConversationAPI
{
ConversationParticipantFactory::ConversationParticipantFactory(DigitAnalysisServiceIfc* digitAnalysis)
    : digitAnalysis_(digitAnalysis)
{
}

ConversationParticipantFactory::~ConversationParticipantFactory() = default;

ConversationParticipant ConversationParticipantFactory::getConversationParticipant(const CallPartyIdentifier& party)
{
    ConversationParticipant participant(party);
    participant.setDialStringConverter(digitAnalysis_);
    return participant;
}
} // namespace ConversationAPI
