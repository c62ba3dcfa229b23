/** One row of the telephone's screen: a conversation in the words that are shown. */
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Deskphone
{
class Telephone;

struct ScreenRow
{
    enum Direction
    {
        NEITHER,
        INCOMING,
        OUTGOING,
        FORWARDED,
        MISSED
    };

    enum Liveness
    {
        HISTORY,
        RINGING, ///< at either end, or waiting
        TALKING,
        ON_HOLD,
        ENDING
    };

    std::string name;   ///< of person, group or both; "" when only the number is known
    std::string number; ///< comparable form; "" when not known
    std::string state;
    Direction direction = NEITHER;
    Liveness liveness = HISTORY;
    std::size_t items = 0;
    std::size_t newMissedCalls = 0;
    long time = 0;    ///< of the most prominent item: seconds since the epoch, UTC
    std::string when; ///< the same, told relative to now
    std::string shortId;

    bool isLive() const { return liveness != HISTORY; }
};

/** All rows from top to bottom. */
std::vector<ScreenRow> screenRows(Telephone& telephone);
} // namespace Deskphone
