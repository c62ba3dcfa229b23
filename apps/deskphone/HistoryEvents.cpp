#include "EventCatalogue.h"
#include "FieldWriter.h"
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
class HistoryAdded : public Event
{
  public:
    HistoryAdded(EventFields& fields, long time)
    {
        call_.kind = fields.requiredChoice("kind", kinds());
        call_.entryId = fields.requiredText("entryId");
        call_.party = fields.party("party");
        call_.time = fields.moment("callTime", time);
        if (fields.has("forwardedParty"))
        {
            call_.forwardedParty = fields.party("forwardedParty");
        }
        if (call_.kind == HistoryCall::MISSED)
        {
            readMissed(fields);
        }
        else
        {
            call_.durationSeconds = fields.number("duration", 0, LONGEST_CALL, 0);
        }
    }

    void apply(Telephone& telephone) const override { telephone.history().add(call_); }

    void write(FieldWriter& fields) const override
    {
        fields.choice("kind", kinds(), call_.kind);
        fields.text("entryId", call_.entryId);
        fields.party("party", call_.party);
        fields.moment("callTime", call_.time);
        if (call_.forwardedParty)
        {
            fields.partyEvenIfUnknown("forwardedParty", *call_.forwardedParty);
        }
        fields.number("duration", call_.durationSeconds, 0);
        fields.flag("seen", call_.seen);
        fields.flag("answeredElsewhere", call_.answeredElsewhere);
        fields.text("groupName", call_.groupName);
        fields.text("groupNumber", call_.groupNumber);
    }

  private:
    void readMissed(EventFields& fields)
    {
        call_.seen = fields.flag("seen");
        call_.answeredElsewhere = fields.flag("answeredElsewhere");
        call_.groupName = fields.text("groupName");
        call_.groupNumber = fields.text("groupNumber");
    }

    HistoryCall call_;
};

class HistoryRemoved : public Event
{
  public:
    HistoryRemoved(EventFields& fields, long) : entryId_(fields.requiredText("entryId")) {}

    void apply(Telephone& telephone) const override { telephone.history().remove(entryId_); }
    void write(FieldWriter& fields) const override { fields.text("entryId", entryId_); }

  private:
    const std::string entryId_;
};

void reload(Telephone& telephone)
{
    telephone.history().reload();
}
} // namespace

void addHistoryEvents(EventCatalogue& catalogue)
{
    catalogue.add<HistoryAdded>("history");
    catalogue.add<HistoryRemoved>("history-removed");
    catalogue.add("history-reloaded", reload);
}
} // namespace Deskphone
