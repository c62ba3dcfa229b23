#include "sources/QuorvelConversationBuilder.h"

#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationItemFactory.h"
#include "ConversationAPI/SystemConversationItem.h"
#include "ConversationAPI/TextConversationItem.h"
#include "Log.h"
#include "sources/QuorvelServiceConversationSourceLog.h"
#include "sources/QuorvelUsers.h"
#include "sources/QuorvelValues.h"

#include <algorithm>

namespace ConversationAPI
{
namespace
{
/** Remote party of an item: of a group there are many, and shown is the one who wrote. */
std::string partyIdOf(const Conversation& conversation, const std::string& creatorId)
{
    return conversation.getType() == Conversation::GROUP ? creatorId : conversation.getUserId();
}

bool involves(const Conversation& conversation, const std::string& userId)
{
    const auto& participants = conversation.getGroupParticipants();
    const auto& items = conversation.items();
    return conversation.getUserId() == userId ||
           std::any_of(participants.begin(), participants.end(), UserIdMatcher(userId)) ||
           std::any_of(items.begin(), items.end(),
                       [&userId](const auto& item) { return item->getCreatorId() == userId; });
}

bool affects(const Quorvel::ConversationItemIfc& cloudItem, const std::string& userId)
{
    const Quorvel::SystemItemIfc* notice = cloudItem.asSystemItem();
    const std::vector<std::string> ids = notice ? notice->affectedUserIds() : std::vector<std::string>();
    return std::find(ids.begin(), ids.end(), userId) != ids.end();
}

bool holds(const Conversation& conversation, const std::string& itemId)
{
    const auto& items = conversation.items();
    return std::any_of(items.begin(), items.end(),
                       [&itemId](const auto& item) { return item->conversationItemId() == itemId; });
}

/** The conversation's own notices that affect the user. They have the names of whom they affect, and no ids. */
std::vector<const Quorvel::ConversationItemIfc*> noticesAffecting(const Conversation& conversation,
                                                                  const Quorvel::ConversationIfc* cloudConversation,
                                                                  const std::string& userId)
{
    std::vector<const Quorvel::ConversationItemIfc*> notices;
    if (cloudConversation)
    {
        notices = cloudConversation->items();
    }
    const auto isOther = [&](const Quorvel::ConversationItemIfc* item)
    { return !item || !affects(*item, userId) || !holds(conversation, item->id()); };
    notices.erase(std::remove_if(notices.begin(), notices.end(), isOther), notices.end());
    return notices;
}

/** A group without a topic goes by its participants' names. */
void nameGroup(Conversation& conversation)
{
    const std::string& topic = conversation.getGroupConversationName();
    conversation.setDisplayName(topic.empty() ? conversation.groupNames() : topic);
}

void takeRemoteParty(Conversation& conversation, const Quorvel::UserIfc& user)
{
    conversation.setPersonalData(user.firstName(), QuorvelUsers::lastNameOf(user), user.email(), "", "", "", "");
    conversation.setDisplayName(QuorvelUsers::displayNameOf(user));
    conversation.setContactImagePath(QuorvelUsers::picturePathOf(user));
    conversation.setPresenceState(convertQuorvelPresenceState(user.presence()));
}
} // namespace

QuorvelConversationBuilder::QuorvelConversationBuilder(ConversationItemFactory* itemFactory,
                                                       ConversationFactory* conversationFactory,
                                                       const QuorvelUsers& users)
    : itemFactory_(itemFactory), conversationFactory_(conversationFactory), users_(users)
{
}

std::unique_ptr<Conversation>
QuorvelConversationBuilder::CreateConversationFromQuorvelConversation(const Quorvel::ConversationIfc& cloud)
{
    const bool isGroup = convertQuorvelConversationType(cloud.type()) == Conversation::GROUP;
    const Quorvel::UserIfc& party = users_.get(isGroup ? std::string() : users_.remotePartyOf(cloud));
    CONVERSATION_LOG(QUORVEL_SOURCE_LOG_FILE, 5,
                     "QuorvelServiceConversationSource::CreateConversationFromQuorvelConversation() firstName='%s' "
                     "lastName='%s' contactImagePath='%s'",
                     party.firstName().c_str(), party.lastName().c_str(), QuorvelUsers::picturePathOf(party).c_str());
    const std::string id = cloud.id();
    std::unique_ptr<Conversation> conversation(conversationFactory_->createConversation(
        party.firstName(), QuorvelUsers::lastNameOf(party), "", idGenerators_.try_emplace(id, id).first->second, 0, "",
        CallPartyIdentifier::NO_ICON));
    conversation->init();
    update(*conversation, cloud);
    return conversation;
}

bool QuorvelConversationBuilder::isAnotherNow(const Conversation& conversation,
                                              const Quorvel::ConversationIfc& cloudConversation) const
{
    const Conversation::Type type = convertQuorvelConversationType(cloudConversation.type());
    const std::string partyId = type == Conversation::GROUP ? "" : users_.remotePartyOf(cloudConversation);
    return type != conversation.getType() || (!partyId.empty() && partyId != conversation.getUserId());
}

void QuorvelConversationBuilder::update(Conversation& conversation, const Quorvel::ConversationIfc& cloudConversation)
{
    describe(conversation, cloudConversation);
    for (OwnedItem& item : getItemsForConversation(conversation, cloudConversation))
    {
        conversation.updateItem(item.release());
    }
}

void QuorvelConversationBuilder::describe(Conversation& conversation, const Quorvel::ConversationIfc& cloudConversation)
{
    conversation.setType(convertQuorvelConversationType(cloudConversation.type()));
    conversation.setModerated(cloudConversation.isModerated());
    setGroupCallNumbers(cloudConversation.joinDetails(), conversation);
    setGroupCallPin(cloudConversation.joinDetails(), conversation);
    if (conversation.getType() == Conversation::GROUP)
    {
        describeGroup(conversation, cloudConversation);
    }
    else
    {
        describeRemoteParty(conversation, cloudConversation);
    }
}

void QuorvelConversationBuilder::describeGroup(Conversation& conversation,
                                               const Quorvel::ConversationIfc& cloudConversation)
{
    conversation.setGroupName(cloudConversation.topic());
    updateGroupParticipants(conversation, cloudConversation);
    nameGroup(conversation);
}

/** Of a party that is not told, or not known, this time, what is shown stays. */
void QuorvelConversationBuilder::describeRemoteParty(Conversation& conversation,
                                                     const Quorvel::ConversationIfc& cloudConversation)
{
    const std::string partyId = users_.remotePartyOf(cloudConversation);
    if (!partyId.empty())
    {
        conversation.setUserId(partyId);
    }
    if (const Quorvel::UserIfc* party = users_.find(partyId))
    {
        takeRemoteParty(conversation, *party);
    }
}

/** A participant whom the service does not know any more keeps the name that is known of him. */
void QuorvelConversationBuilder::updateGroupParticipants(Conversation& conversation,
                                                         const Quorvel::ConversationIfc& cloudConversation)
{
    const std::vector<ConversationParticipant> before = conversation.getGroupParticipants();
    std::vector<ConversationParticipant> now;
    for (const std::string& id : cloudConversation.participantIds())
    {
        const UserIdMatcher isSameUser(id);
        if (std::any_of(now.begin(), now.end(), isSameUser))
        {
            continue;
        }
        const auto known = std::find_if(before.begin(), before.end(), isSameUser);
        const bool isStillKnown = known == before.end() || users_.find(id) != nullptr;
        const ConversationParticipant one = isStillKnown ? users_.getUserData(id) : *known;
        CONVERSATION_LOG(QUORVEL_SOURCE_LOG_FILE, 5,
                         "QuorvelServiceConversationSource::updateGroupParticipants() adding id='%s' firstName='%s' "
                         "lastName='%s' contactImage='%s'",
                         id.c_str(), one.getFirstName().c_str(), one.getSurname().c_str(),
                         one.getContactImagePath().c_str());
        now.push_back(one);
    }
    conversation.setUserIsAGroupParticipant(std::any_of(now.begin(), now.end(), UserIdMatcher(users_.myId())));
    conversation.setGroupParticipants(std::move(now));
}

void QuorvelConversationBuilder::updateMeeting(Conversation& conversation, const Quorvel::RTCSessionEventIfc& event)
{
    conversation.setModerated(event.isModerated());
    if (const Quorvel::JoinDetailsIfc* joinDetails = event.joinDetails())
    {
        setGroupCallNumbers(joinDetails, conversation);
        setGroupCallPin(joinDetails, conversation);
    }
}

void QuorvelConversationBuilder::setGroupCallNumbers(const Quorvel::JoinDetailsIfc* joinDetails,
                                                     Conversation& conversation)
{
    conversation.setBridgeNumbers(joinDetails ? joinDetails->bridgeNumbers() : std::vector<std::string>());
}

void QuorvelConversationBuilder::setGroupCallPin(const Quorvel::JoinDetailsIfc* joinDetails, Conversation& conversation)
{
    conversation.setGroupCallPin(joinDetails ? joinDetails->pin() : std::string());
}

std::vector<QuorvelConversationBuilder::OwnedItem>
QuorvelConversationBuilder::getItemsForConversation(const Conversation& conversation,
                                                    const Quorvel::ConversationIfc& cloudConversation)
{
    std::vector<OwnedItem> items;
    for (const Quorvel::ConversationItemIfc* item : cloudConversation.items())
    {
        if (item)
        {
            items.push_back(createConversationItem(conversation, *item));
        }
    }
    return items;
}

void QuorvelConversationBuilder::putItem(Conversation& conversation, const Quorvel::ConversationItemIfc& cloudItem)
{
    conversation.updateItem(createConversationItem(conversation, cloudItem).release());
}

QuorvelConversationBuilder::OwnedItem
QuorvelConversationBuilder::createConversationItem(const Conversation& conversation,
                                                   const Quorvel::ConversationItemIfc& cloudItem)
{
    const std::string creatorId = cloudItem.creatorId();
    const Quorvel::UserIfc& party = users_.get(partyIdOf(conversation, creatorId));
    const Quorvel::SystemItemIfc* systemItem = cloudItem.asSystemItem();
    OwnedItem item = systemItem ? createSystemItem(party, cloudItem, *systemItem) : createTextItem(party, cloudItem);
    item->setConversationItemId(cloudItem.id());
    item->setModificationTimeStampUTC(cloudItem.modificationTime());
    item->setNumberOfAttachments(cloudItem.numberOfAttachments());
    item->setCreator(users_.getUserData(creatorId));
    return item;
}

QuorvelConversationBuilder::OwnedItem
QuorvelConversationBuilder::createTextItem(const Quorvel::UserIfc& party, const Quorvel::ConversationItemIfc& cloudItem)
{
    OwnedItem item(itemFactory_->getTextConversationItem(cloudItem.creatorId(), cloudItem.creationTime(), "",
                                                         party.firstName(), QuorvelUsers::lastNameOf(party)));
    auto* text = static_cast<TextConversationItem*>(item.get());
    text->setMessageText(cloudItem.text());
    text->setSubjectText(cloudItem.subject());
    return item;
}

/** Who is affected by a message of his own came or went by himself, others were added or taken out. */
QuorvelConversationBuilder::OwnedItem
QuorvelConversationBuilder::createSystemItem(const Quorvel::UserIfc& party,
                                             const Quorvel::ConversationItemIfc& cloudItem,
                                             const Quorvel::SystemItemIfc& systemItem)
{
    const std::string creatorId = cloudItem.creatorId();
    OwnedItem item(itemFactory_->getSystemConversationItem(creatorId, cloudItem.creationTime(), "", party.firstName(),
                                                           QuorvelUsers::lastNameOf(party)));
    auto* message = static_cast<SystemConversationItem*>(item.get());
    message->setType(convertQuorvelSystemMessageType(systemItem.type()));
    message->setAddParticipantReason(convertQuorvelSystemMessageReason(systemItem.reason()));
    for (const std::string& id : systemItem.affectedUserIds())
    {
        message->addAffectedParticipant(shownNameOf(id));
        if (id == creatorId)
        {
            message->setUserHasLeftOrJoined();
        }
    }
    return item;
}

/** The id, when nothing else is known of the user. */
std::string QuorvelConversationBuilder::shownNameOf(const std::string& userId) const
{
    const std::string name = QuorvelUsers::displayNameOf(users_.get(userId));
    return name.empty() ? userId : name;
}

bool QuorvelConversationBuilder::updateUser(Conversation& conversation,
                                            const Quorvel::ConversationIfc* cloudConversation,
                                            const Quorvel::UserIfc& user)
{
    const std::string userId = user.id();
    const auto notices = noticesAffecting(conversation, cloudConversation, userId);
    if (notices.empty() && !involves(conversation, userId))
    {
        return false;
    }
    for (const Quorvel::ConversationItemIfc* notice : notices)
    {
        putItem(conversation, *notice);
    }
    renameInItems(conversation, user);
    renameParty(conversation, user);
    return true;
}

/** The items are changed where they are: their order does not depend on names. */
void QuorvelConversationBuilder::renameInItems(Conversation& conversation, const Quorvel::UserIfc& user)
{
    const std::string userId = user.id();
    const ConversationParticipant changed = QuorvelUsers::participantFrom(user);
    for (ConversationItem* item : conversation.getConversationItems())
    {
        const std::string creatorId = item->getCreatorId();
        if (creatorId == userId)
        {
            item->setCreator(changed);
        }
        if (partyIdOf(conversation, creatorId) == userId)
        {
            item->setFirstName(changed.getFirstName());
            item->setLastName(changed.getSurname());
        }
    }
}

void QuorvelConversationBuilder::renameParty(Conversation& conversation, const Quorvel::UserIfc& user)
{
    const std::string userId = user.id();
    if (conversation.getType() == Conversation::GROUP)
    {
        std::vector<ConversationParticipant> participants = conversation.getGroupParticipants();
        std::replace_if(participants.begin(), participants.end(), UserIdMatcher(userId),
                        QuorvelUsers::participantFrom(user));
        conversation.setGroupParticipants(std::move(participants));
        nameGroup(conversation);
    }
    else if (conversation.getUserId() == userId)
    {
        takeRemoteParty(conversation, user);
    }
}
} // namespace ConversationAPI
