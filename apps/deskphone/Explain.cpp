#include "Explain.h"

#include "ConversationAPI/Conversation.h"
#include "Player.h"
#include "ScreenRow.h"
#include "ScreenText.h"
#include "Telephone.h"
#include "TextColumn.h"

#include <algorithm>

namespace Deskphone
{
using ConversationAPI::Conversation;
using ConversationAPI::ConversationItem;

namespace
{
constexpr std::size_t TIME_COLUMNS = 15;

const std::string& partyNumber(const ConversationItem& item)
{
    static const std::string none;
    return item.participants().empty() ? none : item.participants().front().comparableNumberText();
}

/** The oldest; of several, the one that the row shows last. */
const ConversationItem& firstItem(const std::vector<ConversationItem*>& items)
{
    return **std::min_element(items.rbegin(), items.rend(),
                              [](const ConversationItem* a, const ConversationItem* b)
                              { return a->timeStampUTC() < b->timeStampUTC(); });
}

/** Finds the rule by which an item belongs to its row, which has some: the first rule that holds. */
class Grouping
{
  public:
    Grouping(const Conversation& row, const std::vector<ConversationItem*>& items)
        : row_(row), items_(items), first_(firstItem(items))
    {
    }

    std::string reasonFor(const ConversationItem& item) const
    {
        if (&item == &first_)
        {
            return "first item of the row";
        }
        if (item.isGroupCall() && first_.isGroupCall() && item.getGroupNumber() == first_.getGroupNumber())
        {
            return "same group call, " + item.getGroupNumber();
        }
        if (sharesCall(item))
        {
            return "same call";
        }
        const std::string number = reasonByNumber(item);
        return number.empty() ? reasonBesideNumbers(item) : number;
    }

  private:
    /** A call that rings in the pickup group has another id once it was picked up. */
    static bool areOneCall(const ConversationItem& a, const ConversationItem& b)
    {
        return (!a.callIdText().empty() && a.callIdText() == b.callIdText()) || a.areGroupPickupConversationItems(b) ||
               b.areGroupPickupConversationItems(a);
    }

    bool sharesCall(const ConversationItem& item) const
    {
        return std::any_of(items_.begin(), items_.end(),
                           [&item](const ConversationItem* other)
                           { return other != &item && areOneCall(*other, item); });
    }

    /** A number that the first item does not have came to the row with a contact. */
    std::string reasonByNumber(const ConversationItem& item) const
    {
        const std::string slot = slotOf(item);
        if (slot.empty())
        {
            return "";
        }
        const bool isRegrouped =
            row_.getContactSource() != Conversation::NO_CONTACT && partyNumber(item) != partyNumber(first_);
        return (isRegrouped ? "contact regrouping, " : "same number, ") + slot;
    }

    /** Which of the row's numbers the item's is; "" for none. */
    std::string slotOf(const ConversationItem& item) const
    {
        if (partyNumber(item).empty())
        {
            return "";
        }
        switch (row_.getMatchingNumberType(item))
        {
        case CallPartyIdentifier::WORK_1:
            return "work 1";
        case CallPartyIdentifier::WORK_2:
            return "work 2";
        case CallPartyIdentifier::MOBILE:
            return "mobile";
        case CallPartyIdentifier::HOME:
            return "home";
        default:
            return partyNumber(item) == row_.getNumber() ? "main number" : "";
        }
    }

    /** Items take over the row's ids when they join it, so those explain only what nothing else does. */
    std::string reasonBesideNumbers(const ConversationItem& item) const
    {
        if (!item.participants().empty() && item.participants().front().isAnonymous())
        {
            return "anonymous";
        }
        if (!item.getCallId().empty() && item.getCallId() == row_.getCallId())
        {
            return "same call";
        }
        if (item.hasExchangeContactId() && item.exchangeContactIdText() == row_.exchangeContactIdText())
        {
            return "exchange contact " + item.exchangeContactId();
        }
        return "conversation id";
    }

    const Conversation& row_;
    const std::vector<ConversationItem*>& items_;
    const ConversationItem& first_;
};

void printHead(std::ostream& stream, const Conversation& row, long place)
{
    stream << "Row " << place << ": ";
    for (const std::string& part : {nameOf(row), numberOf(row)})
    {
        stream << (part.empty() ? "" : part + ", ");
    }
    stream << "id " << row.getShortConversationId() << '\n';
    if (row.isPhantomConversation() || row.extraActiveConversation())
    {
        stream << "  A second live call of a party has a row of its own.\n";
    }
}

void printItems(std::ostream& stream, const Conversation& row, DisplayAPI::TimeStringFormatter& times)
{
    const std::vector<ConversationItem*> items = row.getConversationItems();
    if (items.empty())
    {
        stream << "  no items: a contact\n";
        return;
    }
    const Grouping grouping(row, items);
    for (const ConversationItem* item : items)
    {
        const long time = item->timeStampUTC();
        stream << "  " << leftAligned(stateText(item->getState()), STATE_COLUMNS) << ' '
               << leftAligned(time == 0 ? "" : times.formatFromUTCToFullDate(time), TIME_COLUMNS) << ' '
               << leftAligned(partyNumber(*item), NUMBER_COLUMNS) << ' ' << grouping.reasonFor(*item)
               << (item->getCallId().empty() ? "" : " (call " + item->getCallId() + ")") << '\n';
    }
}
} // namespace

bool explain(const Trace& trace, const Options& options, std::ostream& screen, std::ostream& errors)
{
    bool isThere = false;
    Watcher watcher;
    watcher.atEnd = [&](Telephone& telephone)
    {
        const Conversation* row = telephone.row(options.row);
        isThere = row != nullptr;
        if (isThere)
        {
            printHead(screen, *row, options.row);
            printItems(screen, *row, telephone.times());
            return;
        }
        errors << trace.file << ": there is no row " << options.row << ", the last is " << telephone.rows().size()
               << '\n';
    };
    const bool wasAllPossible = play(trace, options, watcher, errors);
    return wasAllPossible && isThere;
}
} // namespace Deskphone
