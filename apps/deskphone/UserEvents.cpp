#include "EventCatalogue.h"
#include "FieldWriter.h"
#include "Telephone.h"
#include "UserActions.h"

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

const EventFields::Choices<Telephone::ShownList>& lists()
{
    static const EventFields::Choices<Telephone::ShownList> all = {
        {"local", Telephone::LOCAL_LIST},
        {"cloud", Telephone::CLOUD_LIST},
        {"network", Telephone::NETWORK_LIST},
    };
    return all;
}

/** The user means a row by its place on the screen, or by a number that it has. */
class RowEvent : public Event
{
  public:
    explicit RowEvent(EventFields& fields)
    {
        if (fields.has("row") == fields.has("number"))
        {
            throw TraceError("either field 'row' or field 'number' must say which row is meant");
        }
        row_ = fields.number("row", 1, LAST_ROW, 0);
        number_ = fields.has("number") ? fields.requiredText("number") : "";
    }

    void write(FieldWriter& fields) const override
    {
        fields.number("row", row_, 0);
        fields.text("number", number_);
    }

  protected:
    const Conversation& rowOf(Telephone& telephone) const
    {
        return row_ != 0 ? rowAtPlace(telephone, row_) : rowWithNumber(telephone, number_);
    }

  private:
    long row_ = 0; ///< from 1; 0 when the number says which row is meant
    std::string number_;
};

class DeleteRow : public RowEvent
{
  public:
    DeleteRow(EventFields& fields, long) : RowEvent(fields) {}

    void apply(Telephone& telephone) const override { deleteRow(telephone, rowOf(telephone)); }
};

class MarkRowRead : public RowEvent
{
  public:
    MarkRowRead(EventFields& fields, long) : RowEvent(fields) {}

    void apply(Telephone& telephone) const override { telephone.markMissedRead(rowOf(telephone)); }
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

class ShowList : public Event
{
  public:
    ShowList(EventFields& fields, long) : list_(fields.requiredChoice("list", lists())) {}

    void apply(Telephone& telephone) const override { telephone.showList(list_); }
    void write(FieldWriter& fields) const override { fields.choice("list", lists(), list_); }

  private:
    const Telephone::ShownList list_;
};

void deleteAll(Telephone& telephone)
{
    telephone.deleteAllRows();
}

void markMissedRead(Telephone& telephone)
{
    telephone.markAllMissedRead();
}
} // namespace

void addUserEvents(EventCatalogue& catalogue)
{
    catalogue.add<DeleteRow>("user-delete");
    catalogue.add<MarkRowRead>("user-mark-read");
    catalogue.add("user-delete-all", deleteAll);
    catalogue.add("user-mark-missed-read", markMissedRead);
    catalogue.add<SortRows>("user-sort");
    catalogue.add<ShowList>("user-list");
}
} // namespace Deskphone
