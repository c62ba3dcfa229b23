/**
 * Whom searches have found and nobody has stored: directory hits and web-service contacts, each in a list of their own.
 *
 * Several people may share a number: whoever goes by another name is somebody else, and is kept. It owns the
 * conversations, which are temporary and live until they are cleared or another search begins. What goes while
 * observers are being told something lives until all have been. Maker, list and round are not owned.
 */
#pragma once

#include "ConversationAPI/ConversationList.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace ConversationAPI
{
class ContactConversations;
class NotificationRound;

class FoundContacts
{
  public:
    using Made = std::unique_ptr<Conversation>;

    /** A contact that is among the stored ones is not kept a second time. */
    FoundContacts(ContactConversations& maker, const ConversationList& stored, NotificationRound& round);

    /** Null when there is none. */
    Conversation* find(const std::string& conversationId) const;
    bool contains(Conversation* conversation) const;

    /** Whether the id is that of somebody else who was found. */
    bool isOthers(const std::string& conversationId, const Conversation& contact) const;
    void appendIds(std::vector<std::string>& ids) const;
    void appendIdHashes(std::vector<std::uint32_t>& hashes) const;
    std::vector<std::string> temporaryIds() const;
    std::size_t webServiceContacts() const { return webService_.size(); }

    /** Whom the search has found under the number and no directory hit was taken for yet; null for nobody. */
    Conversation* webServiceContactOf(const std::string& searchId, const std::string& number) const;

    /** The id of the conversation that shows who was found. */
    std::string addDirectoryResult(Made found);
    std::string addWebServiceResult(Made found);

    /** The conversation that holds the hit from now on. */
    Conversation* takeDirectoryHit(Made hit);

    /** The same for a contact that was not stored under its own id. */
    Conversation* takeWebServiceContact(Made contact);

    /** Whether it was there. */
    bool removeWebServiceContact(const std::string& conversationId);

    /** Results of other searches go. */
    void keepOnly(const std::string& searchId);

    /** Everything that is temporary goes. */
    void clearTemporary();

  private:
    ContactConversations& maker_;
    const ConversationList& stored_;
    NotificationRound& round_;
    ConversationList directory_;
    ConversationList webService_;
};
} // namespace ConversationAPI
