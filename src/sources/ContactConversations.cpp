#include "sources/ContactConversations.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/ConversationItemMatcher.h"
#include "ConversationAPI/ConversationList.h"
#include "sources/ContactPictures.h"

namespace ConversationAPI
{
using namespace ConversationListConditions;

namespace
{
constexpr const char* EXCHANGE_ID_PREFIX = "EWS_";

void deleteAll(const std::vector<ConversationItem*>& items)
{
    for (const ConversationItem* item : items)
    {
        delete item;
    }
}
} // namespace

ContactConversations::ContactConversations(ConversationFactory& factory, ConversationSourceIfc& source)
    : factory_(factory), source_(source)
{
}

ContactConversations::Made ContactConversations::createEmpty(ConversationIDGenerator* generator)
{
    return Made(generator ? factory_.createConversation(*generator) : factory_.createConversation());
}

ContactConversations::Made ContactConversations::createConversationFromEntry(const PhonebookEntry& entry,
                                                                             ConversationIDGenerator* generator)
{
    Made made = createEmpty(generator);
    if (made)
    {
        made->setContactSource(Conversation::DIRECTORY_CONTACT);
        fillIn(*made, entry.contact, defaultNumberOf(entry));
        if (entry.externalId.compare(0, std::string(EXCHANGE_ID_PREFIX).size(), EXCHANGE_ID_PREFIX) == 0)
        {
            made->setExchangeContactId(entry.externalId);
        }
        made->init();
    }
    return made;
}

ContactConversations::Made ContactConversations::createConversationFromContact(const DirectoryContact& contact,
                                                                               ConversationIDGenerator* generator)
{
    Made made = createEmpty(generator);
    if (made)
    {
        made->setContactSource(Conversation::DIRECTORY_CONTACT);
        makeFound(*made, contact);
        made->init();
    }
    return made;
}

ContactConversations::Made ContactConversations::createConversationFromWSIItem(const WSIItem& item)
{
    Made made = createEmpty(generatorFor(item));
    if (made)
    {
        DirectoryContact contact = contactOfWSIItem(item);
        contact.picturePath = ContactPictures::storeWSIAvatar(item.id, item.picture);
        made->setContactSource(Conversation::WSI_CONTACT);
        makeFound(*made, contact);
        made->setPresenceState(static_cast<Conversation::PresenceState>(item.presence));
        made->setExchangeContactId(item.exchangeContactId);
        made->init();
        wsiIds_.add(item.id, made->getConversationId());
    }
    return made;
}

/** The nickname is no name that is compared. */
DirectoryContact ContactConversations::withComparableNumbers(const DirectoryContact& contact)
{
    StaticConversationIDGenerator noId("");
    DirectoryContact comparable = contactOfConversation(*createConversationFromContact(contact, &noId));
    comparable.firstName = contact.firstName;
    comparable.nickname = contact.nickname;
    return comparable;
}

void ContactConversations::complete(Conversation& known, const DirectoryContact& news)
{
    StaticConversationIDGenerator sameId(known.getConversationId());
    const Made made = createConversationFromContact(completedBy(news, known), &sameId);
    if (made)
    {
        made->setContactSource(known.getContactSource());
        made->setExchangeContactId(known.exchangeContactId());
        made->setPresenceState(known.getPresenceState());
        takeNews(known, *made);
    }
}

void ContactConversations::takeWSINews(Conversation& stored, const Conversation& news)
{
    stored.setPresenceState(news.getPresenceState());
    if (!news.exchangeContactId().empty())
    {
        stored.setExchangeContactId(news.exchangeContactId());
    }
    complete(stored, contactOfConversation(news));
}

/** Contacts without an id must not share one. */
ConversationIDGenerator* ContactConversations::generatorFor(const WSIItem& item)
{
    return item.id.empty() ? nullptr : &wsiGenerators_.try_emplace(item.id, "WSI_" + item.id).first->second;
}

void ContactConversations::fillIn(Conversation& conversation, const DirectoryContact& contact,
                                  const MainNumber& main) const
{
    conversation.setSource(&source_);
    conversation.setOrderedContactSource(contact.contactSource);
    conversation.setPhoneNumbers(contact.workNumber1, contact.workNumber2, contact.mobileNumber, contact.homeNumber,
                                 main.number, main.type);
    conversation.setContactImagePath(contact.picturePath);
    conversation.setPersonalData(contact.firstName, contact.lastName, contact.email, contact.company, contact.address1,
                                 contact.address2, contact.role);
}

/** Who has no name at least goes by the nickname. */
void ContactConversations::makeFound(Conversation& conversation, DirectoryContact contact) const
{
    if (contact.firstName.empty() && contact.lastName.empty())
    {
        contact.firstName = contact.nickname;
    }
    fillIn(conversation, contact, firstNumberOf(contact));
    conversation.setSearchId(contact.searchId);
    conversation.setTemporary(true);
}

Conversation* findConversationOf(const ConversationList& list, const Conversation& contact)
{
    Conversation* found = contact.initialItem() ? list.find(ConversationItemMatcher(contact.initialItem())) : nullptr;
    return found ? found : list.find(ConversationIDCondition(contact.getConversationId()));
}

/** The id stays: that of one contact never becomes that of another. */
void mergeContact(Conversation& known, Conversation& other)
{
    deleteAll(known.foldIn(other, {false, true, true, true}));
}

/** Folding alone keeps names and number that the news lacks; what a contact has lost is lost. */
void takeNews(Conversation& known, Conversation& news)
{
    known.cloneContactInfo(news);
    mergeContact(known, news);
}
} // namespace ConversationAPI
