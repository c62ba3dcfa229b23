/** What an item and its party hold, written down as one would without a thought for bytes. */
#pragma once

#include "JournalRecords.h"

#include "ConversationAPI/ConversationItem.h"

#include <string>
#include <vector>

namespace Bench
{
struct PlainParty
{
    std::string firstName, surname, number, picturePath, comparableNumber, userId, email, company, address1, address2,
        role, workNumber1, workNumber2, mobileNumber, homeNumber;
    int numberType = 0;
};

struct PlainItem
{
    explicit PlainItem(const CallRecord& record)
        : participants(1),
          time(ConversationAPI::ConversationItem::extractUTCTimeTFromJournalServiceISO8601String(record.time)),
          timeAndDate(record.time), entryId(record.entryId), kind(record.kind)
    {
        PlainParty& party = participants.front();
        party.firstName = record.firstName;
        party.surname = record.lastName;
        party.number = record.number;
        party.comparableNumber = record.number;
        party.workNumber1 = record.number;
    }

    std::vector<PlainParty> participants;
    long time;
    long modificationTime = 0;
    std::string timeAndDate, conversationId, conversationItemId;
    PlainParty creator;
    std::string entryId, lastPhoneNumber, exchangeContactId, duration, historyDuration, groupName, groupNumber;
    PlainParty forwardedParty;
    int kind;
    bool isClone = false, viewed = true, answered = false, isGroupCall = false, isConference = false;
};
} // namespace Bench
