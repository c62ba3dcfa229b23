/**
 * Makes participants whose numbers are already in comparable form.
 *
 * The digit-analysis service is not owned and outlives the factory and every participant it made; null gives
 * participants whose comparable number is the raw one.
 */
#pragma once

#include "ConversationAPI/ConversationParticipant.h"

namespace ConversationAPI
{
class ConversationParticipantFactory
{
  public:
    explicit ConversationParticipantFactory(DigitAnalysisServiceIfc* digitAnalysis);
    virtual ~ConversationParticipantFactory();

    ConversationParticipant getConversationParticipant(const CallPartyIdentifier& party);

  private:
    DigitAnalysisServiceIfc* digitAnalysis_;
};
} // namespace ConversationAPI
