/** A trace: what happened to a telephone, event by event, ready to be applied. */
#pragma once

#include "TelephoneSettings.h"

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace Deskphone
{
class FieldWriter;
class Telephone;

/** An event asks for something that cannot be done as the telephone stands. */
class NotPossible : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/** One thing that happens to a telephone. */
class Event
{
  public:
    virtual ~Event() = default;

    /** Lets it happen; throws NotPossible. */
    virtual void apply(Telephone& telephone) const = 0;

    /** Its fields, of which a trace reads the same event. */
    virtual void write(FieldWriter& fields) const = 0;
};

struct TraceEvent
{
    std::size_t line = 0; ///< counted from 1
    long time = 0;        ///< seconds since the epoch, UTC
    std::string name;
    std::string text; ///< its fields, for people
    std::unique_ptr<Event> event;
};

struct Trace
{
    std::string file; ///< as it is named in messages
    TelephoneSettings settings;
    long start = 0; ///< when the telephone is switched on: seconds since the epoch, UTC
    std::vector<TraceEvent> events;
};
} // namespace Deskphone
