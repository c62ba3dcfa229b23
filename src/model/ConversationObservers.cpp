#include "ConversationAPI/ConversationObservers.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationModificationObserverIfc.h"
#include "Log.h"
#include "model/ConversationLog.h"

#include <algorithm>

namespace ConversationAPI
{
ConversationObservers::Observers ConversationObservers::all() const
{
    Observers all;
    if (first_)
    {
        all.push_back(first_);
    }
    if (others_)
    {
        all.insert(all.end(), others_->begin(), others_->end());
    }
    return all;
}

void ConversationObservers::add(ConversationModificationObserverIfc* observer, Conversation& conversation)
{
    const Observers known = all();
    if (!observer || std::find(known.begin(), known.end(), observer) != known.end())
    {
        return;
    }
    if (!first_)
    {
        first_ = observer;
    }
    else
    {
        if (!others_)
        {
            others_ = std::make_unique<std::vector<ConversationModificationObserverIfc*>>();
        }
        others_->push_back(observer);
    }
    observer->conversationRegistered(&conversation);
}

void ConversationObservers::remove(ConversationModificationObserverIfc* observer, Conversation& conversation)
{
    Observers left = all();
    const auto found = std::find(left.begin(), left.end(), observer);
    if (found == left.end())
    {
        return;
    }
    left.erase(found);
    first_ = left.empty() ? nullptr : left.front();
    if (others_)
    {
        others_->assign(left.empty() ? left.end() : left.begin() + 1, left.end());
    }
    observer->conversationUnregistered(&conversation);
}

void ConversationObservers::tellEnd(Conversation& conversation)
{
    for (ConversationModificationObserverIfc* observer : all())
    {
        observer->conversationUnregistered(&conversation);
    }
}

/** Those that leave meanwhile are not told any more. */
void ConversationObservers::tellModified(const std::string& conversationId)
{
    if (first_)
    {
        first_->conversationModified(conversationId);
    }
    for (std::size_t place = 0; others_ && place < others_->size(); ++place)
    {
        (*others_)[place]->conversationModified(conversationId);
    }
}

void ConversationObservers::tellKeysChanged(Conversation& conversation)
{
    for (ConversationModificationObserverIfc* observer : all())
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
    for (ConversationModificationObserverIfc* observer : all())
    {
        observer->conversationNumberUpdated(reason, &conversation, first, second);
        observer->conversationModified(conversation.getConversationId());
    }
}
} // namespace ConversationAPI
