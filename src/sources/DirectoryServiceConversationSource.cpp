#include "ConversationAPI/DirectoryServiceConversationSource.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationSourceObserverIfc.h"
#include "ConversationAPI/GatherMatchingConversationIds.h"
#include "Log.h"
#include "Observers.h"
#include "ScopedFlag.h"
#include "sources/ContactConversations.h"
#include "sources/ContactFields.h"
#include "sources/ContactPictures.h"
#include "sources/DirectoryServiceConversationSourceLog.h"
#include "sources/FoundContacts.h"
#include "sources/PhonebookMessage.h"
#include "sources/RemoteSearch.h"
#include "sources/StoredContacts.h"

#include <algorithm>
#include <utility>

namespace ConversationAPI
{
namespace
{
constexpr int DIRECTORY = 2;
constexpr unsigned PRIORITY = 2; ///< after the local conversations and the network's directory

/** Who calls a group, and which group: their search results are shown while the call rings. */
constexpr const char* GROUP_PICKUP_SEARCHES[] = {"GROUPPICKUP_REMOTE", "GROUPPICKUP_CALLED"};

bool isGroupPickupSearch(const std::string& searchId)
{
    return std::find(std::begin(GROUP_PICKUP_SEARCHES), std::end(GROUP_PICKUP_SEARCHES), searchId) !=
           std::end(GROUP_PICKUP_SEARCHES);
}
} // namespace

DirectoryServiceConversationSource::DirectoryServiceConversationSource(ConversationFactory* factory,
                                                                       DirectoryServiceIfc* directoryService,
                                                                       WSIServiceIfc* wsiService)
    : directoryService_(directoryService), wsiService_(wsiService),
      contacts_(std::make_unique<ContactConversations>(
          *factory, *this,
          [this](const std::string& id, const Conversation& contact)
          { return stored_->isTaken(id) || (contact.isTemporary() && found_->isOthers(id, contact)); })),
      round_(
          [this](bool)
          { tellEach(observers_, [](ConversationSourceObserverIfc& observer) { observer.conversationsChanged(); }); }),
      pictures_(std::make_unique<ContactPictures>()),
      stored_(std::make_unique<StoredContacts>(*contacts_, *pictures_, directoryService_, round_)),
      found_(std::make_unique<FoundContacts>(*contacts_, stored_->list(), round_)),
      search_(std::make_unique<RemoteSearch>(directoryService_, *contacts_, *found_))
{
}

DirectoryServiceConversationSource::~DirectoryServiceConversationSource() = default;

ConversationList* DirectoryServiceConversationSource::getConversations() const
{
    return &stored_->list();
}

Conversation* DirectoryServiceConversationSource::getConversation(const std::string& id)
{
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 6, "getConversation[%s]", id.c_str());
    Conversation* stored = stored_->find(id);
    return stored || id.empty() ? stored : found_->find(id);
}

void DirectoryServiceConversationSource::addObserver(ConversationSourceObserverIfc* observer)
{
    addOnce(observers_, observer);
}

void DirectoryServiceConversationSource::removeObserver(ConversationSourceObserverIfc* observer)
{
    removeOne(observers_, observer);
}

std::vector<std::string> DirectoryServiceConversationSource::getInUseConversationIds()
{
    std::vector<std::string> ids;
    stored_->list().getInUseConversationIds(ids);
    found_->appendIds(ids);
    return ids;
}

void DirectoryServiceConversationSource::appendIdHashes(std::vector<std::uint32_t>& hashes) const
{
    stored_->list().appendIdHashes(hashes);
    found_->appendIdHashes(hashes);
}

void DirectoryServiceConversationSource::clearSearchResults()
{
    clearTemporaryConversations();
}

void DirectoryServiceConversationSource::clearTemporaryConversations()
{
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "clearTemporaryConversations");
    found_->clearTemporary();
}

std::vector<std::string> DirectoryServiceConversationSource::getTemporaryConversationIds() const
{
    return found_->temporaryIds();
}

/** What the phonebook never confirmed it cannot delete either. */
void DirectoryServiceConversationSource::deleteConversation(const std::string& id)
{
    const std::string conversationId = id;
    if (!stored_->find(conversationId))
    {
        return;
    }
    const NotificationRound::Scope round(round_);
    const std::string wsiId = findWSIIdForConversationID(conversationId);
    if (!wsiId.empty())
    {
        wsiItemDeleted(wsiId);
    }
    const std::string contactId = findContactIdForConversationID(conversationId);
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 6, "deleteConversation[%s][%s]", conversationId.c_str(),
                     contactId.c_str());
    if (contactId.empty())
    {
        removeContact(conversationId);
    }
    else if (directoryService_)
    {
        directoryService_->deleteContact(contactId);
    }
}

void DirectoryServiceConversationSource::deleteConversations()
{
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "deleteConversations");
}

int DirectoryServiceConversationSource::getSourceType()
{
    return DIRECTORY;
}

void DirectoryServiceConversationSource::notifyObserversConversationUpdated(Conversation* conversation)
{
    const NotificationRound::Scope round(round_);
    tellEach(observers_,
             [this, conversation](ConversationSourceObserverIfc& observer)
             {
                 if (stored_->list().contains(conversation) || found_->contains(conversation))
                 {
                     observer.conversationUpdated(conversation);
                 }
             });
}

void DirectoryServiceConversationSource::notifyObserversConversationsUpdated(const std::vector<Conversation*>& all)
{
    const NotificationRound::Scope round(round_);
    for (Conversation* conversation : all)
    {
        notifyObserversConversationUpdated(conversation);
    }
}

void DirectoryServiceConversationSource::conversationsChanged()
{
    round_.rebuild(true);
}

std::string DirectoryServiceConversationSource::findContactIdForConversationID(const std::string& conversationId) const
{
    return stored_->contactIdOf(conversationId);
}

std::string DirectoryServiceConversationSource::findWSIIdForConversationID(const std::string& conversationId) const
{
    return contacts_->wsiIdOf(conversationId);
}

void DirectoryServiceConversationSource::setPictureDirectory(const std::string& directory)
{
    pictures_->setPictureDirectory(directory);
}

Conversation* DirectoryServiceConversationSource::createConversationFromXml(const std::string& xml,
                                                                            ConversationIDGenerator* generator)
{
    return stored_->createConversationFromXml(xml, generator).release();
}

Conversation* DirectoryServiceConversationSource::createConversationFromXml(const std::string& xml)
{
    return createConversationFromXml(xml, nullptr);
}

void DirectoryServiceConversationSource::phonebookDatabaseUpdated(bool updated)
{
    if (updated)
    {
        const NotificationRound::Scope round(round_);
        stored_->retrieveDataAndCreateConversations();
        conversationsChanged();
    }
}

void DirectoryServiceConversationSource::newContact(const std::string& xml)
{
    if (isSavingWSIItem_)
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5,
                         " WSI Item save in progress, ignoring newContact notification...");
        return;
    }
    const NotificationRound::Scope round(round_);
    if (Conversation* contact = stored_->addConversationFromContact(xml))
    {
        notifyObserversConversationUpdated(contact);
    }
}

void DirectoryServiceConversationSource::newContact(const std::string& xml, const std::string& source)
{
    if (source == "bluetooth")
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "newContact[bluetooth] %s", xml.c_str());
        const std::unique_ptr<Conversation> contact(createConversationFromXml(xml, contacts_->idGenerator()));
        if (!contact || namesNobody(contactOfConversation(*contact)))
        {
            CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 2,
                             "newContact[bluetooth] ignores a contact of which nothing is told");
            return;
        }
        saveImportedContact(*contact);
    }
}

/** Whom the phonebook has already keeps there what the import does not tell of. */
void DirectoryServiceConversationSource::saveImportedContact(Conversation& contact)
{
    const PhonebookEntry known = stored_->findEntryOf(contact);
    if (known.uniqueId.empty())
    {
        saveContact(&contact);
    }
    else
    {
        stored_->write(completedBy(contactOfConversation(contact), known.contact), known.uniqueId);
    }
}

void DirectoryServiceConversationSource::contactUpdated(const std::string& xml)
{
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "contactUpdated %s", xml.c_str());
    const NotificationRound::Scope round(round_);
    notifyObserversConversationsUpdated(stored_->updateContact(xml));
}

void DirectoryServiceConversationSource::contactDeleted(const std::string& contactId)
{
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "Directory delete contact %s with conversationId %s",
                     contactId.c_str(), stored_->conversationIdOf(contactId).c_str());
    removeContact(contactId);
}

void DirectoryServiceConversationSource::removeContact(const std::string& contactId)
{
    const NotificationRound::Scope round(round_);
    if (stored_->removeContact(contactId))
    {
        conversationsChanged();
    }
}

bool DirectoryServiceConversationSource::canStoreContact() const
{
    return directoryService_ != nullptr;
}

void DirectoryServiceConversationSource::saveContact(Conversation* conversation)
{
    if (!conversation || !directoryService_)
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 2,
                         "saveContact there is no contact to store, or nowhere to store it");
        return;
    }
    const NotificationRound::Scope round(round_);
    const std::string id = conversation->getConversationId();
    Conversation* stored = storedContactOf(*conversation);
    const std::string picture = pictures_->pathToStore(conversation->getContactImagePath());
    if (picture != conversation->getContactImagePath())
    {
        conversation->setContactImagePath(picture);
        if (stored)
        {
            stored->setContactImagePath(picture);
        }
    }
    const bool isOthersId = !stored && stored_->find(id);
    const std::string contactId = isOthersId ? std::string() : findContactIdForConversationID(id);
    const bool isTaken = stored_->write(contactOfConversation(*conversation), contactId);
    if (!isTaken && stored_->dropUnconfirmed(id))
    {
        conversationsChanged();
    }
}

/**
 * The stored contact of the conversation's id; one that was only found is stored, as the user may have changed it
 * before saving: the phonebook's notice would otherwise not be recognised as its own. Null when it was not found
 * either, and when somebody else was stored with its calls' id since it was.
 */
Conversation* DirectoryServiceConversationSource::storedContactOf(const Conversation& saved)
{
    const std::string id = saved.getConversationId();
    Conversation* stored = stored_->find(id);
    const Conversation* found = id.empty() ? nullptr : found_->find(id);
    if (!found)
    {
        return stored;
    }
    if (stored)
    {
        return haveSameName(*found, saved) && !haveSameName(*stored, saved) ? nullptr : stored;
    }
    std::unique_ptr<Conversation> copy(found->clone());
    copy->cloneContactInfo(saved);
    copy->setContactSource(found->getContactSource());
    return stored_->addUnconfirmed(std::move(copy));
}

/** The phonebook's notice is not heard meanwhile, so that the contact has to be read. */
void DirectoryServiceConversationSource::saveWSIItem(Conversation* contact)
{
    {
        const ScopedFlag saving(isSavingWSIItem_);
        saveContact(contact);
    }
    notifyObserversConversationsUpdated(stored_->readUnknownContacts());
}

void DirectoryServiceConversationSource::directorySearchResponseEvent(const DirectoryContact& contact)
{
    CONVERSATION_LOG(
        DIRECTORY_SOURCE_LOG_FILE, 5, "directorySearchResponseEvent f=%s l=%s, wk1=%s, wk2=%s, m=%s, h=%s searchId=%s",
        contact.firstName.c_str(), contact.lastName.c_str(), contact.workNumber1.c_str(), contact.workNumber2.c_str(),
        contact.mobileNumber.c_str(), contact.homeNumber.c_str(), contact.searchId.c_str());
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "directorySearchResponseEvent my contact source is: %d",
                     static_cast<int>(Conversation::DIRECTORY_CONTACT));
    const NotificationRound::Scope round(round_);
    const DirectoryContact fields = contacts_->withComparableNumbers(contact);
    Conversation* known = found_->webServiceContactOf(contact.searchId, firstNumberOf(fields).number);
    if (isOnlyWSIContactPresent(known, fields))
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "directorySearchResponseEvent saving wsi conversation");
        known->setSearchIdUsed(true);
        saveWSIItem(known);
    }
    else if (wsiContactNeedsUpdateWithLdap(known, fields))
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "directorySearchResponseEvent update existing conversation");
        known->setSearchIdUsed(true);
        contacts_->complete(*known, fields);
        notifyObserversConversationUpdated(known); // found before, it may be on the display as it was
    }
    else
    {
        showDirectoryHit(contact);
    }
}

void DirectoryServiceConversationSource::showDirectoryHit(const DirectoryContact& contact)
{
    std::unique_ptr<Conversation> hit = contacts_->createConversationFromContact(contact);
    if (!hit)
    {
        return;
    }
    const bool isForGroupPickup = isGroupPickupSearch(contact.searchId);
    if (isForGroupPickup)
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5,
                         "directorySearchResponseEvent handle GROUPPICKUP REMOTE or CALLED event");
    }
    Conversation* shown = found_->takeDirectoryHit(std::move(hit));
    if (isForGroupPickup)
    {
        notifyObserversConversationUpdated(shown);
    }
}

void DirectoryServiceConversationSource::directorySearchResults(const std::string& searchId,
                                                                const PhonebookSearchResults& results)
{
    search_->directorySearchResults(searchId, results);
}

void DirectoryServiceConversationSource::directorySearchEnded(const std::string& searchId)
{
    search_->end(searchId, ConversationSearchObserverIfc::DIRECTORY_RESULTS);
}

void DirectoryServiceConversationSource::wsiSearchResults(const std::string& searchId, std::vector<WSIItem> items)
{
    search_->wsiSearchResults(searchId, std::move(items));
}

void DirectoryServiceConversationSource::wsiSearchEnded(const std::string& searchId)
{
    search_->end(searchId, ConversationSearchObserverIfc::WEB_SERVICE_RESULTS);
}

void DirectoryServiceConversationSource::wsiSearchResponseEvent(const WSIItem& item)
{
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "wsiSearchResponseEvent called");
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "wsiSearchResponseEvent allConversations.size()=%d",
                     static_cast<int>(stored_->list().size() + found_->webServiceContacts()));
    const NotificationRound::Scope round(round_);
    std::unique_ptr<Conversation> contact = contacts_->createConversationFromWSIItem(item);
    if (!contact)
    {
        return;
    }
    Conversation* saved = stored_->find(contact->getConversationId());
    if (saved)
    {
        contacts_->takeWSINews(*saved, *contact);
    }
    notifyObserversConversationUpdated(saved ? saved : found_->takeWebServiceContact(std::move(contact)));
}

void DirectoryServiceConversationSource::wsiItemDeleted(const std::string& wsiId)
{
    const NotificationRound::Scope round(round_);
    const std::string id = wsiId;
    const bool wasKept = found_->removeWebServiceContact(contacts_->conversationIdOfWSIItem(id));
    contacts_->forgetWSIItem(id);
    if (wsiService_)
    {
        wsiService_->deleteItem(id);
    }
    if (wasKept)
    {
        conversationsChanged();
    }
}

std::vector<std::string> DirectoryServiceConversationSource::getMatchingConversationIds(std::string searchString)
{
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "getMatchingConversationIds, searchString : %s",
                     searchString.c_str());
    GatherMatchingConversationIds gather(searchString);
    stored_->list().foreach (gather);
    return gather.ids;
}

void DirectoryServiceConversationSource::getMatchingConversationIds(const std::string& searchString,
                                                                    const std::string& searchId,
                                                                    ConversationSearchObserverIfc* observer)
{
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "getMatchingConversationIds, searchString : %s",
                     searchString.c_str());
    if (!observer)
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 2,
                         "getMatchingConversationIds there is nobody to tell what searchId = %s finds",
                         searchId.c_str());
    }
    else if (searchString.empty())
    {
        search_->drop();
        observer->searchEnded(searchId);
    }
    else
    {
        search_->start(searchId, searchString, *observer);
    }
}

void DirectoryServiceConversationSource::cancelSearch(const std::string& searchId)
{
    search_->cancel(searchId);
}

unsigned DirectoryServiceConversationSource::getSourceTypeWithPriority() const
{
    return PRIORITY;
}

std::string DirectoryServiceConversationSource::getSubscribingService()
{
    return "ConversationAPI";
}
} // namespace ConversationAPI
