#include "ContactFields.h"
#include "EventCatalogue.h"
#include "FieldWriter.h"
#include "Telephone.h"
#include "UserActions.h"

namespace Deskphone
{
namespace
{
/** Like a call, a contact is always told as a whole. */
class ContactStored : public Event
{
  public:
    ContactStored(EventFields& fields, long) : contact_(readContact(fields, fields.requiredText("contactId"))) {}

    void apply(Telephone& telephone) const override
    {
        if (!telephone.phonebook().write(writeRequest(contact_), true))
        {
            throw NotPossible("the phonebook refuses the contact");
        }
    }

    void write(FieldWriter& fields) const override { writeContact(fields, contact_); }

  private:
    const Contact contact_;
};

/** One of another telephone's, which the own phonebook takes over under an id of its own. */
class BluetoothContact : public Event
{
  public:
    BluetoothContact(EventFields& fields, long) : contact_(readContact(fields, "")) {}

    void apply(Telephone& telephone) const override { telephone.importBluetoothContact(writeRequest(contact_)); }
    void write(FieldWriter& fields) const override { writeContact(fields, contact_); }

  private:
    const Contact contact_;
};

class ContactRemoved : public Event
{
  public:
    ContactRemoved(EventFields& fields, long) : contactId_(fields.requiredText("contactId")) {}

    void apply(Telephone& telephone) const override { telephone.phonebook().deleteContact(contactId_); }
    void write(FieldWriter& fields) const override { fields.text("contactId", contactId_); }

  private:
    const std::string contactId_;
};
} // namespace

void addContactEvents(EventCatalogue& catalogue)
{
    catalogue.add<ContactStored>("contact");
    catalogue.add<BluetoothContact>("contact-bluetooth");
    catalogue.add<ContactRemoved>("contact-removed");
}
} // namespace Deskphone
