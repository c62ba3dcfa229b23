#include "EventCatalogue.h"
#include "FieldWriter.h"
#include "Moment.h"
#include "Telephone.h"

namespace Deskphone
{
using Host::NetworkCallLogEntry;

namespace
{
constexpr long LAST_SHOW_STATE = 99;

const EventFields::Choices<NetworkCallLogEntry::Kind>& networkKinds()
{
    static const EventFields::Choices<NetworkCallLogEntry::Kind> all = {
        {"placed", NetworkCallLogEntry::PLACED},
        {"missed", NetworkCallLogEntry::MISSED},
        {"received", NetworkCallLogEntry::RECEIVED},
        {"personal", NetworkCallLogEntry::PERSONAL},
        {"group-directory", NetworkCallLogEntry::GROUP_DIRECTORY},
        {"enterprise-directory", NetworkCallLogEntry::ENTERPRISE_DIRECTORY},
        {"group-common", NetworkCallLogEntry::GROUP_COMMON},
        {"enterprise-common", NetworkCallLogEntry::ENTERPRISE_COMMON},
    };
    return all;
}

/** What the network's own list shows, by the names of the display's menu. */
const EventFields::Choices<std::string>& networkFilters()
{
    static const EventFields::Choices<std::string> all = {
        {"all", "All"},
        {"missed", "CvuDispIF.Missed"},
        {"received", "CvuDispIF.Received"},
        {"placed", "CvuDispIF.Dialled"},
    };
    return all;
}

/** The network's lines know no escapes: what ends a field cannot stand in it. */
std::string textWithout(char end, EventFields& fields, const std::string& name)
{
    std::string value = fields.text(name);
    if (value.find(end) != std::string::npos)
    {
        throw TraceError("field " + inQuotes(name) + " holds " + inQuotes(std::string(1, end)) +
                         ", which ends it in the network's lines");
    }
    return value;
}

std::string requiredTextWithout(char end, EventFields& fields, const std::string& name)
{
    fields.requiredText(name);
    return textWithout(end, fields, name);
}

/** A contact of a directory tells no time of its own; whatever stands in its place says nothing. */
class NetworkCall : public Event
{
  public:
    NetworkCall(EventFields& fields, long time)
    {
        entry_.kind = fields.requiredChoice("kind", networkKinds());
        entry_.callLogId = requiredTextWithout('}', fields, "callLogId");
        entry_.number = requiredTextWithout(':', fields, "number");
        entry_.firstName = textWithout(':', fields, "first");
        entry_.lastName = textWithout(':', fields, "last");
        if (NetworkCallLogEntry::isCall(entry_.kind))
        {
            callTime_ = fields.moment("callTime", time);
        }
        else
        {
            callTime_ = time;
            entry_.secondNumber = textWithout('}', fields, "secondNumber");
        }
        entry_.time = formatMoment(callTime_);
    }

    void apply(Telephone& telephone) const override { telephone.networkLog().add(entry_); }

    void write(FieldWriter& fields) const override
    {
        fields.choice("kind", networkKinds(), entry_.kind);
        fields.text("callLogId", entry_.callLogId);
        fields.text("number", entry_.number);
        fields.text("first", entry_.firstName);
        fields.text("last", entry_.lastName);
        if (NetworkCallLogEntry::isCall(entry_.kind))
        {
            fields.moment("callTime", callTime_);
        }
        fields.text("secondNumber", entry_.secondNumber);
    }

  private:
    NetworkCallLogEntry entry_;
    long callTime_ = 0; ///< seconds since the epoch, UTC
};

class NetworkCallRemoved : public Event
{
  public:
    NetworkCallRemoved(EventFields& fields, long)
        : kind_(fields.requiredChoice("kind", networkKinds())),
          callLogId_(requiredTextWithout('}', fields, "callLogId"))
    {
    }

    void apply(Telephone& telephone) const override { telephone.networkLog().remove(kind_, callLogId_); }

    void write(FieldWriter& fields) const override
    {
        fields.choice("kind", networkKinds(), kind_);
        fields.text("callLogId", callLogId_);
    }

  private:
    const NetworkCallLogEntry::Kind kind_;
    const std::string callLogId_;
};

class ShowStateChanged : public Event
{
  public:
    ShowStateChanged(EventFields& fields, long) : state_(fields.number("state", 0, LAST_SHOW_STATE, 0)) {}

    void apply(Telephone& telephone) const override { telephone.networkShowStateChanged(static_cast<int>(state_)); }
    void write(FieldWriter& fields) const override { fields.number("state", state_, 0); }

  private:
    const long state_;
};

class NetworkListFiltered : public Event
{
  public:
    NetworkListFiltered(EventFields& fields, long) : filter_(fields.requiredChoice("calls", networkFilters())) {}

    void apply(Telephone& telephone) const override { telephone.filterNetworkList(filter_); }
    void write(FieldWriter& fields) const override { fields.choice("calls", networkFilters(), filter_); }

  private:
    const std::string filter_;
};
} // namespace

void addNetworkCallEvents(EventCatalogue& catalogue)
{
    catalogue.add<NetworkCall>("network-call");
    catalogue.add<NetworkCallRemoved>("network-call-removed");
    catalogue.add<ShowStateChanged>("network-show");
    catalogue.add<NetworkListFiltered>("network-filter");
}
} // namespace Deskphone
