/**
 * Sets of states of items, and what the states in them have in common.
 *
 * Items are compared and asked whether they are live calls far more often than anything else; one look at the state
 * answers all of these questions.
 */
#pragma once

#include "ConversationAPI/ConversationItemState.h"

#include <cstdint>
#include <initializer_list>

namespace ConversationAPI
{
class ItemStates
{
  public:
    constexpr ItemStates(std::initializer_list<ConversationItemState> states)
    {
        for (const ConversationItemState state : states)
        {
            bits_ |= bitOf(state);
        }
    }

    /** A state that is none of the enumeration's is in no set. */
    constexpr bool has(ConversationItemState state) const { return (bits_ & bitOf(state)) != 0; }

    constexpr ItemStates operator|(const ItemStates& other) const { return ItemStates(bits_ | other.bits_); }

  private:
    constexpr explicit ItemStates(std::uint32_t bits) : bits_(bits) {}

    static constexpr std::uint32_t bitOf(ConversationItemState state)
    {
        const auto number = static_cast<std::uint32_t>(state);
        return number < 32 ? std::uint32_t{1} << number : 0;
    }

    std::uint32_t bits_ = 0;
};

namespace States
{
using S = ConversationItemState;

constexpr ItemStates ACTIVE{S::CONNECTED,    S::CONFERENCE,    S::ISOLATED,          S::GROUP_PICKUP_CONNECTED,
                            S::LOCALLY_HELD, S::REMOTELY_HELD, S::BLIND_TRANSFERRING};
constexpr ItemStates ACTIVE_OR_CLEARING = ACTIVE | ItemStates{S::CLEARING};
constexpr ItemStates PROGRESSING{S::PROGRESSING_INCOMING, S::PROGRESSING_OUTGOING, S::CALL_WAITING};
constexpr ItemStates ACTIVE_OR_PROGRESSING_OR_CLEARING =
    ACTIVE_OR_CLEARING | PROGRESSING | ItemStates{S::GROUP_PICKUP_INCOMING};
constexpr ItemStates ISOLATED_OR_TRANSFERRING{S::ISOLATED, S::CALL_WAITING_ISOLATED, S::BLIND_TRANSFERRING};

/** Calls of the history; forwarded ones alone are no ending remote calls. */
constexpr ItemStates ENDING_REMOTE_CALL{S::DIALLED, S::RECEIVED, S::MISSED, S::MISSED_ANSWERED_ELSEWHERE,
                                        S::MISSED_GROUP_CALL};
constexpr ItemStates NON_ACTIVE_CALL = ENDING_REMOTE_CALL | ItemStates{S::FORWARDED};

/** Those that have no place of their own in the order of items but that of their time. */
constexpr ItemStates ORDERED_BY_TIME_ALONE =
    NON_ACTIVE_CALL |
    ItemStates{S::NO_STATE, S::PLACEHOLDER, S::TEXT, S::SYSTEM_MESSAGE, S::VOICEMAIL, S::CALL_WAITING_IGNORED};
} // namespace States
} // namespace ConversationAPI
