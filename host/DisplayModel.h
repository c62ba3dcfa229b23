/**
 * The rows of a display, kept like the list of a conversation aggregator by nothing but what it tells.
 *
 * Attach it to whatever tells whole lists and single rows (docs/observers.md): to an aggregator, or to a list
 * provider and to the aggregator behind it. It owns nothing; whoever attaches it takes it off before it is
 * destroyed. UI thread only.
 */
#pragma once

#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationObserver.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Host
{
class DisplayModel : public ConversationAPI::ConversationObserver
{
  public:
    using Rows = std::vector<ConversationAPI::Conversation*>;

    /** From top to bottom; each conversation is valid until it, or the list, is reported anew or gone. */
    const Rows& rows() const { return rows_; }

    void conversationListChanged(ConversationAPI::ConversationList* list) override
    {
        hasList_ = list != nullptr;
        rows_ = hasList_ ? Rows(list->begin(), list->end()) : Rows();
    }

    void conversationPresenceUpdated(ConversationAPI::Conversation*) override {}

    void conversationUpdatedAndMoved(ConversationAPI::Conversation* conversation, int index) override
    {
        place(conversation, index);
    }

    void newConversation(ConversationAPI::Conversation* conversation, int index) override
    {
        place(conversation, index);
    }

    void conversationDeleted(ConversationAPI::Conversation* conversation) override { takeOut(conversation); }

  private:
    /**
     * Before the first list, changes of single rows count for nothing: the list may be made anew, unannounced, as
     * long as the sources are not ready, and a row kept from then would point nowhere.
     */
    void place(ConversationAPI::Conversation* conversation, int index)
    {
        if (hasList_ && conversation != nullptr)
        {
            takeOut(conversation);
            const std::size_t wanted = index < 0 ? 0 : static_cast<std::size_t>(index);
            rows_.insert(rows_.begin() + static_cast<Rows::difference_type>(std::min(wanted, rows_.size())),
                         conversation);
        }
    }

    void takeOut(const ConversationAPI::Conversation* conversation)
    {
        rows_.erase(std::remove(rows_.begin(), rows_.end(), conversation), rows_.end());
    }

    Rows rows_;
    bool hasList_ = false;
};
} // namespace Host
