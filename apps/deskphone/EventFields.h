/**
 * The fields of one event, read by name and checked for type and range.
 *
 * Every reading operation throws TraceError, in words for the author of the trace, when the field is not what
 * was asked for. A field that is absent gives what the operation says, unless it is named "required".
 */
#pragma once

#include "platform/CallPartyIdentifier.h"

#include <nlohmann/json.hpp>

#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace Deskphone
{
/** What is wrong with a trace. */
class TraceError : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/** A text of a trace as it may stand in a message: in quotes, without control characters, not too long. */
std::string inQuotes(const std::string& text);

/** Why a text cannot stand in a trace: "is longer than 1000 bytes"; "" when it can. */
std::string faultOfText(const std::string& text);

class EventFields
{
  public:
    /** The names in a trace for the values of an enumeration. */
    template <typename Value>
    using Choices = std::vector<std::pair<std::string, Value>>;

    /** `object` is a JSON object and outlives its fields. */
    explicit EventFields(const nlohmann::json& object, const std::string& path = "");

    bool has(const std::string& name) const { return object_.contains(name); }

    /** "" when absent. */
    std::string text(const std::string& name);

    /** Not empty. */
    std::string requiredText(const std::string& name);

    /** A list of texts, none of them empty; no texts when absent. */
    std::vector<std::string> texts(const std::string& name);

    /** False when absent. */
    bool flag(const std::string& name);

    long number(const std::string& name, long lowest, long highest, long absent);

    /** Seconds since the epoch, UTC. */
    long requiredMoment(const std::string& name);
    long moment(const std::string& name, long absent);

    template <typename Value>
    Value requiredChoice(const std::string& name, const Choices<Value>& choices);

    template <typename Value>
    Value choice(const std::string& name, const Choices<Value>& choices, Value absent)
    {
        return has(name) ? requiredChoice(name, choices) : absent;
    }

    /** What the type of a party's number may be. */
    static const Choices<CallPartyIdentifier::PhoneNumberIconType>& partyTypes();

    /** An object with "first", "last", "number" and "type"; a party of whom nothing is known when absent. */
    CallPartyIdentifier party(const std::string& name);

    /** Throws when there is a field that nobody asked for. */
    void finish() const;

  private:
    [[noreturn]] void fail(const std::string& name, const std::string& problem) const;
    const nlohmann::json& required(const std::string& name);
    std::string checkedText(const std::string& name, const nlohmann::json& field) const;

    const nlohmann::json& object_;
    const std::string path_;
    std::set<std::string> known_;
};

template <typename Value>
Value EventFields::requiredChoice(const std::string& name, const Choices<Value>& choices)
{
    const std::string chosen = requiredText(name);
    std::string names;
    for (const auto& choice : choices)
    {
        if (choice.first == chosen)
        {
            return choice.second;
        }
        names += (names.empty() ? "" : ", ") + choice.first;
    }
    fail(name, "is " + inQuotes(chosen) + ", but must be one of " + names);
}
} // namespace Deskphone
