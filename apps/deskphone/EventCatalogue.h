/**
 * The events that a trace may hold, by name.
 *
 * Each family of events (live calls, history, the user ...) is one function that adds its events. An event is a
 * class, made of the fields, which it checks; that happens to all events of a trace before any is applied.
 */
#pragma once

#include "EventFields.h"
#include "Trace.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace Deskphone
{
class EventCatalogue
{
  public:
    /** `time` is that of the event, in seconds since the epoch, UTC. Throws TraceError. */
    using Reader = std::function<std::unique_ptr<Event>(EventFields& fields, long time)>;

    /** Every event that there is. */
    static const EventCatalogue& all();

    /** An event with fields; it is constructed of an EventFields& and the time. */
    template <typename OneEvent>
    void add(const std::string& name)
    {
        readers_[name] = [](EventFields& fields, long time) { return std::make_unique<OneEvent>(fields, time); };
    }

    /** An event that has no fields. */
    void add(const std::string& name, void (*apply)(Telephone& telephone));

    /** Reads the event of this name; throws TraceError when there is none. */
    std::unique_ptr<Event> read(const std::string& name, EventFields& fields, long time) const;

    /** "call, call-cleared, ..." */
    std::string names() const;

  private:
    std::map<std::string, Reader> readers_;
};

void addCallEvents(EventCatalogue& catalogue);
void addCloudEvents(EventCatalogue& catalogue);
void addContactEvents(EventCatalogue& catalogue);
void addSearchEvents(EventCatalogue& catalogue);
void addHistoryEvents(EventCatalogue& catalogue);
void addNetworkCallEvents(EventCatalogue& catalogue);
void addUserEvents(EventCatalogue& catalogue);
void addVoicemailEvents(EventCatalogue& catalogue);
void addWebContactEvents(EventCatalogue& catalogue);
} // namespace Deskphone
