#include "ConversationAPI/Conversation.h"
#include "EventCatalogue.h"
#include "Telephone.h"

#include <algorithm>

namespace Deskphone
{
using ConversationAPI::Conversation;

namespace
{
constexpr long LAST_ROW = 1'000'000;

/** The row that the user means: its place on the screen from 1, or, when that is 0, the number it shows. */
struct RowChoice
{
    long row = 0;
    std::string number;

    Conversation& find(Telephone& telephone) const
    {
        const std::vector<Conversation*> all = telephone.conversations();
        if (row != 0)
        {
            if (static_cast<std::size_t>(row) > all.size())
            {
                throw NotPossible("there is no row " + std::to_string(row));
            }
            return *all[static_cast<std::size_t>(row) - 1];
        }
        const std::string comparable = telephone.comparable(number);
        const auto found = std::find_if(all.begin(), all.end(),
                                        [&comparable](const Conversation* conversation)
                                        { return conversation->hasAnyNumberMatching(comparable); });
        if (found == all.end())
        {
            throw NotPossible("there is no row with the number " + inQuotes(number));
        }
        return **found;
    }
};

RowChoice readRowChoice(EventFields& fields)
{
    if (fields.has("row") == fields.has("number"))
    {
        throw TraceError("either field 'row' or field 'number' must say which row is meant");
    }
    RowChoice choice;
    choice.row = fields.number("row", 1, LAST_ROW, 0);
    choice.number = fields.has("number") ? fields.requiredText("number") : "";
    return choice;
}

Action readDelete(EventFields& fields, long)
{
    const RowChoice choice = readRowChoice(fields);
    return [choice](Telephone& telephone)
    {
        const Conversation& conversation = choice.find(telephone);
        if (!conversation.isDeletable())
        {
            throw NotPossible("the telephone does not offer to delete this row");
        }
        telephone.conversationSource().deleteConversation(conversation.getConversationId());
    };
}

Action readDeleteAll(EventFields&, long)
{
    return [](Telephone& telephone) { telephone.conversationSource().deleteConversations(); };
}

Action readMarkMissedRead(EventFields&, long)
{
    return [](Telephone& telephone) { telephone.conversationSource().markAllMissedCallsRead(); };
}
} // namespace

void addUserEvents(EventCatalogue& catalogue)
{
    catalogue.add("user-delete", readDelete);
    catalogue.add("user-delete-all", readDeleteAll);
    catalogue.add("user-mark-missed-read", readMarkMissedRead);
}
} // namespace Deskphone
