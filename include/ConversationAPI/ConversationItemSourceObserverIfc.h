/** What item sources report to. Items passed here belong to the observer. UI thread only. */
#pragma once

#include <string>

namespace ConversationAPI
{
class ConversationItem;

class ConversationItemSourceObserverIfc
{
  public:
    virtual ~ConversationItemSourceObserverIfc() = default;

    /** The source's whole set of items is another one now. */
    virtual void conversationItemsChanged() = 0;

    /** The item of a call that is already known has new content. */
    virtual void conversationItemChanged(ConversationItem* item) = 0;
    virtual void newConversationItem(ConversationItem* item) = 0;

    /** A live call ended; false when no conversation held it. */
    virtual bool removeActiveConversationItemForCall(const std::string& callId) = 0;

    /** The source has finished subscribing to its service. */
    virtual void sourceSubscribed() = 0;
};
} // namespace ConversationAPI
