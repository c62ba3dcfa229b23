#include "sources/ContactConversations.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/ConversationItemMatcher.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/StaticConversationIDGenerator.h"
#include "sources/ContactPictures.h"

#include <boost/algorithm/string/trim.hpp>

#include <utility>

namespace ConversationAPI
{
using namespace ConversationListConditions;

namespace
{
constexpr const char* EXCHANGE_ID_PREFIX = "EWS_";
constexpr const char* WSI_ID_PREFIX = "WSI_";

void deleteAll(const std::vector<ConversationItem*>& items)
{
    for (const ConversationItem* item : items)
    {
        delete item;
    }
}

/** Holds for conversations that have the contact's number, if they are the same person's as well. */
class IsPerson : public ConversationUnaryCondition
{
  public:
    using Test = bool (*)(const Conversation&, const Conversation&);

    IsPerson(const Conversation& contact, Test isSamePerson)
        : contact_(contact), isSamePerson_(isSamePerson), matcher_(contact.shownItem())
    {
    }

    bool operator()(Conversation* other) const override
    {
        return matcher_(other) && (isSamePerson_(*other, contact_) || haveSameExchangeId(*other));
    }

    bool gatherCandidates(ConversationCandidates& candidates) const override
    {
        return matcher_.gatherCandidates(candidates);
    }

  private:
    bool haveSameExchangeId(const Conversation& other) const
    {
        const SharedText& id = contact_.exchangeContactIdText();
        return !id.empty() && id == other.exchangeContactIdText();
    }

    const Conversation& contact_;
    const Test isSamePerson_;
    const ConversationItemMatcher matcher_;
};

bool hasNumber(const Conversation& contact)
{
    return !contact.getNumber().empty() || !contact.contactDetails()->numbers.hasNoneOfTheFour();
}

/** Holds for whoever, like the contact, has no number, and is the same person by all else that tells people apart. */
class IsPersonWithoutNumber : public ConversationUnaryCondition
{
  public:
    explicit IsPersonWithoutNumber(const Conversation& contact) : contact_(contact) {}

    bool operator()(Conversation* other) const override
    {
        return haveSameName(*other, contact_) && other->getEmail() == contact_.getEmail() &&
               other->getCompany() == contact_.getCompany() && !hasNumber(*other);
    }

  private:
    const Conversation& contact_;
};

Conversation* findByItemOrId(const ConversationList& list, const Conversation& contact, IsPerson::Test isSamePerson)
{
    Conversation* found = contact.shownItem() ? list.find(IsPerson(contact, isSamePerson)) : nullptr;
    return found ? found : list.find(ConversationIDCondition(contact.getConversationId()));
}
} // namespace

ContactConversations::ContactConversations(ConversationFactory& factory, ConversationSourceIfc& source,
                                           ContactIdGenerator::IsOthers isOthers)
    : factory_(factory), source_(source), ids_(factory, std::move(isOthers))
{
}

/** Null for a factory without a generator, which then tells so. */
ConversationIDGenerator* ContactConversations::idGenerator(const std::string& id)
{
    return factory_.getConversationIDGenerator() ? &ids_.giveNext(id) : nullptr;
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

ContactConversations::Made ContactConversations::createConversationFromContact(const DirectoryContact& contact)
{
    return createFound(contact, idGenerator());
}

ContactConversations::Made ContactConversations::createFound(const DirectoryContact& contact,
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

/** Contacts without an id must not share one. */
ContactConversations::Made ContactConversations::createConversationFromWSIItem(const WSIItem& item)
{
    Made made = createEmpty(idGenerator(item.id.empty() ? item.id : WSI_ID_PREFIX + item.id));
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
    DirectoryContact comparable = contactOfConversation(*createFound(contact, &noId));
    comparable.firstName = contact.firstName;
    comparable.nickname = contact.nickname;
    return comparable;
}

/** Which number of a stored contact is called was chosen when it was stored. */
void ContactConversations::complete(Conversation& known, const DirectoryContact& news)
{
    StaticConversationIDGenerator sameId(known.getConversationId());
    const Made made = createFound(completedBy(news, known), &sameId);
    if (made)
    {
        if (!known.isTemporary() && made->hasAnyNumberMatching(known.getNumber()))
        {
            made->updateNumber(known.getNumber(), known.getNumberType());
        }
        made->setContactSource(known.getContactSource());
        made->setExchangeContactId(known.exchangeContactId());
        made->setPresenceState(known.getPresenceState());
        takeNews(known, *made);
        if (!known.isTemporary())
        {
            remember(known);
        }
    }
}

void ContactConversations::takeWSINews(Conversation& stored, const Conversation& news)
{
    takeWSIState(stored, news);
    complete(stored, contactOfConversation(news));
}

void ContactConversations::addWSINews(Conversation& stored, const Conversation& news)
{
    takeWSIState(stored, news);
    complete(stored, completedBy(contactOfConversation(stored), news));
}

void ContactConversations::takeWSIState(Conversation& stored, const Conversation& news)
{
    stored.setPresenceState(news.getPresenceState());
    if (!news.exchangeContactId().empty())
    {
        stored.setExchangeContactId(news.exchangeContactId());
    }
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

/** Not every directory keeps the blanks around a name. */
bool haveSameName(const Conversation& a, const Conversation& b)
{
    const auto isSame = [](const std::string& one, const std::string& other)
    { return boost::algorithm::trim_copy(one) == boost::algorithm::trim_copy(other); };
    return isSame(a.getFirstName(), b.getFirstName()) && isSame(a.getLastName(), b.getLastName());
}

bool mayBeSamePerson(const Conversation& a, const Conversation& b)
{
    return a.nameList().empty() || b.nameList().empty() || haveSameName(a, b);
}

Conversation* findConversationOf(const ConversationList& list, const Conversation& contact)
{
    return findByItemOrId(list, contact, [](const Conversation&, const Conversation&) { return true; });
}

Conversation* findPerson(const ConversationList& list, const Conversation& contact,
                         bool (*isSamePerson)(const Conversation&, const Conversation&))
{
    Conversation* found = findByItemOrId(list, contact, isSamePerson);
    return found || hasNumber(contact) ? found : list.find(IsPersonWithoutNumber(contact));
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
