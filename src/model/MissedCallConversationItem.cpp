#include "ConversationAPI/MissedCallConversationItem.h"

#include "model/CloneItem.h"

namespace ConversationAPI
{
MissedCallConversationItem::MissedCallConversationItem(const std::string& timeAndDate, const std::string& number,
                                                       const std::string& firstName, const std::string& lastName,
                                                       ConversationParticipantFactory* factory)
    : ConversationItem(number, firstName, lastName, CallPartyIdentifier::NO_ICON, factory)
{
    extractTimeAndDateFromJournalServiceISO8601String(timeAndDate);
}

MissedCallConversationItem::MissedCallConversationItem(long time, const std::string& number,
                                                       const std::string& firstName, const std::string& lastName,
                                                       ConversationParticipantFactory* factory)
    : ConversationItem(number, firstName, lastName, CallPartyIdentifier::NO_ICON, factory)
{
    setTimeStampUTC(time);
}

ConversationItemState MissedCallConversationItem::getState() const
{
    if (groupStatus_)
    {
        return ConversationItemState::MISSED_GROUP_CALL;
    }
    return answerStatus_ ? ConversationItemState::MISSED_ANSWERED_ELSEWHERE : ConversationItemState::MISSED;
}

ConversationItem* MissedCallConversationItem::clone()
{
    return cloneOf(*this);
}
} // namespace ConversationAPI
