/** One row of the telephone's screen: a conversation in the words that are shown. */
#pragma once

#include "CloudDetails.h"
#include "ConversationAPI/ConversationItemState.h"

#include <cstddef>
#include <optional>
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
    std::optional<int> newVoicemails; ///< -1 when nobody has counted them; nothing for rows without a mailbox
    long time = 0;                    ///< of the most prominent item: seconds since the epoch, UTC
    std::string when;                 ///< the same, told relative to now; "" for a contact without items
    std::string shortId;              ///< "phantom" for a row that has no id of its own
    std::string foundBy;              ///< of a search's result: "Directory", "Web service"; "" for the own ones
    CloudDetails cloud;

    /** Neither a contact's placeholder has one, nor an entry of the network's directories. */
    bool hasTime() const { return items > 0 && time != 0; }
    bool isLive() const { return liveness != HISTORY; }
    bool hasNews() const { return newMissedCalls > 0 || newVoicemails.value_or(0) != 0; }
};

/** What the screen calls the state of an item. */
std::string stateText(ConversationAPI::ConversationItemState state);

/** The name under which a conversation is shown, "" when only its number is known; and the number, "" for none. */
std::string nameOf(const ConversationAPI::Conversation& conversation);
std::string numberOf(const ConversationAPI::Conversation& conversation);

/** All rows from top to bottom. */
std::vector<ScreenRow> screenRows(Telephone& telephone);

/** What the search field has found, the best first. */
std::vector<ScreenRow> foundRows(Telephone& telephone);
} // namespace Deskphone
