#include "UserActions.h"

#include "ConversationAPI/Conversation.h"
#include "EventFields.h"
#include "Telephone.h"
#include "Trace.h"

#include <algorithm>

namespace Deskphone
{
using ConversationAPI::Conversation;
using ConversationAPI::ConversationItem;

namespace
{
/**
 * Whether the row is the history's, whatever it began with. A row that a network's call began stays undeletable for the
 * library, also when the journal's record of that call, or a later call, stands for the row by now; made anew it would
 * not be.
 */
bool isOfHistory(const Conversation& row)
{
    const auto isVoiceMail = [](const auto& item) { return item->isVoiceMail(); };
    const ConversationItem* shown = row.shownItem();
    return shown != nullptr && shown->isDeleteOnConversationList() &&
           std::none_of(row.items().begin(), row.items().end(), isVoiceMail);
}

/** Also one that is shown as history, as one that is ignored: deleted, it would go on unseen. */
bool holdsCall(const Conversation& row)
{
    return std::any_of(row.items().begin(), row.items().end(),
                       [](const auto& item) { return !item->getCallId().empty(); });
}

/** Of the network's own list, calls alone: its directories are not the telephone's to change. */
bool offersDeletion(const Telephone& telephone, const Conversation& row)
{
    if (telephone.shownList() == Telephone::NETWORK_LIST)
    {
        return row.shownItem() != nullptr && row.shownItem()->isNonActiveCall();
    }
    return (row.isDeletable() || isOfHistory(row)) && !holdsCall(row);
}
} // namespace

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
    if (!offersDeletion(telephone, row))
    {
        throw NotPossible("the telephone does not offer to delete this row");
    }
    telephone.deleteRow(row);
}

/** Places are those of the screen, which leaves out what has gone since it was found. The phonebook's own people would
 *  be written as the list has them, their numbers in another spelling than the user's. */
void saveFound(Telephone& telephone, long place)
{
    const std::string result = "result " + std::to_string(place);
    const std::vector<Telephone::Found> all = telephone.found();
    if (place < 1 || static_cast<std::size_t>(place) > all.size())
    {
        throw NotPossible("there is no " + result);
    }
    const Telephone::Found& one = all[static_cast<std::size_t>(place) - 1];
    if (telephone.isOfCloud(*one.conversation))
    {
        throw NotPossible(result + " is the cloud's, which has no number to store");
    }
    if (one.type == ConversationAPI::ConversationSearchObserverIfc::LOCAL_RESULTS &&
        telephone.isContact(*one.conversation))
    {
        throw NotPossible(result + " is in the phonebook already");
    }
    telephone.saveContact(*one.conversation);
}
} // namespace Deskphone
