#include "ConversationAPI/AggregatorSwitchIfc.h"
#include "ConversationAPI/Conversation.h"
#include "EventCatalogue.h"
#include "FieldWriter.h"
#include "Telephone.h"

#include <algorithm>

namespace Deskphone
{
using ConversationAPI::Conversation;

namespace
{
constexpr long LAST_ROW = 1'000'000;

const EventFields::Choices<Telephone::RowOrder>& orders()
{
    static const EventFields::Choices<Telephone::RowOrder> all = {
        {"time", Telephone::BY_TIME},
        {"name", Telephone::BY_NAME},
    };
    return all;
}

/** The user means a row by its place on the screen, or by a number that it has. */
class DeleteRow : public Event
{
  public:
    DeleteRow(EventFields& fields, long)
    {
        if (fields.has("row") == fields.has("number"))
        {
            throw TraceError("either field 'row' or field 'number' must say which row is meant");
        }
        row_ = fields.number("row", 1, LAST_ROW, 0);
        number_ = fields.has("number") ? fields.requiredText("number") : "";
    }

    void apply(Telephone& telephone) const override
    {
        const Conversation& conversation = row_ != 0 ? rowAtPlace(telephone) : rowWithNumber(telephone);
        if (!conversation.isDeletable() || conversation.isActiveOrProgressingOrClearing())
        {
            throw NotPossible("the telephone does not offer to delete this row");
        }
        telephone.conversations().deleteConversation(conversation.getConversationId());
    }

    void write(FieldWriter& fields) const override
    {
        fields.number("row", row_, 0);
        fields.text("number", number_);
    }

  private:
    const Conversation& rowAtPlace(const Telephone& telephone) const
    {
        const Conversation* conversation = telephone.row(row_);
        if (conversation == nullptr)
        {
            throw NotPossible("there is no row " + std::to_string(row_));
        }
        return *conversation;
    }

    const Conversation& rowWithNumber(Telephone& telephone) const
    {
        const auto& rows = telephone.rows();
        const std::string comparable = telephone.comparable(number_);
        const auto found = std::find_if(rows.begin(), rows.end(),
                                        [&comparable](const Conversation* conversation)
                                        { return conversation->hasAnyNumberMatching(comparable); });
        if (found == rows.end())
        {
            throw NotPossible("there is no row with the number " + inQuotes(number_));
        }
        return **found;
    }

    long row_ = 0; ///< from 1; 0 when the number says which row is meant
    std::string number_;
};

class SortRows : public Event
{
  public:
    SortRows(EventFields& fields, long) : order_(fields.requiredChoice("by", orders())) {}

    void apply(Telephone& telephone) const override { telephone.sortRows(order_); }
    void write(FieldWriter& fields) const override { fields.choice("by", orders(), order_); }

  private:
    const Telephone::RowOrder order_;
};

void deleteAll(Telephone& telephone)
{
    telephone.conversations().deleteConversations();
}

void markMissedRead(Telephone& telephone)
{
    telephone.conversations().markAllMissedCallsRead();
}
} // namespace

void addUserEvents(EventCatalogue& catalogue)
{
    catalogue.add<DeleteRow>("user-delete");
    catalogue.add("user-delete-all", deleteAll);
    catalogue.add("user-mark-missed-read", markMissedRead);
    catalogue.add<SortRows>("user-sort");
}
} // namespace Deskphone
