#include "EventFields.h"

#include "Moment.h"

#include <algorithm>

namespace Deskphone
{
namespace
{
constexpr std::size_t LONGEST_TEXT = 1000;
constexpr std::size_t LONGEST_QUOTE = 60;

bool isControlCharacter(char character)
{
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20U || byte == 0x7FU;
}
} // namespace

std::string inQuotes(const std::string& text)
{
    std::size_t length = std::min(text.size(), LONGEST_QUOTE);
    while (length < text.size() && length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U)
    {
        --length; // not inside a character
    }
    std::string quote = text.substr(0, length);
    std::replace_if(quote.begin(), quote.end(), isControlCharacter, '?');
    return "'" + quote + (length < text.size() ? "..." : "") + "'";
}

std::string faultOfText(const std::string& text)
{
    if (text.size() > LONGEST_TEXT)
    {
        return "is longer than " + std::to_string(LONGEST_TEXT) + " bytes";
    }
    return std::any_of(text.begin(), text.end(), isControlCharacter) ? "holds a control character" : "";
}

EventFields::EventFields(const nlohmann::json& object, const std::string& path) : object_(object), path_(path) {}

void EventFields::fail(const std::string& name, const std::string& problem) const
{
    throw TraceError("field " + inQuotes(path_ + name) + " " + problem);
}

const nlohmann::json& EventFields::required(const std::string& name)
{
    known_.insert(name);
    const auto field = object_.find(name);
    if (field == object_.end())
    {
        fail(name, "is missing");
    }
    return *field;
}

std::string EventFields::checkedText(const std::string& name, const nlohmann::json& field) const
{
    if (!field.is_string())
    {
        fail(name, "must be a text");
    }
    std::string value = field.get<std::string>();
    const std::string fault = faultOfText(value);
    if (!fault.empty())
    {
        fail(name, fault);
    }
    return value;
}

std::string EventFields::text(const std::string& name)
{
    known_.insert(name);
    return has(name) ? checkedText(name, required(name)) : std::string();
}

std::vector<std::string> EventFields::texts(const std::string& name)
{
    known_.insert(name);
    std::vector<std::string> values;
    if (!has(name))
    {
        return values;
    }
    const nlohmann::json& field = required(name);
    if (!field.is_array())
    {
        fail(name, "must be a list of texts");
    }
    for (const nlohmann::json& one : field)
    {
        const std::string place = name + "[" + std::to_string(values.size()) + "]";
        values.push_back(checkedText(place, one));
        if (values.back().empty())
        {
            fail(place, "is empty");
        }
    }
    return values;
}

std::string EventFields::requiredText(const std::string& name)
{
    required(name);
    std::string value = text(name);
    if (value.empty())
    {
        fail(name, "is empty");
    }
    return value;
}

bool EventFields::flag(const std::string& name)
{
    known_.insert(name);
    if (!has(name))
    {
        return false;
    }
    const nlohmann::json& field = required(name);
    if (!field.is_boolean())
    {
        fail(name, "must be true or false");
    }
    return field.get<bool>();
}

long EventFields::number(const std::string& name, long lowest, long highest, long absent)
{
    known_.insert(name);
    if (!has(name))
    {
        return absent;
    }
    const nlohmann::json& field = required(name);
    if (!field.is_number_integer())
    {
        fail(name, "must be a whole number");
    }
    // A number too large for a long is held as unsigned and comes out negative.
    const bool isTooLarge = field.is_number_unsigned() && field.get<long>() < 0;
    if (isTooLarge || field.get<long>() < lowest || field.get<long>() > highest)
    {
        fail(name, "must lie between " + std::to_string(lowest) + " and " + std::to_string(highest));
    }
    return field.get<long>();
}

long EventFields::requiredMoment(const std::string& name)
{
    const std::string value = requiredText(name);
    const std::optional<long> moment = parseMoment(value);
    if (!moment)
    {
        fail(name, "is " + inQuotes(value) +
                       ", but must be a moment between 1970 and 2037 in the manner of "
                       "2026-03-05T09:07:00+01:00 or 2026-03-05T08:07:00Z");
    }
    return *moment;
}

long EventFields::moment(const std::string& name, long absent)
{
    known_.insert(name);
    return has(name) ? requiredMoment(name) : absent;
}

const EventFields::Choices<CallPartyIdentifier::PhoneNumberIconType>& EventFields::partyTypes()
{
    static const Choices<CallPartyIdentifier::PhoneNumberIconType> all = {
        {"home", CallPartyIdentifier::HOME},
        {"work1", CallPartyIdentifier::WORK_1},
        {"work2", CallPartyIdentifier::WORK_2},
        {"mobile", CallPartyIdentifier::MOBILE},
    };
    return all;
}

CallPartyIdentifier EventFields::party(const std::string& name)
{
    known_.insert(name);
    if (!has(name))
    {
        return {};
    }
    const nlohmann::json& field = required(name);
    if (!field.is_object())
    {
        fail(name, "must be an object");
    }
    EventFields fields(field, path_ + name + ".");
    const std::string first = fields.text("first");
    const std::string last = fields.text("last");
    const std::string number = fields.text("number");
    const auto type = fields.choice("type", partyTypes(), CallPartyIdentifier::NO_ICON);
    fields.finish();
    return {first, last, number, type, "", false};
}

void EventFields::finish() const
{
    for (const auto& field : object_.items())
    {
        if (known_.count(field.key()) == 0)
        {
            throw TraceError("unknown field " + inQuotes(path_ + field.key()));
        }
    }
}
} // namespace Deskphone
