#include "SettingsEvent.h"

#include "TimeZone.h"
#include "host/DigitAnalysis.h"
#include "host/Translator.h"

#include <algorithm>

namespace Deskphone
{
namespace
{
constexpr long LONGEST_EXTENSION = 15;
constexpr long MOST_KEPT = 100'000;

void require(bool isKnown, const std::string& field, const std::string& value, const std::string& fault)
{
    if (!isKnown)
    {
        throw TraceError("field " + inQuotes(field) + " is " + inQuotes(value) + ", " + fault);
    }
}

void readDigits(EventFields& fields, const std::string& name, std::string& setting)
{
    if (fields.has(name))
    {
        setting = fields.text(name);
        if (!isDigits(setting))
        {
            throw TraceError("field " + inQuotes(name) + " must consist of digits");
        }
    }
}

/** How many of something the history keeps. */
void readLimit(EventFields& fields, const std::string& name, std::size_t& limit)
{
    limit = static_cast<std::size_t>(fields.number(name, 1, MOST_KEPT, static_cast<long>(limit)));
}
} // namespace

TelephoneSettings readSettings(EventFields& fields)
{
    TelephoneSettings settings;
    settings.timeZone = fields.text("timeZone");
    require(settings.timeZone.empty() || isTimeZone(settings.timeZone), "timeZone", settings.timeZone,
            "which this machine does not know");
    if (fields.has("country"))
    {
        settings.numbers.region = fields.requiredText("country");
        require(Host::DigitAnalysis::knowsRegion(settings.numbers.region), "country", settings.numbers.region,
                "whose numbers are not known");
    }
    readDigits(fields, "areaCode", settings.numbers.areaCode);
    readDigits(fields, "outsidePrefix", settings.numbers.outsideLinePrefix);
    settings.numbers.longestExtension = static_cast<std::size_t>(
        fields.number("longestExtension", 0, LONGEST_EXTENSION, static_cast<long>(settings.numbers.longestExtension)));
    if (fields.has("language"))
    {
        settings.language = fields.requiredText("language");
        require(Host::Translator::speaks(settings.language), "language", settings.language, "which is not spoken");
    }
    const EventFields::Choices<std::string> timeFormats = {{"12HR", "12HR"}, {"24HR", "24HR"}};
    const EventFields::Choices<std::string> dateFormats = {{"DD.MM.YYYY", "DD.MM.YYYY"}, {"MM/DD/YYYY", "MM/DD/YYYY"}};
    settings.timeFormat = fields.choice("timeFormat", timeFormats, settings.timeFormat);
    settings.dateFormat = fields.choice("dateFormat", dateFormats, settings.dateFormat);
    readLimit(fields, "callsPerEntry", settings.history.callsPerEntry);
    readLimit(fields, "entriesPerKind", settings.history.entriesPerKind);
    return settings;
}

void writeSettings(FieldWriter& fields, const TelephoneSettings& settings)
{
    fields.text("timeZone", settings.timeZone);
    fields.text("country", settings.numbers.region);
    fields.textEvenIfEmpty("areaCode", settings.numbers.areaCode);
    fields.textEvenIfEmpty("outsidePrefix", settings.numbers.outsideLinePrefix);
    fields.number("longestExtension", static_cast<long>(settings.numbers.longestExtension), -1);
    fields.text("language", settings.language);
    fields.text("timeFormat", settings.timeFormat);
    fields.text("dateFormat", settings.dateFormat);
    fields.number("callsPerEntry", static_cast<long>(settings.history.callsPerEntry), -1);
    fields.number("entriesPerKind", static_cast<long>(settings.history.entriesPerKind), -1);
}
} // namespace Deskphone
