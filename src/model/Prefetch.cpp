#include "model/Prefetch.h"

#include "ConversationAPI/Conversation.h"

#include <array>

namespace ConversationAPI
{
namespace
{
void prefetchItself(const Conversation& far)
{
    prefetch(far);
}

void prefetchWhereItsItemsAre(const Conversation& far)
{
    prefetch(far.items());
}

/** What tells of a party begins in the third cache line of its item at the latest. */
void prefetchFirstItem(const Conversation& near)
{
    struct Head
    {
        char bytes[2 * CACHE_LINE];
    };
    if (const ConversationItem* item = near.itemAtHand())
    {
        prefetch(reinterpret_cast<const Head&>(*item));
    }
}

/** Other items' times lie beside their pointers. */
void prefetchPlaceholder(const Conversation& near)
{
    if (near.items().empty() && near.itemAtHand())
    {
        prefetchBeginning(*near.itemAtHand());
    }
}

void prefetchOwners(const Conversation& near)
{
    prefetchBeginning(*near.contactDetails());
    prefetchBeginning(near.storedIdText().str());
    if (const ConversationItem* item = near.itemAtHand())
    {
        prefetchBeginning(*item);
    }
}

void prefetchParts(const Conversation& near)
{
    prefetch(*near.contactDetails());
    prefetch(near.storedIdText().str());
    if (near.items().empty() && near.itemAtHand())
    {
        prefetch(*near.itemAtHand());
    }
    for (const auto& item : near.items())
    {
        prefetch(*item);
    }
}

void prefetchTextsOf(const Conversation& near)
{
    if (near.itemAtHand())
    {
        prefetchTexts(*near.itemAtHand());
    }
}

struct Steps
{
    void (*far)(const Conversation&);
    void (*near)(const Conversation&); ///< of one that is near by then
};

/** By Needed. */
constexpr std::array<Steps, 4> STEPS = {{{prefetchWhereItsItemsAre, prefetchPlaceholder},
                                         {prefetchWhereItsItemsAre, prefetchFirstItem},
                                         {prefetchItself, prefetchOwners},
                                         {prefetchItself, prefetchParts}}};
} // namespace

/** Each step reads only what the one before has brought near. */
void prefetchAhead(const std::vector<Conversation*>& all, std::size_t place, Needed needed)
{
    const auto ifThere = [&](std::size_t distance, auto use)
    {
        if (place + distance < all.size())
        {
            use(*all[place + distance]);
        }
    };
    const Steps& steps = STEPS[static_cast<std::size_t>(needed)];
    ifThere(3 * PREFETCH_DISTANCE, steps.far);
    ifThere(2 * PREFETCH_DISTANCE, steps.near);
    if (needed == Needed::EVERYTHING)
    {
        ifThere(PREFETCH_DISTANCE, prefetchTextsOf);
    }
}

void prefetchTexts(const ConversationItem& item)
{
    if (!item.participants().empty())
    {
        // They most likely lie in a row. Where they do not, something else is brought near, and no harm is done.
        struct Texts
        {
            char bytes[3 * sizeof(std::string)];
        };
        prefetch(reinterpret_cast<const Texts&>(item.participants().front().firstNameText()));
    }
}
} // namespace ConversationAPI
