/** A conversation of a list, with what the list remembers of it: its place and the keys by which it is found. */
#pragma once

#include "ConversationAPI/ContactDetails.h"
#include "ConversationAPI/CopyOnWrite.h"
#include "ConversationAPI/SharedText.h"
#include "model/ItemOrder.h"

#include <cstdint>
#include <vector>

namespace ConversationAPI
{
class Conversation;

struct ListMember
{
    Conversation* conversation = nullptr;
    std::int64_t order = 0; ///< grows along the sequence
    long time = 0;          ///< what standing() consists of; a structure of its own would leave room unused
    ItemStanding::Kind kind = ItemStanding::BEHIND_ALL;
    std::int8_t state = 0;
    bool isObserved = true;
    bool hasStaleNumbers = false; ///< the numbers by which it is found may have changed
    bool isStale = false;         ///< what else it is found by may have changed
    bool isAnonymous = false;
    bool isLive = false;
    std::uint32_t idHash = 0; ///< 0: is not found by an id
    std::uint32_t exchangeContactIdHash = 0;
    CopyOnWrite<ContactDetails> contact;
    CopyOnWrite<std::vector<SharedText>> callIds;

    /** By which it has its place since the last sort. */
    ItemStanding standing() const { return {time, kind, static_cast<ConversationItemState>(state)}; }
    void setStanding(const ItemStanding& standing)
    {
        time = standing.time;
        kind = standing.kind;
        state = static_cast<std::int8_t>(standing.state);
    }
};
} // namespace ConversationAPI
