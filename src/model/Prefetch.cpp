#include "model/Prefetch.h"

#include "ConversationAPI/Conversation.h"

namespace ConversationAPI
{
namespace
{
/** Of a conversation that is near. */
void prefetchParts(const Conversation& conversation)
{
    prefetch(*conversation.contactDetails());
    prefetch(conversation.storedIdText().str());
    for (const auto& item : conversation.items())
    {
        prefetch(*item);
    }
}

/** Of a conversation whose parts are near: names and number of the party. */
void prefetchTexts(const Conversation& conversation)
{
    if (!conversation.items().empty() && !conversation.items().front()->participants().empty())
    {
        // They most likely lie in a row. Where they do not, something else is brought near, and no harm is done.
        struct Texts
        {
            char bytes[3 * sizeof(std::string)];
        };
        const ConversationParticipant& party = conversation.items().front()->participants().front();
        prefetch(reinterpret_cast<const Texts&>(party.firstNameText()));
    }
}
} // namespace

/** Each step reads only what the one before has brought near. */
void prefetchAhead(const std::vector<Conversation*>& all, std::size_t place)
{
    const auto ifThere = [&](std::size_t distance, auto use)
    {
        if (place + distance < all.size())
        {
            use(*all[place + distance]);
        }
    };
    ifThere(3 * PREFETCH_DISTANCE, [](const Conversation& far) { prefetch(far); });
    ifThere(2 * PREFETCH_DISTANCE, prefetchParts);
    ifThere(PREFETCH_DISTANCE, prefetchTexts);
}
} // namespace ConversationAPI
