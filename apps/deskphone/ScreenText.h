/** The screen as text: for people, in a hundred columns, and for programs, one JSON object a row. */
#pragma once

#include "ScreenRow.h"

#include <ostream>
#include <string>
#include <vector>

namespace Deskphone
{
/** `clock` is what stands at the head of the screen. */
void printScreen(std::ostream& stream, const std::string& clock, const std::vector<ScreenRow>& rows, bool withIds);

/** `line` is that of the trace after which the screen looks so, 0 without a trace. */
void printJson(std::ostream& stream, std::size_t line, const std::vector<ScreenRow>& rows, bool withIds);
} // namespace Deskphone
