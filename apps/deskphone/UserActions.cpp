#include "UserActions.h"

#include "ConversationAPI/Conversation.h"
#include "EventFields.h"
#include "Telephone.h"
#include "Trace.h"

#include <algorithm>

namespace Deskphone
{
using ConversationAPI::Conversation;

const Conversation& rowAtPlace(const Telephone& telephone, long place)
{
    const Conversation* row = telephone.row(place);
    if (row == nullptr)
    {
        throw NotPossible("there is no row " + std::to_string(place));
    }
    return *row;
}

const Conversation& rowWithNumber(Telephone& telephone, const std::string& number)
{
    const auto& rows = telephone.rows();
    const std::string comparable = telephone.comparable(number);
    const auto found =
        std::find_if(rows.begin(), rows.end(),
                     [&comparable](const Conversation* row) { return row->hasAnyNumberMatching(comparable); });
    if (found == rows.end())
    {
        throw NotPossible("there is no row with the number " + inQuotes(number));
    }
    return **found;
}

void deleteRow(Telephone& telephone, const Conversation& row)
{
    if (!row.isDeletable() || row.isActiveOrProgressingOrClearing())
    {
        throw NotPossible("the telephone does not offer to delete this row");
    }
    telephone.deleteRow(row);
}
} // namespace Deskphone
