#include "EventCatalogue.h"
#include "FieldWriter.h"
#include "Telephone.h"

namespace Deskphone
{
namespace
{
/** Like a call, a contact is always told as a whole. */
class ContactStored : public Event
{
  public:
    ContactStored(EventFields& fields, long)
        : contact_{fields.requiredText("contactId"),
                   fields.text("first"),
                   fields.text("last"),
                   fields.text("work"),
                   fields.text("work2"),
                   fields.text("mobile"),
                   fields.text("home")}
    {
    }

    void apply(Telephone& telephone) const override { telephone.contacts().put(contact_); }

    void write(FieldWriter& fields) const override
    {
        fields.text("contactId", contact_.contactId);
        fields.text("first", contact_.first);
        fields.text("last", contact_.last);
        fields.text("work", contact_.work);
        fields.text("work2", contact_.work2);
        fields.text("mobile", contact_.mobile);
        fields.text("home", contact_.home);
    }

  private:
    const Contact contact_;
};

class ContactRemoved : public Event
{
  public:
    ContactRemoved(EventFields& fields, long) : contactId_(fields.requiredText("contactId")) {}

    void apply(Telephone& telephone) const override { telephone.contacts().remove(contactId_); }
    void write(FieldWriter& fields) const override { fields.text("contactId", contactId_); }

  private:
    const std::string contactId_;
};
} // namespace

void addContactEvents(EventCatalogue& catalogue)
{
    catalogue.add<ContactStored>("contact");
    catalogue.add<ContactRemoved>("contact-removed");
}
} // namespace Deskphone
