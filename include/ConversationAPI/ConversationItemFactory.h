/**
 * Makes every item of the library and knows the telephone's voicemail number.
 *
 * The participant factory gives the items' parties their comparable numbers; it and the digit-analysis
 * service are not owned and outlive the factory and all items it made. Whoever asks for an item owns it.
 * Times are seconds since the epoch, UTC, or the journal's ISO 8601 texts. UI thread only.
 */
#pragma once

#include "ConversationAPI/ActiveCall.h"
#include "platform/CallPartyIdentifier.h"

#include <string>

class DigitAnalysisServiceIfc;

namespace ConversationAPI
{
class ConversationItem;
class ConversationParticipantFactory;

class ConversationItemFactory
{
  public:
    /** Without a participant factory the items have no parties; without digit analysis numbers stay raw. */
    ConversationItemFactory(ConversationParticipantFactory* participantFactory, DigitAnalysisServiceIfc* digitAnalysis);
    virtual ~ConversationItemFactory();

    ConversationItemFactory(const ConversationItemFactory&) = delete;
    ConversationItemFactory& operator=(const ConversationItemFactory&) = delete;

    /** Kept in comparable form; "" for a telephone without a mailbox. */
    void setVoiceMailNumber(const std::string& number);
    std::string getVoiceMailNumber() const;
    bool voiceMailNumberIsConfigured() const;

    /** Whether `number` is, byte for byte, the configured voicemail number. */
    bool matchesVoiceMailNumber(const std::string& number);

    ConversationItem* getMissedCallConversationItem(const std::string& timeAndDate, const std::string& number,
                                                    const std::string& firstName, const std::string& lastName);
    ConversationItem* getMissedCallConversationItem(long time, const std::string& number, const std::string& firstName,
                                                    const std::string& lastName);
    ConversationItem* getReceivedCallConversationItem(const std::string& timeAndDate, const std::string& number,
                                                      const std::string& firstName, const std::string& lastName);
    ConversationItem* getReceivedCallConversationItem(long time, const std::string& number,
                                                      const std::string& firstName, const std::string& lastName);
    ConversationItem* getDialledCallConversationItem(const std::string& timeAndDate, const std::string& number,
                                                     const std::string& firstName, const std::string& lastName);
    ConversationItem* getDialledCallConversationItem(long time, const std::string& number, const std::string& firstName,
                                                     const std::string& lastName);
    ConversationItem* getForwardedCallConversationItem(const std::string& timeAndDate, const std::string& number,
                                                       const std::string& firstName, const std::string& lastName);

    /** The party is the voicemail number as configured by now. */
    ConversationItem* getVoicemailConversationItem(const std::string& timeAndDate);
    ConversationItem* getVoicemailConversationItem(long time);
    ConversationItem* getTextConversationItem(const std::string& creatorId, long time, const std::string& number,
                                              const std::string& firstName, const std::string& lastName);
    ConversationItem* getSystemConversationItem(const std::string& creatorId, long time, const std::string& number,
                                                const std::string& firstName, const std::string& lastName);
    ConversationItem* getDummyConversationItem(long time, const std::string& number, const std::string& firstName,
                                               const std::string& lastName,
                                               CallPartyIdentifier::PhoneNumberIconType numberType);
    ConversationItem* getActiveCallConversationItem(const ActiveCall& call);

  private:
    ConversationParticipantFactory* participantFactory_;
    std::string voiceMailNumber_;
    DigitAnalysisServiceIfc* digitAnalysis_;
};
} // namespace ConversationAPI
