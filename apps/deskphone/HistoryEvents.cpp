#include "EventCatalogue.h"
#include "Telephone.h"

namespace Deskphone
{
namespace
{
constexpr long LONGEST_CALL = 100 * 3600 - 1; ///< seconds

const EventFields::Choices<HistoryCall::Kind>& kinds()
{
    static const EventFields::Choices<HistoryCall::Kind> all = {
        {"dialled", HistoryCall::DIALLED},
        {"received", HistoryCall::RECEIVED},
        {"missed", HistoryCall::MISSED},
        {"forwarded", HistoryCall::FORWARDED},
    };
    return all;
}

/** What is asked of one kind only is an unknown field of the others. */
Action readHistory(EventFields& fields, long time)
{
    HistoryCall call;
    call.kind = fields.requiredChoice("kind", kinds());
    call.entryId = fields.requiredText("entryId");
    call.party = fields.party("party");
    call.time = fields.moment("callTime", time);
    if (fields.has("forwardedParty"))
    {
        call.forwardedParty = fields.party("forwardedParty");
    }
    if (call.kind == HistoryCall::MISSED)
    {
        call.seen = fields.flag("seen");
        call.answeredElsewhere = fields.flag("answeredElsewhere");
        call.groupName = fields.text("groupName");
        call.groupNumber = fields.text("groupNumber");
    }
    else
    {
        call.durationSeconds = fields.number("duration", 0, LONGEST_CALL, 0);
    }
    return [call](Telephone& telephone) { telephone.history().add(call); };
}

Action readHistoryRemoved(EventFields& fields, long)
{
    const std::string entryId = fields.requiredText("entryId");
    return [entryId](Telephone& telephone) { telephone.history().remove(entryId); };
}

Action readHistoryReloaded(EventFields&, long)
{
    return [](Telephone& telephone) { telephone.history().reload(); };
}
} // namespace

void addHistoryEvents(EventCatalogue& catalogue)
{
    catalogue.add("history", readHistory);
    catalogue.add("history-removed", readHistoryRemoved);
    catalogue.add("history-reloaded", readHistoryReloaded);
}
} // namespace Deskphone
