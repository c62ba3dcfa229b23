/** The screen as text: for people, in a hundred columns, and for programs, one JSON object a row. */
#pragma once

#include "ScreenRow.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace Deskphone
{
// Columns that other tables of items have in common with the screen.
inline constexpr std::size_t NUMBER_COLUMNS = 17; ///< in comparable form
inline constexpr std::size_t STATE_COLUMNS = 22;

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
