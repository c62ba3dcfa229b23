#include "EventCatalogue.h"

#include <utility>

namespace Deskphone
{
namespace
{
/** Nothing but time passes. */
Action readWait(EventFields&, long)
{
    return [](Telephone&) {};
}

EventCatalogue makeCatalogue()
{
    EventCatalogue catalogue;
    catalogue.add("wait", readWait);
    addCallEvents(catalogue);
    addHistoryEvents(catalogue);
    addUserEvents(catalogue);
    return catalogue;
}
} // namespace

const EventCatalogue& EventCatalogue::all()
{
    static const EventCatalogue catalogue = makeCatalogue();
    return catalogue;
}

void EventCatalogue::add(const std::string& name, Reader reader)
{
    readers_[name] = std::move(reader);
}

Action EventCatalogue::read(const std::string& name, EventFields& fields, long time) const
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
