#include "EventCatalogue.h"

namespace Deskphone
{
namespace
{
class EventWithoutFields : public Event
{
  public:
    explicit EventWithoutFields(void (*action)(Telephone& telephone)) : action_(action) {}

    void apply(Telephone& telephone) const override { action_(telephone); }
    void write(FieldWriter&) const override {}

  private:
    void (*const action_)(Telephone&);
};

/** Nothing but time passes. */
void wait(Telephone&) {}

EventCatalogue makeCatalogue()
{
    EventCatalogue catalogue;
    catalogue.add("wait", wait);
    addCallEvents(catalogue);
    addCloudEvents(catalogue);
    addContactEvents(catalogue);
    addSearchEvents(catalogue);
    addHistoryEvents(catalogue);
    addNetworkCallEvents(catalogue);
    addUserEvents(catalogue);
    addVoicemailEvents(catalogue);
    addWebContactEvents(catalogue);
    return catalogue;
}
} // namespace

const EventCatalogue& EventCatalogue::all()
{
    static const EventCatalogue catalogue = makeCatalogue();
    return catalogue;
}

void EventCatalogue::add(const std::string& name, void (*apply)(Telephone& telephone))
{
    readers_[name] = [apply](EventFields&, long) { return std::make_unique<EventWithoutFields>(apply); };
}

std::unique_ptr<Event> EventCatalogue::read(const std::string& name, EventFields& fields, long time) const
{
    const auto reader = readers_.find(name);
    if (reader == readers_.end())
    {
        throw TraceError("unknown event " + inQuotes(name));
    }
    return reader->second(fields, time);
}

std::string EventCatalogue::names() const
{
    std::string names;
    for (const auto& reader : readers_)
    {
        names += (names.empty() ? "" : ", ") + reader.first;
    }
    return names;
}
} // namespace Deskphone
