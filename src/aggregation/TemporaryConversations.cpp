#include "aggregation/TemporaryConversations.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/NotificationRound.h"
#include "aggregation/RowMatching.h"

#include <algorithm>
#include <tuple>

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

/** Calls of the history change only by being seen; of a live call and of a message much may. */
bool isSameHistoryItem(const ConversationItem& a, const ConversationItem& b)
{
    const auto facts = [](const ConversationItem& item)
    {
        return std::make_tuple(item.getState(), item.timeStampUTC(), item.getItemId(), item.conversationItemId(),
                               item.toString(), item.getViewed());
    };
    return a.isNonActiveCall() && facts(a) == facts(b);
}

/** Of a group more may change than is compared here. */
bool tellsTheSame(const Conversation& a, const Conversation& b)
{
    return a.getType() == Conversation::DIRECT && b.getType() == Conversation::DIRECT &&
           a.getSource() == b.getSource() && a.exchangeContactIdText() == b.exchangeContactIdText() &&
           *a.contactDetails() == *b.contactDetails() && *a.contactProfile() == *b.contactProfile() &&
           a.getPresenceState() == b.getPresenceState() && a.getContactSource() == b.getContactSource() &&
           std::equal(a.items().begin(), a.items().end(), b.items().begin(), b.items().end(),
                      [](const auto& mine, const auto& theirs) { return isSameHistoryItem(*mine, *theirs); });
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
    Conversation* known = find(conversation->getConversationId());
    if (known && tellsTheSame(*known, *conversation))
    {
        return known;
    }
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
