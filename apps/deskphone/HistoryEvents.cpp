#include "EventCatalogue.h"
#include "FieldWriter.h"
#include "HistoryCall.h"
#include "Telephone.h"

namespace Deskphone
{
namespace
{
class HistoryAdded : public Event
{
  public:
    HistoryAdded(EventFields& fields, long time) : call_(readHistoryCall(fields, time)) {}

    void apply(Telephone& telephone) const override { telephone.journal().addCall(call_.forJournal()); }
    void write(FieldWriter& fields) const override { writeHistoryCall(fields, call_); }

  private:
    const HistoryCall call_;
};

/** An entry is what the journal has of one kind with one party. */
class HistoryRemoved : public Event
{
  public:
    HistoryRemoved(EventFields& fields, long)
    {
        call_.kind = fields.requiredChoice("kind", historyKinds());
        call_.party = fields.party("party");
    }

    void apply(Telephone& telephone) const override
    {
        telephone.journal().deleteEntries({Host::Journal::entryId(call_.forJournal())});
    }

    void write(FieldWriter& fields) const override
    {
        fields.choice("kind", historyKinds(), call_.kind);
        fields.party("party", call_.party);
    }

  private:
    HistoryCall call_;
};

void reload(Telephone& telephone)
{
    telephone.reloadHistory();
}
} // namespace

void addHistoryEvents(EventCatalogue& catalogue)
{
    catalogue.add<HistoryAdded>("history");
    catalogue.add<HistoryRemoved>("history-removed");
    catalogue.add("history-reloaded", reload);
}
} // namespace Deskphone
