#include "lists/ContactLookup.h"

#include "ConversationAPI/ConversationItem.h"
#include "ConversationAPI/ConversationItemFactory.h"
#include "ConversationAPI/ConversationItemMatcher.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/IsSameConversationAsAndDirectCondition.h"

#include <memory>

namespace ConversationAPI
{
using namespace ConversationListConditions;

namespace
{
/** Conditions ask about items: a placeholder that lives as long as the search stands for the contact. */
template <typename Condition>
Conversation* findByPlaceholder(const ConversationList& list, ConversationItemFactory* itemFactory,
                                const std::string& firstName, const std::string& lastName, const std::string& number)
{
    if (!itemFactory)
    {
        return nullptr;
    }
    const std::unique_ptr<ConversationItem> placeholder(
        itemFactory->getDummyConversationItem(0, number, firstName, lastName, CallPartyIdentifier::NO_ICON));
    return list.find(Condition(placeholder.get()));
}
} // namespace

Conversation* findByContact(const ConversationList& list, ConversationItemFactory* itemFactory,
                            const std::string& firstName, const std::string& lastName, const std::string& number)
{
    return findByPlaceholder<ConversationItemMatcher>(list, itemFactory, firstName, lastName, number);
}

Conversation* findDirectByContact(const ConversationList& list, ConversationItemFactory* itemFactory,
                                  const std::string& firstName, const std::string& lastName, const std::string& number)
{
    return findByPlaceholder<IsSameConversationAsAndDirectCondition>(list, itemFactory, firstName, lastName, number);
}
} // namespace ConversationAPI
