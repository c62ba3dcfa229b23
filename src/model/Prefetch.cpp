#include "model/Prefetch.h"

#include "ConversationAPI/Conversation.h"

namespace ConversationAPI
{
namespace
{
void prefetchFirstItem(const Conversation& near)
{
    if (const ConversationItem* item = near.itemAtHand())
    {
        prefetchHead(*item);
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
    prefetchFirstItem(near);
    if (const ConversationItem* item = near.itemAtHand())
    {
        prefetchLine(item + 1); // where what derives from it goes on
    }
}

template <typename Use>
void forEachItem(const Conversation& near, Use use)
{
    if (near.items().empty() && near.itemAtHand())
    {
        use(*near.itemAtHand());
    }
    for (const auto& item : near.items())
    {
        use(*item);
    }
}

void prefetchParts(const Conversation& near)
{
    prefetch(*near.contactDetails());
    prefetchBeginning(near.storedIdText().str());
    forEachItem(near, prefetchHead);
}

/** Of items that copies of the conversation share, nothing goes. */
void prefetchRestOfItems(const Conversation& near)
{
    forEachItem(near,
                [](const ConversationItem& item)
                {
                    if (!SharedItem::isShared(item))
                    {
                        prefetch(item);
                        prefetchTexts(item);
                    }
                });
}
} // namespace

/** Each step reads only what the one before has brought near. */
template <Needed NEEDED>
void prefetchAhead(const std::vector<Conversation*>& all, std::size_t place)
{
    const auto ifThere = [&](std::size_t distance, auto use)
    {
        if (place + distance < all.size())
        {
            use(*all[place + distance]);
        }
    };
    if constexpr (NEEDED == Needed::PLACES || NEEDED == Needed::FIRST_ITEMS)
    {
        ifThere(3 * PREFETCH_DISTANCE, [](const Conversation& far) { prefetch(far.items()); });
        ifThere(2 * PREFETCH_DISTANCE, NEEDED == Needed::PLACES ? prefetchPlaceholder : prefetchFirstItem);
    }
    else
    {
        ifThere(3 * PREFETCH_DISTANCE, [](const Conversation& far) { prefetch(far); });
        ifThere(2 * PREFETCH_DISTANCE, NEEDED == Needed::OWNERS ? prefetchOwners : prefetchParts);
    }
    if constexpr (NEEDED == Needed::EVERYTHING)
    {
        ifThere(PREFETCH_DISTANCE, prefetchRestOfItems);
    }
}

template void prefetchAhead<Needed::PLACES>(const std::vector<Conversation*>& all, std::size_t place);
template void prefetchAhead<Needed::FIRST_ITEMS>(const std::vector<Conversation*>& all, std::size_t place);
template void prefetchAhead<Needed::OWNERS>(const std::vector<Conversation*>& all, std::size_t place);
template void prefetchAhead<Needed::EVERYTHING>(const std::vector<Conversation*>& all, std::size_t place);

void prefetchTexts(const ConversationItem& item)
{
    if (!item.participants().empty())
    {
        // They most likely lie in a row. Where they do not, something else is brought near, and no harm is done.
        struct Texts
        {
            char bytes[3 * sizeof(std::string)];
        };
        const ConversationParticipant& party = item.participants().front();
        prefetch(reinterpret_cast<const Texts&>(party.firstNameText()));
        prefetchOthers(party.numbers());
    }
}
} // namespace ConversationAPI
