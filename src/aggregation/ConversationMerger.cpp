#include "ConversationAPI/ConversationMerger.h"

#include "ConversationAPI/Conversation.h"
#include "Log.h"

namespace ConversationAPI
{
namespace
{
constexpr const char* MERGER_LOG_FILE = "./src/ConversationMerger";

/** Sources are combined under the first one's id, by which its later updates find the row. */
constexpr Conversation::Folding COMBINING{false, true, true};

/**
 * A contact's second call, on another number, may have an id that it had before the contact was known. It is its own
 * for as long as the call goes on: remembered as the contact, it would get the contact's later calls.
 */
bool isCallBesideContact(const Conversation& target, const Conversation& contact)
{
    return contact.items().empty() && target.isActiveOrProgressingOrClearing() &&
           target.storedIdText() != contact.storedIdText();
}
} // namespace

ConversationMerger::ConversationMerger(Conversation* target) : target_(target) {}

void ConversationMerger::operator()(Conversation* conversation)
{
    const ConversationItem* item = conversation ? conversation->shownItem() : nullptr;
    if (!target_ || !item || !target_->isSameConversationAs(*item) || target_->isOtherContactThan(*conversation))
    {
        return;
    }
    if (target_->extraActiveConversation() && conversation->items().empty())
    {
        // An additional call shows whose it is, but the contact has a row of its own, lest it go with the call.
        target_->cloneContactInfo(*conversation);
        return;
    }
    Conversation::Folding folding = COMBINING;
    folding.isRemembered = !isCallBesideContact(*target_, *conversation);
    for (ConversationItem* orphan : target_->foldIn(*conversation, folding))
    {
        CONVERSATION_LOG(MERGER_LOG_FILE, 3, "ConversationMerger::operator orphaned item found %s",
                         orphan->getItemId().c_str());
        if (conversation->items().empty())
        {
            target_->append(orphan); // the history says that it belongs there, and a contact says nothing of items
        }
        else
        {
            delete orphan;
        }
    }
    hasMerged_ = true;
    merged_.push_back(conversation);
}
} // namespace ConversationAPI
