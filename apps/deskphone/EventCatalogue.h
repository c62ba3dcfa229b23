/**
 * The events that a trace may hold, by name.
 *
 * Each family of events (live calls, history, the user ...) is one function that adds its events. An event is a
 * function that reads and checks the fields and answers what is to be done; it runs before anything is applied.
 */
#pragma once

#include "EventFields.h"
#include "Trace.h"

#include <functional>
#include <map>
#include <string>

namespace Deskphone
{
class EventCatalogue
{
  public:
    /** `time` is that of the event, in seconds since the epoch, UTC. Throws TraceError. */
    using Reader = std::function<Action(EventFields& fields, long time)>;

    /** Every event that there is. */
    static const EventCatalogue& all();

    void add(const std::string& name, Reader reader);

    /** Reads the event of this name; throws TraceError when there is none. */
    Action read(const std::string& name, EventFields& fields, long time) const;

    /** "call, call-cleared, ..." */
    std::string names() const;

  private:
    std::map<std::string, Reader> readers_;
};

void addCallEvents(EventCatalogue& catalogue);
void addHistoryEvents(EventCatalogue& catalogue);
void addUserEvents(EventCatalogue& catalogue);
} // namespace Deskphone
