#include "host/JournalCall.h"

namespace Host
{
namespace
{
NumberType::NT numberTypeOf(const CallPartyIdentifier& party)
{
    return static_cast<NumberType::NT>(party.getPhoneNumberType());
}
} // namespace

void JournalCall::setParty(const CallPartyIdentifier& party)
{
    firstName = party.getFirstName();
    surname = party.getSurname();
    info.setRemoteNumber(party.getNumber());
    info.setNumberType(numberTypeOf(party));
}

void JournalCall::setRedirectingParty(const CallPartyIdentifier& party)
{
    info.setRedirectingFirstName(party.getFirstName());
    info.setRedirectingLastName(party.getSurname());
    info.setRedirectingNumber(party.getNumber());
    info.setRedirectingNumberType(numberTypeOf(party));
}

void JournalCall::setDuration(long seconds)
{
    info.setDuration(seconds > 0 ? std::to_string(seconds / 60) + ':' + std::to_string(seconds % 60) : "");
}
} // namespace Host
