#include "HistoryCall.h"

#include "FieldWriter.h"
#include "Moment.h"
#include "host/Clock.h"
#include "platform/ClientUtils.h"

namespace Deskphone
{
using Host::JournalCall;

namespace
{
constexpr long LONGEST_CALL = 100 * 3600 - 1; ///< seconds

using Icon = CallPartyIdentifier::PhoneNumberIconType;

CallPartyIdentifier partyOf(const std::string& first, const std::string& last, const std::string& number,
                            NumberType::NT type)
{
    return {first, last, number, static_cast<Icon>(type), "", false};
}

/** Of "2:5". */
long durationInSeconds(const std::string& duration)
{
    const std::size_t colon = duration.find(':');
    return colon == std::string::npos
               ? 0
               : 60L * ClientUtils::stoi(duration.substr(0, colon)) + ClientUtils::stoi(duration.substr(colon + 1));
}

/** What is asked of one kind only is an unknown field of the others. */
void readMissed(EventFields& fields, HistoryCall& call)
{
    call.seen = fields.flag("seen");
    call.answeredElsewhere = fields.flag("answeredElsewhere");
    call.groupName = fields.text("groupName");
    call.groupNumber = fields.text("groupNumber");
}
} // namespace

HistoryCall::HistoryCall(const JournalCall& call)
    : kind(call.kind),
      party(partyOf(call.firstName, call.surname, call.info.getRemoteNumber(), call.info.getNumberType())),
      time(parseMoment(call.info.getCallTime()).value_or(0)),
      durationSeconds(durationInSeconds(call.info.getDuration())), seen(call.info.getViewed()),
      answeredElsewhere(call.info.getAnswered()), groupName(call.info.getGroupName()),
      groupNumber(call.info.getGroupNumber())
{
    const CallPartyIdentifier redirecting =
        partyOf(call.info.getRedirectingFirstName(), call.info.getRedirectingLastName(),
                call.info.getRedirectingNumber(), call.info.getRedirectingNumberType());
    if (!redirecting.getNumber().empty())
    {
        forwardedParty = redirecting;
    }
}

JournalCall HistoryCall::forJournal() const
{
    JournalCall call;
    call.kind = kind;
    call.setParty(party);
    call.setDuration(durationSeconds);
    call.info.setCallTime(Host::localIso8601(time));
    call.info.setViewed(seen);
    call.info.setAnswered(answeredElsewhere);
    call.info.setGroupName(groupName);
    call.info.setGroupNumber(groupNumber);
    if (forwardedParty)
    {
        call.setRedirectingParty(*forwardedParty);
    }
    return call;
}

const EventFields::Choices<HistoryCall::Kind>& historyKinds()
{
    static const EventFields::Choices<HistoryCall::Kind> all = {
        {"dialled", JournalCall::DIALLED},
        {"received", JournalCall::RECEIVED},
        {"missed", JournalCall::MISSED},
        {"forwarded", JournalCall::FORWARDED},
    };
    return all;
}

HistoryCall readHistoryCall(EventFields& fields, long time)
{
    HistoryCall call;
    call.kind = fields.requiredChoice("kind", historyKinds());
    call.party = fields.party("party");
    call.time = fields.moment("callTime", time);
    if (fields.has("forwardedParty"))
    {
        call.forwardedParty = fields.party("forwardedParty");
    }
    if (call.kind == JournalCall::MISSED)
    {
        readMissed(fields, call);
    }
    else
    {
        call.durationSeconds = fields.number("duration", 0, LONGEST_CALL, 0);
    }
    return call;
}

void writeHistoryCall(FieldWriter& fields, const HistoryCall& call)
{
    fields.choice("kind", historyKinds(), call.kind);
    fields.party("party", call.party);
    fields.moment("callTime", call.time);
    if (call.forwardedParty)
    {
        fields.partyEvenIfUnknown("forwardedParty", *call.forwardedParty);
    }
    fields.number("duration", call.durationSeconds, 0);
    fields.flag("seen", call.seen);
    fields.flag("answeredElsewhere", call.answeredElsewhere);
    fields.text("groupName", call.groupName);
    fields.text("groupNumber", call.groupNumber);
}
} // namespace Deskphone
