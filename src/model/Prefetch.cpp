#include "model/Prefetch.h"

#include "ConversationAPI/Conversation.h"

namespace ConversationAPI
{
namespace
{
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
    const auto itself = [](const Conversation& far) { prefetch(far); };
    const auto whereItsItemsAre = [](const Conversation& far) { prefetch(far.items()); };
    switch (needed)
    {
    case Needed::PLACES:
        ifThere(3 * PREFETCH_DISTANCE, whereItsItemsAre);
        ifThere(2 * PREFETCH_DISTANCE, prefetchPlaceholder);
        break;
    case Needed::FIRST_ITEMS:
        ifThere(3 * PREFETCH_DISTANCE, whereItsItemsAre);
        ifThere(2 * PREFETCH_DISTANCE, prefetchFirstItem);
        break;
    case Needed::OWNERS:
        ifThere(3 * PREFETCH_DISTANCE, itself);
        ifThere(2 * PREFETCH_DISTANCE, prefetchOwners);
        break;
    case Needed::EVERYTHING:
        ifThere(3 * PREFETCH_DISTANCE, itself);
        ifThere(2 * PREFETCH_DISTANCE, prefetchParts);
        ifThere(PREFETCH_DISTANCE, prefetchTextsOf);
        break;
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
