/** Conversions from the call journal's records to what items show. Stateless; callable from any thread. */
#pragma once

#include "platform/CallPartyIdentifier.h"
#include "platform/JournalServiceIfc.h"
#include "platform/NumberType.h"

#include <deque>
#include <string>
#include <vector>

namespace ConversationAPI
{
class JournalServiceUtils
{
  public:
    /** NO_ICON for a type that has no icon. */
    static CallPartyIdentifier::PhoneNumberIconType convertIcon(NumberType::NT type);

    /**
     * "5:3", minutes and seconds, as "05:03", and "125:7" as "2:05:07". Empty for a text without a colon, for no
     * length at all, for 60 seconds or more beside the minutes, and from 100 hours on. What is no number counts as 0.
     */
    static std::string convertJournalServiceDuration(const std::string& text);

    /** The same in parentheses, or empty. */
    static std::string createDurationStr(const std::string& text);

    /** The same in whole minutes, half a minute rounded up: "2:30" as "3", "0:29" as "0". */
    static std::string createHistoryDurationStr(const std::string& text);

    /** The calls of an entry, newest first. */
    static std::vector<MissedCallItem::MissedCallInfo> getCallInfoList(const MissedCallItem& record);
    static std::vector<CallInfo> getCallInfoList(const ReceivedCallItem& record);
    static std::vector<CallInfo> getCallInfoList(const DialledCallItem& record);
    static std::vector<CallInfo> getCallInfoList(const ForwardedCallItem& record);

    /** Appends every entry of the kind; none without a journal. */
    template <typename Record>
    static void getCallList(JournalServiceIfc* journal, std::deque<Record>& records)
    {
        if (journal)
        {
            journal->getCalls(records);
        }
    }
};
} // namespace ConversationAPI
