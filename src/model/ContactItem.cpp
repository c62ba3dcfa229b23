#include "model/ContactItem.h"

#include "ConversationAPI/ConversationContact.h"
#include "ConversationAPI/ConversationItem.h"
#include "ConversationAPI/ConversationItemFactory.h"

namespace ConversationAPI
{
/**
 * It carries no conversation id: with one on both sides, sameness would be a matter of ids alone, and a contact
 * would never match by number. A contact of whom neither name nor main number is known is still no anonymous caller.
 */
std::unique_ptr<ConversationItem> makeContactItem(const ConversationContact& contact, ConversationItemFactory* factory,
                                                  long time)
{
    if (!factory)
    {
        return nullptr;
    }
    std::unique_ptr<ConversationItem> item(factory->getDummyConversationItem(
        time, contact.getNumber(), contact.getFirstName(), contact.getLastName(), contact.getNumberType()));
    item->setPhoneNumbers(contact.getWorkNumber1(), contact.getWorkNumber2(), contact.getMobileNumber(),
                          contact.getHomeNumber());
    item->shareExchangeContactId(contact.exchangeContactIdText());
    if (contact.getNumber().empty() && joinNames(contact.getFirstName(), contact.getLastName()).empty())
    {
        item->setLastName("");
    }
    return item;
}
} // namespace ConversationAPI
