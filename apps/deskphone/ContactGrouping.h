/**
 * Keeps the history grouped by the contacts that the phonebook has.
 *
 * It observes the source of contacts from before the combined list does, so that the combining that follows finds the
 * calls of all numbers of a contact in one conversation. When contacts have gone, or numbers of theirs, it lets go of
 * what they held together: what is left of the identifier of a contact that has gone is the newest call's, and the
 * history is made anew. Calls of a web-service contact get its identifier. A contact that changed alone is regrouped by
 * the combined list itself. Nothing is owned; all of it outlives this object. UI thread only.
 */
#pragma once

#include "ConversationAPI/ContactDetails.h"
#include "ConversationAPI/ConversationSourceObserverIfc.h"
#include "ConversationAPI/CopyOnWrite.h"

#include <string>
#include <unordered_map>

namespace ConversationAPI
{
class ConversationItemAggregator;
class DirectoryServiceConversationSource;
class RandomCachingConversationIDGenerator;
} // namespace ConversationAPI

namespace Deskphone
{
class ContactGrouping : public ConversationAPI::ConversationSourceObserverIfc
{
  public:
    ContactGrouping(ConversationAPI::DirectoryServiceConversationSource& contacts,
                    ConversationAPI::ConversationItemAggregator& history,
                    ConversationAPI::RandomCachingConversationIDGenerator& ids);

    void conversationUpdated(ConversationAPI::Conversation* contact) override;
    void conversationsChanged() override;
    void removeActiveItemForCall(const std::string&, ConversationAPI::ConversationSourceIfc*) override {}
    bool hasConversationWithConversationId(const std::string&) override { return false; }
    void conversationSourcesReady() override {}

  private:
    using Details = ConversationAPI::CopyOnWrite<ConversationAPI::ContactDetails>;
    using Contacts = std::unordered_map<std::string, Details>;

    void makeIdKnown(ConversationAPI::Conversation& contact);

    /** Whether there was anything to let go of. */
    bool letGo(const std::string& goneContact);

    ConversationAPI::DirectoryServiceConversationSource& contacts_;
    ConversationAPI::ConversationItemAggregator& history_;
    ConversationAPI::RandomCachingConversationIDGenerator& ids_;
    Contacts known_; ///< the contacts that there are, by their identifiers
};
} // namespace Deskphone
