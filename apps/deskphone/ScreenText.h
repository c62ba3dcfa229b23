/** The screen as text: for people, in a hundred columns, and for programs, one JSON object a row. */
#pragma once

#include "ScreenRow.h"

#include <ostream>
#include <string>
#include <vector>

namespace Deskphone
{
struct ScreenTitle
{
    std::string text;      ///< at the head of the screen
    const char* whenEmpty; ///< in place of rows when there are none
};

void printScreen(std::ostream& stream, const ScreenTitle& title, const std::vector<ScreenRow>& rows, bool withIds);

/** `line` is that of the trace after which the screen looks so, 0 without a trace. */
void printJson(std::ostream& stream, std::size_t line, const std::vector<ScreenRow>& rows, bool withIds);

/** The same for what a search has found, each with its place. */
void printFoundJson(std::ostream& stream, std::size_t line, const std::vector<ScreenRow>& rows, bool withIds);
} // namespace Deskphone
