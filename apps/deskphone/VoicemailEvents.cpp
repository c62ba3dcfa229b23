#include "EventCatalogue.h"
#include "FieldWriter.h"
#include "Telephone.h"

namespace Deskphone
{
namespace
{
constexpr long MOST_MESSAGES = 9999;

/** A count of 0 is what a mailbox tells that does not count: some messages wait. */
class MessagesWaiting : public Event
{
  public:
    MessagesWaiting(EventFields& fields, long) : count_(fields.number("count", 0, MOST_MESSAGES, 0)) {}

    void apply(Telephone& telephone) const override
    {
        telephone.mailbox().setVoiceMailMessagesCount(static_cast<int>(count_));
    }

    void write(FieldWriter& fields) const override { fields.number("count", count_, 0); }

  private:
    const long count_;
};

class NumberConfigured : public Event
{
  public:
    NumberConfigured(EventFields& fields, long) : number_(fields.text("number")) {}

    void apply(Telephone& telephone) const override { telephone.setVoiceMailNumber(number_); }
    void write(FieldWriter& fields) const override { fields.text("number", number_); }

  private:
    const std::string number_;
};

void noMessageWaiting(Telephone& telephone)
{
    telephone.mailbox().setNoVoiceMailMessageWaiting();
}
} // namespace

void addVoicemailEvents(EventCatalogue& catalogue)
{
    catalogue.add<MessagesWaiting>("voicemail");
    catalogue.add("voicemail-none", noMessageWaiting);
    catalogue.add<NumberConfigured>("voicemail-number");
}
} // namespace Deskphone
