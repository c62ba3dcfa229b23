#include "sources/ContactIdGenerator.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationFactory.h"

#include <utility>

namespace ConversationAPI
{
ContactIdGenerator::ContactIdGenerator(ConversationFactory& factory, IsOthers isOthers)
    : factory_(factory), isOthers_(std::move(isOthers))
{
}

ContactIdGenerator& ContactIdGenerator::giveNext(const std::string& id)
{
    next_ = id;
    return *this;
}

std::string ContactIdGenerator::getConversationID(Conversation* contact)
{
    ConversationIDGenerator* ids = factory_.getConversationIDGenerator();
    if (!next_.empty() || !ids || !contact)
    {
        return std::exchange(next_, std::string());
    }
    const std::string known = ids->knownConversationID(contact);
    return known.empty() || isOthers_(known, *contact) ? ids->getConversationID(nullptr) : known;
}

void ContactIdGenerator::rememberContact(const Conversation& contact)
{
    ConversationIDGenerator* ids = factory_.getConversationIDGenerator();
    if (ids && contact.shownItem())
    {
        ids->remember(contact.getConversationId(), contact.shownItem());
    }
}
} // namespace ConversationAPI
