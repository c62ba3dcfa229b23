#include "aggregation/ConversationSources.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationSourceIfc.h"

#include <algorithm>

namespace ConversationAPI
{
namespace
{
constexpr int CALL_HISTORY = 1;
constexpr int CLOUD = 3;
} // namespace

void ConversationSources::set(std::vector<ConversationSourceIfc*> sources, ConversationSourceObserverIfc& observer)
{
    forEach([&observer](ConversationSourceIfc& source) { source.removeObserver(&observer); });
    sources.erase(std::remove(sources.begin(), sources.end(), nullptr), sources.end());
    sources_ = std::move(sources);
    forEach([&observer](ConversationSourceIfc& source) { source.addObserver(&observer); });
}

std::vector<Conversation*> ConversationSources::conversations(const std::string& conversationId) const
{
    std::vector<Conversation*> found;
    forEach(
        [&](ConversationSourceIfc& source)
        {
            if (Conversation* conversation = source.getConversation(conversationId))
            {
                found.push_back(conversation);
            }
        });
    return found;
}

Conversation* ConversationSources::contact(const std::string& conversationId) const
{
    const std::vector<Conversation*> found = conversations(conversationId);
    const auto contact = std::find_if(found.begin(), found.end(),
                                      [](const Conversation* conversation)
                                      { return conversation->getContactSource() != Conversation::NO_CONTACT; });
    return contact == found.end() ? nullptr : *contact;
}

Conversation* ConversationSources::conversationForUser(const std::string& userId) const
{
    Conversation* found = nullptr;
    forEach(
        [&](ConversationSourceIfc& source)
        {
            if (!found)
            {
                found = source.getConversationForUser(userId);
            }
        });
    return found;
}

void ConversationSources::deleteConversation(const std::string& conversationId, bool historyOnly)
{
    forEach(
        [&](ConversationSourceIfc& source)
        {
            const int type = source.getSourceType();
            if (!historyOnly || type == CALL_HISTORY || type == CLOUD)
            {
                source.deleteConversation(conversationId);
            }
        });
}
} // namespace ConversationAPI
