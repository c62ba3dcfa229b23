#include "sources/StoredContacts.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/NotificationRound.h"
#include "ConversationAPI/StaticConversationIDGenerator.h"
#include "Log.h"
#include "sources/ContactConversations.h"
#include "sources/ContactPictures.h"
#include "sources/DirectoryServiceConversationSourceLog.h"

#include <algorithm>
#include <utility>

namespace ConversationAPI
{
using namespace ConversationListConditions;

namespace
{
void makePermanent(Conversation& contact)
{
    contact.setTemporary(false);
    contact.setDeletable(true);
}
} // namespace

StoredContacts::StoredContacts(ContactConversations& maker, const ContactPictures& pictures,
                               DirectoryServiceIfc* directoryService, NotificationRound& round)
    : maker_(maker), pictures_(pictures), directoryService_(directoryService), round_(round)
{
    list_.setName("DirectoryServiceConversationSourceList");
}

Conversation* StoredContacts::find(const std::string& conversationId) const
{
    return conversationId.empty() ? nullptr : list_.find(ConversationIDCondition(conversationId));
}

std::string StoredContacts::conversationIdOf(const std::string& contactId) const
{
    const std::string conversationId = ids_.conversationOf(contactId);
    return conversationId.empty() ? contactId : conversationId;
}

bool StoredContacts::isTaken(const std::string& conversationId) const
{
    return !contactIdOf(conversationId).empty() || find(conversationId);
}

std::unique_ptr<Conversation> StoredContacts::createConversationFromXml(const std::string& xml,
                                                                        ConversationIDGenerator* generator)
{
    PhonebookEntry entry = readEntry(xml);
    findPicture(entry);
    return createConversation(entry, generator);
}

PhonebookEntry StoredContacts::readEntry(const std::string& xml) const
{
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 6, "createConversationFromXml xml=%s", xml.c_str());
    PhonebookEntry entry = readPhonebookEntry(xml);
    const DirectoryContact& contact = entry.contact;
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 6,
                     "Conversation numbers: W1:'%s' - W2:'%s' - M:'%s' - P:'%s' - Default Number:'%s' ",
                     contact.workNumber1.c_str(), contact.workNumber2.c_str(), contact.mobileNumber.c_str(),
                     contact.homeNumber.c_str(), entry.defaultNumber.c_str());
    return entry;
}

/** That moves the picture: once for an entry, and only when a conversation is to show it. */
void StoredContacts::findPicture(PhonebookEntry& entry) const
{
    entry.contact.picturePath = pictures_.pathOfNamedPicture(entry.contact.picturePath);
}

std::unique_ptr<Conversation> StoredContacts::createConversation(const PhonebookEntry& entry,
                                                                 ConversationIDGenerator* generator)
{
    std::unique_ptr<Conversation> made = maker_.createConversationFromEntry(entry, generator);
    if (made)
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "createConversationFromXml[id=%s]",
                         made->getConversationId().c_str());
    }
    return made;
}

/** Of those who share a number the first is shown, as after a restart; but who was shown before keeps the id. */
void StoredContacts::retrieveDataAndCreateConversations()
{
    const std::vector<Conversation*> before(list_.begin(), list_.end());
    list_.clear();
    for (Conversation* contact : before)
    {
        if (unconfirmed_.count(contact->getConversationId()) != 0)
        {
            list_.push_back(contact);
        }
        else
        {
            round_.retire(contact);
        }
    }
    const std::vector<std::string> contactIds = phonebook();
    ids_.keepShown(contactIds);
    for (const std::string& contactId : contactIds)
    {
        readContact(contactId);
    }
}

std::vector<Conversation*> StoredContacts::readUnknownContacts()
{
    std::vector<std::string> unknown;
    for (const std::string& contactId : phonebook())
    {
        if (ids_.conversationOf(contactId).empty())
        {
            unknown.push_back(contactId);
        }
    }
    return readAgain(unknown);
}

std::vector<std::string> StoredContacts::phonebook() const
{
    return directoryService_ ? directoryService_->contactIds() : std::vector<std::string>();
}

/** Without a contact id when the phonebook does not have it. */
PhonebookEntry StoredContacts::readFromPhonebook(const std::string& contactId) const
{
    const std::string xml = directoryService_ ? directoryService_->read(readRequest(contactId)) : std::string();
    if (xml.empty())
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 2, "readContact the phonebook has no contact %s",
                         contactId.c_str());
        return {};
    }
    PhonebookEntry entry = readEntry(xml);
    entry.uniqueId = contactId;
    return entry;
}

Conversation* StoredContacts::readContact(const std::string& contactId)
{
    PhonebookEntry entry = readFromPhonebook(contactId);
    return entry.uniqueId.empty() ? nullptr : add(std::move(entry));
}

/** Who is hidden behind another is only known to the phonebook. */
PhonebookEntry StoredContacts::findEntryOf(const Conversation& person)
{
    const Conversation* shown = findPerson(list_, person);
    const Conversation* other = shown ? nullptr : findConversationOf(list_, person);
    if (shown || !other || !person.shownItem())
    {
        const std::string contactId = shown ? contactIdOf(shown->getConversationId()) : std::string();
        return contactId.empty() ? PhonebookEntry() : readFromPhonebook(contactId);
    }
    for (const std::string& contactId : ids_.contactsOf(other->getConversationId()))
    {
        PhonebookEntry entry = readFromPhonebook(contactId);
        StaticConversationIDGenerator anyId(other->getConversationId());
        const std::unique_ptr<Conversation> hidden = createConversation(entry, &anyId);
        if (haveSameName(*hidden, person) && hidden->claims(*person.shownItem()))
        {
            return entry;
        }
    }
    return {};
}

bool StoredContacts::write(const DirectoryContact& contact, const std::string& contactId)
{
    const std::string xml = writeRequest(contact, contactId);
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 6, "saveContact %s", xml.c_str());
    return directoryService_ && directoryService_->write(xml, true);
}

Conversation* StoredContacts::addUnconfirmed(std::unique_ptr<Conversation> contact)
{
    contact->setTemporary(false);
    unconfirmed_.insert(contact->getConversationId());
    list_.push_back(contact.get());
    return contact.release();
}

bool StoredContacts::dropUnconfirmed(const std::string& conversationId)
{
    return unconfirmed_.count(conversationId) != 0 && removeContact(conversationId);
}

/** As if they had not been known before: one that was not shown because of another's number may be shown now. */
std::vector<Conversation*> StoredContacts::readAgain(const std::vector<std::string>& contactIds)
{
    for (const std::string& contactId : contactIds)
    {
        ids_.removeContact(contactId);
    }
    std::vector<Conversation*> found;
    for (const std::string& contactId : contactIds)
    {
        if (Conversation* contact = readContact(contactId))
        {
            found.push_back(contact);
        }
    }
    return found;
}

Conversation* StoredContacts::addConversationFromContact(const std::string& xml)
{
    return add(readEntry(xml));
}

/** A contact that is shown already is not looked for by its number, which may be another one now. */
Conversation* StoredContacts::add(PhonebookEntry entry)
{
    if (namesNobody(entry.contact))
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 2,
                         "addConversationFromContact ignores contact '%s', of which nothing is told",
                         entry.uniqueId.c_str());
        return nullptr;
    }
    findPicture(entry);
    const bool isHidden = ids_.isHiddenByOther(entry.uniqueId);
    const std::string ownId = isHidden ? std::string() : ids_.conversationOf(entry.uniqueId);
    Conversation* contact = find(ownId);
    if (contact)
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 6, "duplicate conversation found");
        update(*contact, entry);
        return contact;
    }
    std::unique_ptr<Conversation> made = createConversation(entry, maker_.idGenerator(ownId));
    if (!made)
    {
        return nullptr;
    }
    contact = join(std::move(made), entry);
    ids_.add(entry.uniqueId, contact->getConversationId());
    unconfirmed_.erase(contact->getConversationId());
    return contact;
}

/**
 * A contact that has just been saved gets what the phonebook made of it. One of the phonebook's stays as it is, and is
 * shown in the place of the other one that has its number.
 */
Conversation* StoredContacts::join(std::unique_ptr<Conversation> contact, const PhonebookEntry& entry)
{
    Conversation* known = findUnconfirmed(*contact);
    if (!known)
    {
        known = findConversationOf(list_, *contact);
    }
    const bool isConfirmed = known && unconfirmed_.count(known->getConversationId()) == 0;
    if (!known || (!isConfirmed && !mayBeSamePerson(*known, *contact)))
    {
        return append(std::move(contact));
    }
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 6, "duplicate conversation found");
    if (!isConfirmed)
    {
        update(*known, entry);
        return known;
    }
    mergeContact(*known, *contact);
    makePermanent(*known);
    return known;
}

Conversation* StoredContacts::append(std::unique_ptr<Conversation> contact)
{
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 6, "add conversation from contact");
    list_.push_back(contact.get());
    maker_.remember(*contact);
    return contact.release();
}

/** A number alone would not do: two people who share one may be saved one after the other. */
Conversation* StoredContacts::findUnconfirmed(const Conversation& contact) const
{
    for (const std::string& id : unconfirmed_)
    {
        Conversation* saved = find(id);
        if (saved && haveSameName(*saved, contact) &&
            saved->getConversationNumbers() == contact.getConversationNumbers())
        {
            return saved;
        }
    }
    return nullptr;
}

/**
 * Made with the id that the contact has, the news is that of the same contact. Of its presence the phonebook knows
 * nothing, and of its exchange id only if that came from the exchange server.
 */
void StoredContacts::update(Conversation& known, const PhonebookEntry& entry)
{
    StaticConversationIDGenerator sameId(known.getConversationId());
    const std::unique_ptr<Conversation> news = createConversation(entry, &sameId);
    news->setPresenceState(known.getPresenceState());
    if (news->exchangeContactId().empty())
    {
        news->setExchangeContactId(known.exchangeContactId());
    }
    takeNews(known, *news);
    makePermanent(known);
    maker_.remember(known);
}

std::vector<Conversation*> StoredContacts::updateContact(const std::string& xml)
{
    PhonebookEntry entry = readEntry(xml);
    const std::string conversationId = conversationIdOf(entry.uniqueId);
    Conversation* known = find(conversationId);
    if (!known || namesNobody(entry.contact))
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 3,
                         "contactUpdated ignores contact '%s', which is not known or of which nothing is told",
                         entry.uniqueId.c_str());
        return {};
    }
    if (ids_.isHiddenByOther(entry.uniqueId))
    {
        Conversation* shown = add(entry);
        return shown ? std::vector<Conversation*>{shown} : std::vector<Conversation*>();
    }
    findPicture(entry);
    update(*known, entry);
    std::vector<std::string> hidden = ids_.contactsOf(conversationId);
    hidden.erase(hidden.begin(), hidden.begin() + (hidden.empty() ? 0 : 1));
    ids_.add(entry.uniqueId, conversationId); // which it has been taken for, if it was not known
    unconfirmed_.erase(conversationId);
    std::vector<Conversation*> changed = readAgain(hidden);
    changed.erase(std::remove(changed.begin(), changed.end(), known), changed.end());
    changed.push_back(known);
    return changed;
}

bool StoredContacts::removeContact(const std::string& contactId)
{
    const std::string deletedId = contactId;
    const std::string conversationId = conversationIdOf(deletedId);
    const bool isHidden = ids_.isHiddenByOther(deletedId);
    ids_.removeContact(deletedId);
    unconfirmed_.erase(conversationId);
    Conversation* contact = isHidden ? nullptr : find(conversationId);
    if (contact)
    {
        list_.pop(contact);
        round_.retire(contact);
        readAgain(ids_.contactsOf(conversationId));
    }
    return contact != nullptr;
}
} // namespace ConversationAPI
