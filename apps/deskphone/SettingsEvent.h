/** The first event of a trace: how the telephone is set up. */
#pragma once

#include "EventFields.h"
#include "FieldWriter.h"
#include "TelephoneSettings.h"

namespace Deskphone
{
inline constexpr const char* SETTINGS_EVENT = "settings";

/** What is absent keeps its default. Throws TraceError. */
TelephoneSettings readSettings(EventFields& fields);

/** All of them, defaults too. */
void writeSettings(FieldWriter& fields, const TelephoneSettings& settings);
} // namespace Deskphone
