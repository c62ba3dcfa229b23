#include "ConversationAPI/ConversationListComparison.h"

namespace ConversationAPI
{
ConversationListComparison::ConversationListComparison(const std::vector<Conversation*>& conversations)
{
    auto indexes = std::make_shared<boost::unordered_map<Conversation*, int>>();
    indexes->reserve(conversations.size());
    for (Conversation* conversation : conversations)
    {
        indexes->emplace(conversation, static_cast<int>(indexes->size()));
    }
    indexes_ = std::move(indexes);
}

bool ConversationListComparison::operator()(Conversation* a, Conversation* b) const
{
    return indexOf(a) < indexOf(b);
}

int ConversationListComparison::indexOf(Conversation* conversation) const
{
    const auto found = indexes_->find(conversation);
    return found == indexes_->end() ? -1 : found->second;
}
} // namespace ConversationAPI
