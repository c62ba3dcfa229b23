#include "ConversationAPI/ConversationListProvider.h"

#include "ConversationAPI/CallIDCondition.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationObserver.h"
#include "ConversationAPI/ConversationSourceIfc.h"
#include "ConversationAPI/GatherMatchingConversationIds.h"
#include "ConversationAPI/UserIdMatchesAndIsDirectType.h"
#include "Observers.h"
#include "lists/ContactLookup.h"

namespace ConversationAPI
{
using namespace ConversationListConditions;

ConversationListProvider::ConversationListProvider(ConversationItemFactory* itemFactory) : itemFactory_(itemFactory) {}

ConversationListProvider::~ConversationListProvider() = default;

/** The list is asked for anew for each observer: the one before may have set another source. */
void ConversationListProvider::conversationsChanged()
{
    tellEach(observers_,
             [this](ConversationObserver& observer) { observer.conversationListChanged(getConversations()); });
}

bool ConversationListProvider::hasConversationWithConversationId(const std::string& conversationId)
{
    return list_ && list_->find(ConversationIDCondition(conversationId)) != nullptr;
}

void ConversationListProvider::addObserver(ConversationObserver* observer)
{
    addOnce(observers_, observer);
}

void ConversationListProvider::removeObserver(ConversationObserver* observer)
{
    removeOne(observers_, observer);
}

void ConversationListProvider::start()
{
    conversationsChanged();
}

void ConversationListProvider::setSource(ConversationSourceIfc* source, bool notify)
{
    if (source_)
    {
        source_->removeObserver(this);
    }
    source_ = source;
    if (source_)
    {
        list_ = source_->getConversations();
        source_->addObserver(this);
    }
    if (notify)
    {
        conversationsChanged();
    }
}

ConversationList* ConversationListProvider::getConversations() const
{
    return list_;
}

Conversation* ConversationListProvider::getConversation(unsigned int index) const
{
    return list_ ? list_->atIndex(index) : nullptr;
}

Conversation* ConversationListProvider::getConversation(std::string callId) const
{
    return list_ ? list_->find(CallIDCondition(callId)) : nullptr;
}

Conversation* ConversationListProvider::getConversationByConversationID(const std::string& conversationId)
{
    return list_ && !conversationId.empty() ? list_->find(ConversationIDCondition(conversationId)) : nullptr;
}

Conversation* ConversationListProvider::getConversationByContact(const std::string& firstName,
                                                                 const std::string& lastName,
                                                                 const std::string& number) const
{
    return list_ ? findByContact(*list_, itemFactory_, firstName, lastName, number) : nullptr;
}

Conversation* ConversationListProvider::getDirectConversationByContact(const std::string& firstName,
                                                                       const std::string& lastName,
                                                                       const std::string& number) const
{
    return list_ ? findDirectByContact(*list_, itemFactory_, firstName, lastName, number) : nullptr;
}

Conversation* ConversationListProvider::getConversationForUser(const std::string& userId) const
{
    if (userId.empty())
    {
        return nullptr;
    }
    Conversation* listed = list_ ? list_->find(UserIdMatchesAndIsDirectType(userId)) : nullptr;
    return listed || !source_ ? listed : source_->getConversationForUser(userId);
}

void ConversationListProvider::deleteConversation(const std::string& conversationId)
{
    if (source_)
    {
        source_->deleteConversation(conversationId);
    }
}

void ConversationListProvider::deleteConversations()
{
    if (source_)
    {
        source_->deleteConversations();
    }
}

std::vector<std::string> ConversationListProvider::getMatchingConversationIds(std::string searchString)
{
    GatherMatchingConversationIds gather(searchString);
    if (list_)
    {
        list_->foreach (gather);
    }
    return gather.ids;
}

ConversationSourceIfc* ConversationListProvider::getConversationSource()
{
    return source_;
}

bool ConversationListProvider::markAllMissedCallsRead()
{
    if (source_)
    {
        source_->markAllMissedCallsRead();
    }
    return source_ != nullptr;
}
} // namespace ConversationAPI
