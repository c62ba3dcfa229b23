#include "ConversationAPI/VoicemailConversationItem.h"

#include "model/CloneItem.h"

namespace ConversationAPI
{
VoicemailConversationItem::VoicemailConversationItem(const std::string& timeAndDate, const std::string& voicemailNumber,
                                                     ConversationParticipantFactory* factory)
    : ConversationItem(voicemailNumber, "", "", CallPartyIdentifier::NO_ICON, factory)
{
    extractTimeAndDateFromJournalServiceISO8601String(timeAndDate);
}

VoicemailConversationItem::VoicemailConversationItem(long time, const std::string& voicemailNumber,
                                                     ConversationParticipantFactory* factory)
    : ConversationItem(voicemailNumber, "", "", CallPartyIdentifier::NO_ICON, factory)
{
    setTimeStampUTC(time);
}

ConversationItem* VoicemailConversationItem::clone()
{
    return cloneOf(*this);
}
} // namespace ConversationAPI
