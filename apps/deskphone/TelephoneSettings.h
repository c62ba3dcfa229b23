/** What the owner of a telephone sets up: where it stands, how it dials, how it writes times. */
#pragma once

#include "host/DigitAnalysis.h"
#include "host/JournalCall.h"

#include <string>

namespace Deskphone
{
struct TelephoneSettings
{
    /** Name in the time zone database; "" is the machine's own zone. */
    std::string timeZone;

    /** Country, area code, outside-line prefix, length of internal numbers. */
    Host::DigitAnalysisSettings numbers;

    /** "en", "de" ... */
    std::string language = "en";

    /** "12HR" or "24HR". */
    std::string timeFormat = "24HR";

    /** "DD.MM.YYYY" or "MM/DD/YYYY". */
    std::string dateFormat = "DD.MM.YYYY";

    /** How much of the history is kept. */
    Host::JournalLimits history;
};

/** Whether a text, "" too, is one that can be dialled as it stands: area codes and prefixes are. */
inline bool isDigits(const std::string& text)
{
    return text.find_first_not_of("0123456789") == std::string::npos;
}
} // namespace Deskphone
