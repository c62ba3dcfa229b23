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
    if (!observer || isKnown(observer))
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
    if (first_ && !others_)
    {
        first_->conversationUnregistered(&conversation);
        return;
    }
    for (ConversationModificationObserverIfc* observer : all())
    {
        observer->conversationUnregistered(&conversation);
    }
}

/** Those that leave meanwhile are not told any more. */
template <typename Tell>
void ConversationObservers::tellEach(Tell tell)
{
    if (first_ && !others_)
    {
        tell(*first_);
        return;
    }
    for (ConversationModificationObserverIfc* observer : all())
    {
        if (isKnown(observer))
        {
            tell(*observer);
        }
    }
}

bool ConversationObservers::isKnown(const ConversationModificationObserverIfc* observer) const
{
    const auto isAmongOthers = [&] { return std::find(others_->begin(), others_->end(), observer) != others_->end(); };
    return observer && (observer == first_ || (others_ && isAmongOthers()));
}

void ConversationObservers::tellModified(const SharedText& conversationId)
{
    if (!first_)
    {
        return;
    }
    const SharedText id = conversationId; // the conversation's own, which an observer may change
    tellEach([&](ConversationModificationObserverIfc& observer) { observer.conversationModified(id.str()); });
}

void ConversationObservers::tellAllKeysChanged(Conversation& conversation)
{
    tellEach([&](ConversationModificationObserverIfc& observer) { observer.conversationKeysChanged(&conversation); });
}

void ConversationObservers::tellNumberChanges(Conversation& conversation, const CopyOnWrite<ContactDetails>& before)
{
    CONVERSATION_LOG(CONVERSATION_LOG_FILE, 6, "conversationNumbersChanged");
    if (first_ && !before.sharesWith(conversation.contactDetails()))
    {
        tellNumberChanges(conversation, CONTACT_NUMBER_SLOTS,
                          [&before](unsigned slot) -> const std::string& { return before->numbers.at(slot); });
    }
}

void ConversationObservers::tellNumberChanges(Conversation& conversation, const std::vector<std::string>& before)
{
    CONVERSATION_LOG(CONVERSATION_LOG_FILE, 6, "conversationNumbersChanged");
    tellNumberChanges(conversation, before.size(),
                      [&before](unsigned slot) -> const std::string& { return before[slot]; });
}

template <typename NumberBefore>
void ConversationObservers::tellNumberChanges(Conversation& conversation, std::size_t count, NumberBefore before)
{
    const CopyOnWrite<ContactDetails> contact = conversation.contactDetails(); // whatever observers do
    for (unsigned slot = 0; slot < count; ++slot)
    {
        const std::string& was = before(slot);
        if (slot >= CONTACT_NUMBER_SLOTS)
        {
            CONVERSATION_LOG(CONVERSATION_LOG_FILE, 2, "No type is found for the number %s at %d", was.c_str(),
                             static_cast<int>(slot));
            continue;
        }
        const std::string& now = contact->numbers.at(slot);
        if (was.empty() && !now.empty())
        {
            notifyObserversNumbersUpdated(numberUpdateReason::ADDED, conversation, now, "");
        }
        else if (was != now)
        {
            const auto reason = now.empty() ? numberUpdateReason::DELETED : numberUpdateReason::UPDATED;
            notifyObserversNumbersUpdated(reason, conversation, now, was);
        }
    }
}

void ConversationObservers::notifyObserversNumbersUpdated(numberUpdateReason reason, Conversation& conversation,
                                                          const std::string& first, const std::string& second)
{
    tellEach(
        [&](ConversationModificationObserverIfc& observer)
        {
            observer.conversationNumberUpdated(reason, &conversation, first, second);
            if (isKnown(&observer))
            {
                observer.conversationModified(conversation.getConversationId());
            }
        });
}
} // namespace ConversationAPI
