#include "ConversationAPI/ConversationObservers.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationModificationObserverIfc.h"
#include "Log.h"
#include "model/ConversationLog.h"

#include <algorithm>

namespace ConversationAPI
{
void ConversationObservers::add(ConversationModificationObserverIfc* observer, Conversation& conversation)
{
    if (observer && std::find(observers_.begin(), observers_.end(), observer) == observers_.end())
    {
        observers_.push_back(observer);
        observer->conversationRegistered(&conversation);
    }
}

void ConversationObservers::remove(ConversationModificationObserverIfc* observer, Conversation& conversation)
{
    const auto found = std::find(observers_.begin(), observers_.end(), observer);
    if (found != observers_.end())
    {
        observers_.erase(found);
        observer->conversationUnregistered(&conversation);
    }
}

void ConversationObservers::tellEnd(Conversation& conversation)
{
    for (ConversationModificationObserverIfc* observer : Observers(observers_))
    {
        observer->conversationUnregistered(&conversation);
    }
}

void ConversationObservers::tellModified(const std::string& conversationId)
{
    for (std::size_t i = 0; i < observers_.size(); ++i)
    {
        observers_[i]->conversationModified(conversationId);
    }
}

void ConversationObservers::tellKeysChanged(Conversation& conversation)
{
    if (observers_.empty())
    {
        return; // asked for every detail that is set before a conversation is in any list
    }
    for (ConversationModificationObserverIfc* observer : Observers(observers_))
    {
        observer->conversationKeysChanged(&conversation);
    }
}

void ConversationObservers::tellNumberChanges(Conversation& conversation, const std::string* before, std::size_t count)
{
    CONVERSATION_LOG(6, "conversationNumbersChanged");
    if (before == conversation.contactDetails()->numbers.data())
    {
        return;
    }
    const CopyOnWrite<ContactDetails> contact = conversation.contactDetails(); // whatever observers do
    const ContactNumbers& now = contact->numbers;
    for (std::size_t slot = 0; slot < count; ++slot)
    {
        if (slot >= now.size())
        {
            CONVERSATION_LOG(2, "No type is found for the number %s at %d", before[slot].c_str(),
                             static_cast<int>(slot));
        }
        else if (before[slot].empty() && !now[slot].empty())
        {
            notifyObserversNumbersUpdated(numberUpdateReason::ADDED, conversation, now[slot], "");
        }
        else if (before[slot] != now[slot])
        {
            const auto reason = now[slot].empty() ? numberUpdateReason::DELETED : numberUpdateReason::UPDATED;
            notifyObserversNumbersUpdated(reason, conversation, now[slot], before[slot]);
        }
    }
}

void ConversationObservers::notifyObserversNumbersUpdated(numberUpdateReason reason, Conversation& conversation,
                                                          const std::string& first, const std::string& second)
{
    for (ConversationModificationObserverIfc* observer : Observers(observers_))
    {
        observer->conversationNumberUpdated(reason, &conversation, first, second);
        observer->conversationModified(conversation.getConversationId());
    }
}
} // namespace ConversationAPI
