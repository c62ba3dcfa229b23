#include "ConversationAPI/ConversationItemFactory.h"

#include "ConversationAPI/ActiveCallConversationItem.h"
#include "ConversationAPI/DialledCallConversationItem.h"
#include "ConversationAPI/DummyConversationItem.h"
#include "ConversationAPI/ForwardedCallConversationItem.h"
#include "ConversationAPI/MissedCallConversationItem.h"
#include "ConversationAPI/ReceivedCallConversationItem.h"
#include "ConversationAPI/SystemConversationItem.h"
#include "ConversationAPI/TextConversationItem.h"
#include "ConversationAPI/VoicemailConversationItem.h"
#include "platform/DigitAnalysisServiceIfc.h"

namespace ConversationAPI
{
ConversationItemFactory::ConversationItemFactory(ConversationParticipantFactory* participantFactory,
                                                 DigitAnalysisServiceIfc* digitAnalysis)
    : participantFactory_(participantFactory), digitAnalysis_(digitAnalysis)
{
}

ConversationItemFactory::~ConversationItemFactory() = default;

void ConversationItemFactory::setVoiceMailNumber(const std::string& number)
{
    voiceMailNumber_ = number;
    if (digitAnalysis_)
    {
        digitAnalysis_->convertDialString(voiceMailNumber_);
    }
}

std::string ConversationItemFactory::getVoiceMailNumber() const
{
    return voiceMailNumber_;
}

bool ConversationItemFactory::voiceMailNumberIsConfigured() const
{
    return !voiceMailNumber_.empty();
}

bool ConversationItemFactory::matchesVoiceMailNumber(const std::string& number)
{
    return voiceMailNumberIsConfigured() && number == voiceMailNumber_;
}

ConversationItem* ConversationItemFactory::getMissedCallConversationItem(const std::string& timeAndDate,
                                                                         const std::string& number,
                                                                         const std::string& firstName,
                                                                         const std::string& lastName)
{
    return new MissedCallConversationItem(timeAndDate, number, firstName, lastName, participantFactory_);
}

ConversationItem* ConversationItemFactory::getMissedCallConversationItem(long time, const std::string& number,
                                                                         const std::string& firstName,
                                                                         const std::string& lastName)
{
    return new MissedCallConversationItem(time, number, firstName, lastName, participantFactory_);
}

ConversationItem* ConversationItemFactory::getReceivedCallConversationItem(const std::string& timeAndDate,
                                                                           const std::string& number,
                                                                           const std::string& firstName,
                                                                           const std::string& lastName)
{
    return new ReceivedCallConversationItem(timeAndDate, number, firstName, lastName, participantFactory_);
}

ConversationItem* ConversationItemFactory::getReceivedCallConversationItem(long time, const std::string& number,
                                                                           const std::string& firstName,
                                                                           const std::string& lastName)
{
    return new ReceivedCallConversationItem(time, number, firstName, lastName, participantFactory_);
}

ConversationItem* ConversationItemFactory::getDialledCallConversationItem(const std::string& timeAndDate,
                                                                          const std::string& number,
                                                                          const std::string& firstName,
                                                                          const std::string& lastName)
{
    return new DialledCallConversationItem(timeAndDate, number, firstName, lastName, participantFactory_);
}

ConversationItem* ConversationItemFactory::getDialledCallConversationItem(long time, const std::string& number,
                                                                          const std::string& firstName,
                                                                          const std::string& lastName)
{
    return new DialledCallConversationItem(time, number, firstName, lastName, participantFactory_);
}

ConversationItem* ConversationItemFactory::getForwardedCallConversationItem(const std::string& timeAndDate,
                                                                            const std::string& number,
                                                                            const std::string& firstName,
                                                                            const std::string& lastName)
{
    return new ForwardedCallConversationItem(timeAndDate, number, firstName, lastName, participantFactory_);
}

ConversationItem* ConversationItemFactory::getVoicemailConversationItem(const std::string& timeAndDate)
{
    return new VoicemailConversationItem(timeAndDate, voiceMailNumber_, participantFactory_);
}

ConversationItem* ConversationItemFactory::getVoicemailConversationItem(long time)
{
    return new VoicemailConversationItem(time, voiceMailNumber_, participantFactory_);
}

ConversationItem* ConversationItemFactory::getTextConversationItem(const std::string& creatorId, long time,
                                                                   const std::string& number,
                                                                   const std::string& firstName,
                                                                   const std::string& lastName)
{
    return new TextConversationItem(creatorId, time, number, firstName, lastName, participantFactory_);
}

ConversationItem* ConversationItemFactory::getSystemConversationItem(const std::string& creatorId, long time,
                                                                     const std::string& number,
                                                                     const std::string& firstName,
                                                                     const std::string& lastName)
{
    return new SystemConversationItem(creatorId, time, number, firstName, lastName, participantFactory_);
}

ConversationItem* ConversationItemFactory::getDummyConversationItem(long time, const std::string& number,
                                                                    const std::string& firstName,
                                                                    const std::string& lastName,
                                                                    CallPartyIdentifier::PhoneNumberIconType numberType)
{
    return new DummyConversationItem(time, number, firstName, lastName, participantFactory_, numberType);
}

ConversationItem* ConversationItemFactory::getActiveCallConversationItem(const ActiveCall& call)
{
    return new ActiveCallConversationItem(call, participantFactory_);
}
} // namespace ConversationAPI
