#include "FieldWriter.h"

#include "Moment.h"

namespace Deskphone
{
FieldWriter::FieldWriter(long time, const std::string& event)
{
    moment("time", time);
    text("event", event);
}

void FieldWriter::text(const std::string& name, const std::string& value)
{
    if (!value.empty())
    {
        object_[name] = value;
    }
}

void FieldWriter::texts(const std::string& name, const std::vector<std::string>& values)
{
    if (!values.empty())
    {
        textsEvenIfNone(name, values);
    }
}

void FieldWriter::flag(const std::string& name, bool value)
{
    if (value)
    {
        object_[name] = true;
    }
}

void FieldWriter::number(const std::string& name, long value, long absent)
{
    if (value != absent)
    {
        object_[name] = value;
    }
}

void FieldWriter::moment(const std::string& name, long time)
{
    object_[name] = formatMoment(time);
}

void FieldWriter::party(const std::string& name, const CallPartyIdentifier& value)
{
    partyEvenIfUnknown(name, value);
    if (object_[name].empty())
    {
        object_.erase(name);
    }
}

void FieldWriter::partyEvenIfUnknown(const std::string& name, const CallPartyIdentifier& value)
{
    nlohmann::ordered_json fields = nlohmann::ordered_json::object();
    const auto add = [&fields](const char* part, const std::string& content)
    {
        if (!content.empty())
        {
            fields[part] = content;
        }
    };
    add("first", value.getFirstName());
    add("last", value.getSurname());
    add("number", value.getNumber());
    for (const auto& type : EventFields::partyTypes())
    {
        add("type", type.second == value.getPhoneNumberType() ? type.first : "");
    }
    object_[name] = std::move(fields);
}

std::string FieldWriter::line() const
{
    return object_.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}
} // namespace Deskphone
