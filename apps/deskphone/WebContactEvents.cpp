#include "EventCatalogue.h"
#include "FieldWriter.h"
#include "PersonFields.h"
#include "Telephone.h"

namespace Deskphone
{
namespace
{
/** Somebody whom the web service knows; with a search id it tells of the contact by itself. */
class WebContact : public Event
{
  public:
    WebContact(EventFields& fields, long)
        : itemId_(fields.requiredText("itemId")), searchId_(fields.text("searchId")), person_(fields)
    {
    }

    void apply(Telephone& telephone) const override
    {
        WSIItem contact = person_.webContact();
        contact.id = itemId_;
        contact.searchId = searchId_;
        telephone.webDirectory().put(contact);
    }

    void write(FieldWriter& fields) const override
    {
        fields.text("itemId", itemId_);
        fields.text("searchId", searchId_);
        person_.write(fields);
    }

  private:
    const std::string itemId_;
    const std::string searchId_;
    const PersonFields person_;
};

class WebContactRemoved : public Event
{
  public:
    WebContactRemoved(EventFields& fields, long) : itemId_(fields.requiredText("itemId")) {}

    void apply(Telephone& telephone) const override { telephone.deleteWebContact(itemId_); }
    void write(FieldWriter& fields) const override { fields.text("itemId", itemId_); }

  private:
    const std::string itemId_;
};
} // namespace

void addWebContactEvents(EventCatalogue& catalogue)
{
    catalogue.add<WebContact>("web-contact");
    catalogue.add<WebContactRemoved>("web-contact-removed");
}
} // namespace Deskphone
