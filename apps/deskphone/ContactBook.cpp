#include "ContactBook.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/ConversationSourceObserverIfc.h"

#include <algorithm>

namespace Deskphone
{
using ConversationAPI::Conversation;
using ConversationAPI::ConversationSourceObserverIfc;

namespace
{
constexpr int DIRECTORY = 2;

struct DefaultNumber
{
    std::string number;
    CallPartyIdentifier::PhoneNumberIconType type;
};

/** The first that there is. */
DefaultNumber defaultNumberOf(const Contact& contact)
{
    for (const DefaultNumber& one : {DefaultNumber{contact.work, CallPartyIdentifier::WORK_1},
                                     DefaultNumber{contact.work2, CallPartyIdentifier::WORK_2},
                                     DefaultNumber{contact.mobile, CallPartyIdentifier::MOBILE},
                                     DefaultNumber{contact.home, CallPartyIdentifier::HOME}})
    {
        if (!one.number.empty())
        {
            return one;
        }
    }
    return {"", CallPartyIdentifier::NO_ICON};
}
} // namespace

ContactBook::ContactBook(ConversationAPI::ConversationFactory& factory)
    : factory_(factory),
      round_([this](bool)
             { tellObservers([](ConversationSourceObserverIfc& observer) { observer.conversationsChanged(); }); })
{
    contacts_.setName("ContactBook");
}

/**
 * A known contact is changed in place: folding a new record into it would keep the name or number that the contact
 * has lost.
 */
void ContactBook::put(const Contact& contact)
{
    const DefaultNumber main = defaultNumberOf(contact);
    Conversation*& conversation = byContactId_[contact.contactId];
    const bool isNew = conversation == nullptr;
    if (isNew)
    {
        conversation = factory_.createConversation(contact.first, contact.last, main.number, 0, "", main.type);
        conversation->setSource(this);
        conversation->setContactSource(Conversation::DIRECTORY_CONTACT);
    }
    conversation->setPersonalData(contact.first, contact.last, "", "", "", "", "");
    conversation->setPhoneNumbers(contact.work, contact.work2, contact.mobile, contact.home, main.number, main.type);
    if (isNew)
    {
        conversation->init();
        contacts_.push_back(conversation);
    }
    tellUpdated(conversation);
}

void ContactBook::remove(const std::string& contactId)
{
    const auto found = byContactId_.find(contactId);
    if (found == byContactId_.end())
    {
        return;
    }
    Conversation* contact = found->second;
    byContactId_.erase(found);
    contacts_.pop(contact);
    round_.retire(contact);
    round_.rebuild(true);
}

Conversation* ContactBook::getConversation(const std::string& conversationId)
{
    return contacts_.find(ConversationAPI::ConversationListConditions::ConversationIDCondition(conversationId));
}

void ContactBook::addObserver(ConversationSourceObserverIfc* observer)
{
    observers_.push_back(observer);
}

void ContactBook::removeObserver(ConversationSourceObserverIfc* observer)
{
    observers_.erase(std::remove(observers_.begin(), observers_.end(), observer), observers_.end());
}

std::vector<std::string> ContactBook::getInUseConversationIds()
{
    std::vector<std::string> ids;
    contacts_.getInUseConversationIds(ids);
    return ids;
}

void ContactBook::deleteConversation(const std::string& conversationId)
{
    const Conversation* contact = getConversation(conversationId);
    const auto found = std::find_if(byContactId_.begin(), byContactId_.end(),
                                    [contact](const auto& known) { return known.second == contact; });
    if (found != byContactId_.end())
    {
        remove(std::string(found->first));
    }
}

int ContactBook::getSourceType()
{
    return DIRECTORY;
}

/** Observers that were taken off meanwhile are not told any more. */
template <typename Notification>
void ContactBook::tellObservers(Notification notification)
{
    const std::vector<ConversationSourceObserverIfc*> present = observers_;
    for (ConversationSourceObserverIfc* observer : present)
    {
        if (std::find(observers_.begin(), observers_.end(), observer) != observers_.end())
        {
            notification(*observer);
        }
    }
}

/** Whoever is told may delete the contact: the others are not told of it then, but it lives as long. */
void ContactBook::tellUpdated(Conversation* contact)
{
    const ConversationAPI::NotificationRound::Scope round(round_);
    tellObservers(
        [this, contact](ConversationSourceObserverIfc& observer)
        {
            if (contacts_.contains(contact))
            {
                observer.conversationUpdated(contact);
            }
        });
}
} // namespace Deskphone
