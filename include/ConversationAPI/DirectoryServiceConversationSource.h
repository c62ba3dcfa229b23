/**
 * The source of contacts: the telephone's phonebook, directory searches, contacts of the web service.
 *
 * Stored contacts are the source's list, which the aggregators combine with the history. What searches find is kept
 * beside it, temporarily, for whoever shows the results; it is found by its id and can be saved. Contacts travel to and
 * from the phonebook as PhoneBook XML messages; only what the phonebook reports is a stored contact.
 *
 * The source owns its conversations. Factory, services and observers are not owned and outlive it. Clones of its
 * conversations must not outlive it: those of web-service contacts refer to what gave them their id. Identifiers of
 * contacts are the phonebook's or the web service's own. Services and observers may call back while they are told
 * something; what goes meanwhile is deleted when all have been told. It subscribes to nothing, so it never reports
 * conversationSourcesReady(): where it is the only source, whoever wires it tells the aggregator. UI thread only.
 */
#pragma once

#include "ConversationAPI/ContactStorageIfc.h"
#include "ConversationAPI/ConversationSourceIfc.h"
#include "ConversationAPI/IdsInUseIfc.h"
#include "ConversationAPI/NotificationRound.h"
#include "ConversationAPI/SearchableConversationSourceIfc.h"
#include "platform/DirectoryServiceIfc.h"
#include "platform/WSIServiceIfc.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace ConversationAPI
{
class ContactConversations;
class ContactPictures;
class ConversationFactory;
class ConversationIDGenerator;
class FoundContacts;
class RemoteSearch;
class StoredContacts;

class DirectoryServiceConversationSource : public ConversationSourceIfc,
                                           public DirectoryServiceObserverIfc,
                                           public ContactStorageIfc,
                                           public SearchableConversationSourceIfc,
                                           public WSIServiceConversationObserverIfc,
                                           public IdsInUseIfc
{
  public:
    /** Either service may be null: then nothing is stored, or nothing told to the web service. */
    DirectoryServiceConversationSource(ConversationFactory* factory, DirectoryServiceIfc* directoryService,
                                       WSIServiceIfc* wsiService);
    ~DirectoryServiceConversationSource() override;

    DirectoryServiceConversationSource(const DirectoryServiceConversationSource&) = delete;
    DirectoryServiceConversationSource& operator=(const DirectoryServiceConversationSource&) = delete;

    /** The stored contacts. */
    ConversationList* getConversations() const override;

    /** Among the stored contacts, what directory searches have found and the web service's contacts. */
    Conversation* getConversation(const std::string& id) override;
    void addObserver(ConversationSourceObserverIfc* observer) override;
    void removeObserver(ConversationSourceObserverIfc* observer) override;

    /** Contacts are no users of a service: always null. */
    Conversation* getConversationForUser(const std::string&) override { return nullptr; }

    /** Found contacts included: a display may name them as long as they are kept. */
    std::vector<std::string> getInUseConversationIds() override;
    void clearSearchResults() override;

    /** Does nothing, as do conversationUpdated() and markAllMissedCallsRead(): contacts have no calls. */
    void voiceMailChanged(const std::string&, const std::string&) override {}

    /** Has the stored contact deleted; it goes when the phonebook says so. Found contacts stay. */
    void deleteConversation(const std::string& id) override;

    /** Keeps everything: emptying the list of calls must not empty the phonebook. */
    void deleteConversations() override;
    int getSourceType() override;
    void conversationUpdated(Conversation*) override {}
    void markAllMissedCallsRead() override {}

    void wsiSearchResults(const std::string& searchId, std::vector<WSIItem> items) override;
    void wsiSearchEnded(const std::string& searchId) override;

    /** A contact of the web service appeared or changed, whether anybody searches or not. */
    void wsiSearchResponseEvent(const WSIItem& item) override;

    /** Reads the whole phonebook anew if it was `updated`. */
    void phonebookDatabaseUpdated(bool updated) override;
    void newContact(const std::string& xml) override;
    void contactUpdated(const std::string& xml) override;
    void contactDeleted(const std::string& contactId) override;
    void directorySearchResults(const std::string& searchId, const PhonebookSearchResults& results) override;
    void directorySearchEnded(const std::string& searchId) override;
    std::string getSubscribingService() override;

    bool canStoreContact() const override;

    /**
     * Asks the phonebook to store the contact as the conversation has it. A contact that was found is among the stored
     * ones from then on; any other when the phonebook reports it.
     */
    void saveContact(Conversation* conversation) override;

    /** The stored contacts that match. */
    std::vector<std::string> getMatchingConversationIds(std::string searchString) override;

    /**
     * Searches the directory, in the place of the search before, whose results go. The end is told once; at once for
     * an empty text, which finds nobody: the search before is not heard of any more, and what it has found stays. The
     * observer outlives the search, or cancels it.
     */
    void getMatchingConversationIds(const std::string& searchString, const std::string& searchId,
                                    ConversationSearchObserverIfc* observer) override;

    /** The search is not heard of any more; what it has found stays. */
    void cancelSearch(const std::string& searchId) override;
    unsigned getSourceTypeWithPriority() const override;

    void appendIdHashes(std::vector<std::uint32_t>& hashes) const override;

    /** A contact that appeared in one of the telephone's phonebooks; one from "bluetooth" is written into the own. */
    void newContact(const std::string& xml, const std::string& source);

    /** One hit of a search whose results are told one by one, as those for a group's call are. */
    void directorySearchResponseEvent(const DirectoryContact& contact);

    /** The web service's contact is to go: it is deleted there, too. */
    void wsiItemDeleted(const std::string& wsiId);

    /** Where contact pictures last, made when there is one; pictures stay temporary as long as there is no place. */
    void setPictureDirectory(const std::string& directory);

    /** A contact as the message tells of it, with an id of the generator or of the factory's; the caller owns it. */
    Conversation* createConversationFromXml(const std::string& xml, ConversationIDGenerator* generator);
    Conversation* createConversationFromXml(const std::string& xml);

    /** The ids by which other services know who the conversation stands for; "" when they do not. */
    std::string findContactIdForConversationID(const std::string& conversationId) const;
    std::string findWSIIdForConversationID(const std::string& conversationId) const;

    /** Of whom searches have found and nobody has stored. */
    std::vector<std::string> getTemporaryConversationIds() const;

  private:
    void notifyObserversConversationUpdated(Conversation* conversation);
    void notifyObserversConversationsUpdated(const std::vector<Conversation*>& all);
    void conversationsChanged();

    void removeContact(const std::string& contactId);
    void saveImportedContact(Conversation& contact);
    Conversation* storedContactOf(const Conversation& saved);
    void saveWSIItem(Conversation* contact);
    void showDirectoryHit(const DirectoryContact& contact);
    void clearTemporaryConversations();

    DirectoryServiceIfc* directoryService_;
    WSIServiceIfc* wsiService_;
    std::unique_ptr<ContactConversations> contacts_; ///< outlives the conversations made by it
    NotificationRound round_;
    std::unique_ptr<ContactPictures> pictures_;
    std::unique_ptr<StoredContacts> stored_;
    std::unique_ptr<FoundContacts> found_;
    std::vector<ConversationSourceObserverIfc*> observers_;
    std::unique_ptr<RemoteSearch> search_;
    bool isSavingWSIItem_ = false;
};
} // namespace ConversationAPI
