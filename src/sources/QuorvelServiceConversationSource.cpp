#include "ConversationAPI/QuorvelServiceConversationSource.h"

#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationSearchObserverIfc.h"
#include "ConversationAPI/ConversationSourceObserverIfc.h"
#include "ConversationAPI/GatherMatchingConversationIds.h"
#include "ConversationAPI/QuorvelServiceObserverIfc.h"
#include "ConversationAPI/UserIdMatchesAndIsDirectType.h"
#include "ConversationAPI/UserInfoObserverIfc.h"
#include "Log.h"
#include "Observers.h"
#include "sources/QuorvelConversationBuilder.h"
#include "sources/QuorvelServiceConversationSourceLog.h"
#include "sources/QuorvelUsers.h"
#include "sources/QuorvelValues.h"

#include <algorithm>
#include <utility>

namespace ConversationAPI
{
using namespace ConversationListConditions;

QuorvelServiceConversationSource::QuorvelServiceConversationSource(ConversationItemFactory* itemFactory,
                                                                   ConversationFactory* conversationFactory,
                                                                   QuorvelServiceObserverIfc* serviceObserver)
    : conversations_(std::make_unique<ConversationList>()), users_(std::make_unique<QuorvelUsers>()),
      builder_(std::make_unique<QuorvelConversationBuilder>(itemFactory, conversationFactory, *users_)),
      serviceObserver_(serviceObserver),
      round_([this](bool tellObservers) { rebuild(tellObservers); }, [this] { notifyObserversConversationsChanged(); })
{
}

/** The conversations go before the generators that they refer to. */
QuorvelServiceConversationSource::~QuorvelServiceConversationSource()
{
    conversations_->removeAndDeleteAll();
}

void QuorvelServiceConversationSource::setQuorvelService(Quorvel::ServiceIfc* service)
{
    service_ = service;
    users_->setService(service);
}

Conversation* QuorvelServiceConversationSource::getConversation(const std::string& id)
{
    return id.empty() ? nullptr : conversations_->find(ConversationIDCondition(id));
}

void QuorvelServiceConversationSource::addObserver(ConversationSourceObserverIfc* observer)
{
    addOnce(observers_, observer);
}

void QuorvelServiceConversationSource::removeObserver(ConversationSourceObserverIfc* observer)
{
    removeOne(observers_, observer);
}

Conversation* QuorvelServiceConversationSource::getConversationForUser(const std::string& userId)
{
    return findConversationForUser(userId);
}

Conversation* QuorvelServiceConversationSource::findConversationForUser(const std::string& userId) const
{
    return userId.empty() ? nullptr : conversations_->find(UserIdMatchesAndIsDirectType(userId));
}

std::vector<std::string> QuorvelServiceConversationSource::getInUseConversationIds()
{
    std::vector<std::string> ids;
    conversations_->getInUseConversationIds(ids);
    CONVERSATION_LOG(QUORVEL_SOURCE_LOG_FILE, 6, "getInUseConversationIds %d", static_cast<int>(ids.size()));
    return ids;
}

void QuorvelServiceConversationSource::deleteConversation(const std::string& id)
{
    const NotificationRound::Scope round(round_);
    if (removeConversationWithId(id))
    {
        round_.tellListAtEnd();
    }
}

void QuorvelServiceConversationSource::deleteConversations()
{
    const NotificationRound::Scope round(round_);
    if (removeAllConversations())
    {
        round_.tellListAtEnd();
    }
}

/** Whether there was one. */
bool QuorvelServiceConversationSource::removeConversationWithId(const std::string& id)
{
    Conversation* conversation = getConversation(id);
    if (conversation)
    {
        conversations_->pop(conversation);
        round_.retire(conversation);
    }
    return conversation != nullptr;
}

/** Whether there were any. */
bool QuorvelServiceConversationSource::removeAllConversations()
{
    const std::vector<Conversation*> all(conversations_->begin(), conversations_->end());
    conversations_->clear();
    std::for_each(all.begin(), all.end(), [this](Conversation* conversation) { round_.retire(conversation); });
    return !all.empty();
}

std::vector<std::string> QuorvelServiceConversationSource::getMatchingConversationIds(std::string searchString)
{
    GatherMatchingConversationIds gather(searchString);
    conversations_->foreach (gather);
    return gather.ids;
}

void QuorvelServiceConversationSource::getMatchingConversationIds(const std::string& searchString,
                                                                  const std::string& searchId,
                                                                  ConversationSearchObserverIfc* observer)
{
    if (!observer)
    {
        return;
    }
    const std::string id = searchId; // the observer may start another search while it is told of this one
    if (!searchString.empty())
    {
        observer->searchResults(id, getMatchingConversationIds(searchString),
                                ConversationSearchObserverIfc::LOCAL_RESULTS);
    }
    observer->searchEnded(id);
}

void QuorvelServiceConversationSource::loggedIn()
{
    CONVERSATION_LOG(QUORVEL_SOURCE_LOG_FILE, 5, "QuorvelServiceConversationSource::loggedIn()");
    conversationsUpdatedForLoggedin();
    fetchMyUserData();
    if (serviceObserver_)
    {
        serviceObserver_->serviceLoggedIn(true);
    }
}

void QuorvelServiceConversationSource::loggedOut()
{
    CONVERSATION_LOG(QUORVEL_SOURCE_LOG_FILE, 5, "QuorvelServiceConversationSource::loggedOut()");
    deleteConversations();
    takeMyUserData("", "");
    if (serviceObserver_)
    {
        serviceObserver_->serviceLoggedIn(false);
    }
}

void QuorvelServiceConversationSource::conversationsUpdatedForLoggedin()
{
    loadConversations();
}

void QuorvelServiceConversationSource::loadConversations()
{
    if (!service_)
    {
        CONVERSATION_LOG(QUORVEL_SOURCE_LOG_FILE, 2, "loadConversations() there is no cloud service");
        return;
    }
    round_.rebuild(true);
}

void QuorvelServiceConversationSource::rebuild(bool tellObservers)
{
    removeAllConversations();
    if (service_)
    {
        loadedForUserId_ = users_->myId();
        CreateConversationsFromQuorvelConversations(service_->conversations());
    }
    if (tellObservers)
    {
        notifyObserversConversationsChanged();
    }
    if (!std::exchange(readyWasTold_, true))
    {
        tellEach(observers_, [](ConversationSourceObserverIfc& observer) { observer.conversationSourcesReady(); });
    }
}

void QuorvelServiceConversationSource::CreateConversationsFromQuorvelConversations(
    const std::vector<const Quorvel::ConversationIfc*>& conversations)
{
    for (const Quorvel::ConversationIfc* conversation : conversations)
    {
        if (conversation)
        {
            takeIn(*conversation);
        }
    }
}

/**
 * Null for a conversation without id, which nobody could ever ask for, and for one that was made anew: of that the
 * observers have heard then, unless they are being told something just now and hear of it later.
 */
Conversation* QuorvelServiceConversationSource::takeIn(const Quorvel::ConversationIfc& conversation)
{
    const std::string id = conversation.id();
    if (id.empty())
    {
        CONVERSATION_LOG(QUORVEL_SOURCE_LOG_FILE, 2, "A conversation of the cloud without id is left out");
        return nullptr;
    }
    Conversation* known = getConversation(id);
    if (!known)
    {
        return add(conversation);
    }
    if (!builder_->isAnotherNow(*known, conversation))
    {
        builder_->update(*known, conversation);
        return known;
    }
    const NotificationRound::Scope round(round_);
    removeConversationWithId(id);
    add(conversation);
    round_.tellListAtEnd();
    return nullptr;
}

Conversation* QuorvelServiceConversationSource::add(const Quorvel::ConversationIfc& conversation)
{
    std::unique_ptr<Conversation> created = builder_->CreateConversationFromQuorvelConversation(conversation);
    created->setSource(this);
    conversations_->push_back(created.get());
    return created.release();
}

/** Null for a conversation that the service does not know either. */
Conversation* QuorvelServiceConversationSource::findOrCreate(const std::string& conversationId)
{
    if (Conversation* known = getConversation(conversationId))
    {
        return known;
    }
    const Quorvel::ConversationIfc* conversation = askFor(conversationId);
    if (!conversation)
    {
        CONVERSATION_LOG(QUORVEL_SOURCE_LOG_FILE, 2,
                         "The cloud reports a change of conversation '%s', which it does not know",
                         conversationId.c_str());
        return nullptr;
    }
    return takeIn(*conversation);
}

/** Null for a conversation that the service does not know. */
const Quorvel::ConversationIfc* QuorvelServiceConversationSource::askFor(const std::string& conversationId) const
{
    return service_ ? service_->conversation(conversationId) : nullptr;
}

void QuorvelServiceConversationSource::newConversation(const Quorvel::ConversationIfc* conversation)
{
    updatedConversation(conversation);
}

void QuorvelServiceConversationSource::updatedConversation(const Quorvel::ConversationIfc* conversation)
{
    if (!conversation)
    {
        CONVERSATION_LOG(QUORVEL_SOURCE_LOG_FILE, 2, "updatedConversation() without a conversation");
        return;
    }
    notifyObserversConversationUpdated(takeIn(*conversation));
}

void QuorvelServiceConversationSource::newConversationItem(const Quorvel::ConversationItemIfc* item)
{
    updatedConversationItem(item);
}

void QuorvelServiceConversationSource::updatedConversationItem(const Quorvel::ConversationItemIfc* item)
{
    if (!item)
    {
        CONVERSATION_LOG(QUORVEL_SOURCE_LOG_FILE, 2, "updatedConversationItem() without an item");
        return;
    }
    if (Conversation* conversation = findOrCreate(item->conversationId()))
    {
        builder_->putItem(*conversation, *item);
        notifyObserversConversationUpdated(conversation);
    }
}

void QuorvelServiceConversationSource::processRTCSessionEvent(const Quorvel::RTCSessionEventIfc* event)
{
    if (!event)
    {
        CONVERSATION_LOG(QUORVEL_SOURCE_LOG_FILE, 2, "processRTCSessionEvent() without an event");
        return;
    }
    if (Conversation* conversation = findOrCreate(event->conversationId()))
    {
        builder_->updateMeeting(*conversation, *event);
        notifyObserversConversationUpdated(conversation);
    }
}

void QuorvelServiceConversationSource::userPresenceChanged(const std::string& userId, Quorvel::PresenceState state)
{
    Conversation* conversation = findConversationForUser(userId);
    const Conversation::PresenceState presence = convertQuorvelPresenceState(state);
    if (conversation && conversation->getPresenceState() != presence)
    {
        conversation->setPresenceState(presence);
        notifyObserversConversationUpdated(conversation, Conversation::PRESENCE_UPDATED);
    }
}

/** All that the user's record tells is taken over before anybody is told: who is told may make the record change. */
void QuorvelServiceConversationSource::updatedUser(const Quorvel::UserIfc* user)
{
    if (!user || user->id().empty())
    {
        CONVERSATION_LOG(QUORVEL_SOURCE_LOG_FILE, 2, "updatedUser() without a user");
        return;
    }
    const std::string userId = user->id();
    const NotificationRound::Scope round(round_);
    const std::vector<Conversation*> all(conversations_->begin(), conversations_->end());
    std::vector<Conversation*> changed;
    for (Conversation* conversation : all)
    {
        if (builder_->updateUser(*conversation, askFor(conversation->getConversationId()), *user))
        {
            changed.push_back(conversation);
        }
    }
    if (users_->myId() == userId)
    {
        takeMyUserData(userId, QuorvelUsers::displayNameOf(*user));
    }
    for (Conversation* conversation : changed)
    {
        notifyObserversConversationUpdated(conversation);
    }
}

void QuorvelServiceConversationSource::fetchMyUserData()
{
    const Quorvel::UserIfc* me = users_->me();
    if (!me)
    {
        CONVERSATION_LOG(QUORVEL_SOURCE_LOG_FILE, 3, "fetchMyUserData() the cloud does not tell who is signed in");
        return;
    }
    takeMyUserData(me->id(), QuorvelUsers::displayNameOf(*me));
}

/** Direct conversations that were loaded before the cloud told who the user is may show himself as the remote party. */
void QuorvelServiceConversationSource::takeMyUserData(const std::string& userId, const std::string& displayName)
{
    if (userId == userId_ && displayName == displayName_)
    {
        return;
    }
    userId_ = userId;
    displayName_ = displayName;
    users_->rememberMyId(userId);
    if (!conversations_->empty() && loadedForUserId_ != userId_)
    {
        loadConversations();
    }
    if (userInfoObserver_)
    {
        userInfoObserver_->userInfoChanged();
    }
}

void QuorvelServiceConversationSource::notifyObserversConversationsChanged()
{
    const NotificationRound::Scope round(round_);
    tellEach(observers_, [](ConversationSourceObserverIfc& observer) { observer.conversationsChanged(); });
}

/**
 * The reason is the notification's, and is set anew for each observer: one may have brought about another
 * notification, for another reason. Null, and a conversation that was removed meanwhile, is nobody's news.
 */
void QuorvelServiceConversationSource::notifyObserversConversationUpdated(Conversation* conversation,
                                                                          Conversation::UpdateReason reason)
{
    const NotificationRound::Scope round(round_);
    tellEach(observers_,
             [&](ConversationSourceObserverIfc& observer)
             {
                 if (conversation && conversations_->contains(conversation))
                 {
                     const Conversation::UpdateReason before = conversation->getUpdateReason();
                     conversation->setUpdateReason(reason);
                     observer.conversationUpdated(conversation);
                     conversation->setUpdateReason(before);
                 }
             });
}
} // namespace ConversationAPI
