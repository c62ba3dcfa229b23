/** Where the user's contacts can be saved. UI thread only. */
#pragma once

namespace ConversationAPI
{
class Conversation;

class ContactStorageIfc
{
  public:
    virtual ~ContactStorageIfc() = default;

    virtual bool canStoreContact() const = 0;

    /** Writes the conversation's contact; the conversation stays the caller's. */
    virtual void saveContact(Conversation* contact) = 0;
};
} // namespace ConversationAPI
