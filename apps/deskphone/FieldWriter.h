/**
 * The fields of one event on their way into a trace: the other direction of EventFields.
 *
 * What an absent field means is left out.
 */
#pragma once

#include "EventFields.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace Deskphone
{
class FieldWriter
{
  public:
    /** Begins with the two fields that every event has; `time` in seconds since the epoch, UTC. */
    FieldWriter(long time, const std::string& event);

    void text(const std::string& name, const std::string& value);

    /** Where an absent text would not be an empty one. */
    void textEvenIfEmpty(const std::string& name, const std::string& value) { object_[name] = value; }

    void texts(const std::string& name, const std::vector<std::string>& values);

    /** Where no list would not be one without texts. */
    void textsEvenIfNone(const std::string& name, const std::vector<std::string>& values) { object_[name] = values; }
    void flag(const std::string& name, bool value);
    void number(const std::string& name, long value, long absent);
    void moment(const std::string& name, long time);

    /** A value that has no name is left out. */
    template <typename Value>
    void choice(const std::string& name, const EventFields::Choices<Value>& choices, Value value)
    {
        for (const auto& one : choices)
        {
            if (one.second == value)
            {
                text(name, one.first);
            }
        }
    }

    void party(const std::string& name, const CallPartyIdentifier& value);

    /** Where no party would not be one of whom nothing is known. */
    void partyEvenIfUnknown(const std::string& name, const CallPartyIdentifier& value);

    /** One line of a trace, without its end. */
    std::string line() const;

  private:
    nlohmann::ordered_json object_;
};
} // namespace Deskphone
