#include "aggregation/TemporaryConversations.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/NotificationRound.h"
#include "aggregation/RowMatching.h"

namespace ConversationAPI
{
namespace
{
void handOver(ConversationList& list, NotificationRound& round)
{
    const std::vector<Conversation*> all(list.begin(), list.end());
    list.clear();
    for (Conversation* conversation : all)
    {
        round.retire(conversation);
    }
}
} // namespace

TemporaryConversations::TemporaryConversations()
{
    temporary_.setName("ConversationAggregatorTempList");
}

TemporaryConversations::~TemporaryConversations() = default;

Conversation* TemporaryConversations::find(const std::string& conversationId) const
{
    return findRowById(temporary_, conversationId);
}

Conversation* TemporaryConversations::add(std::unique_ptr<Conversation> conversation)
{
    retire(conversation->getConversationId());
    temporary_.push_back(conversation.get());
    return conversation.release();
}

std::unique_ptr<Conversation> TemporaryConversations::take(Conversation* conversation)
{
    if (!temporary_.contains(conversation))
    {
        return nullptr;
    }
    temporary_.pop(conversation);
    return std::unique_ptr<Conversation>(conversation);
}

void TemporaryConversations::removeCall(const std::string& callId)
{
    for (Conversation* conversation : temporary_)
    {
        conversation->removeItem(callId);
    }
}

void TemporaryConversations::retire(const std::string& conversationId)
{
    const std::string id = conversationId;
    while (Conversation* conversation = find(id))
    {
        retire(take(conversation));
    }
}

/** At the front, where also a phantom may stand. */
void TemporaryConversations::retire(std::unique_ptr<Conversation> conversation)
{
    retired_.push_front(conversation.release());
}

void TemporaryConversations::release()
{
    retired_.removeAndDeleteAll();
}

void TemporaryConversations::clear(NotificationRound& round)
{
    handOver(temporary_, round);
    handOver(retired_, round);
}
} // namespace ConversationAPI
