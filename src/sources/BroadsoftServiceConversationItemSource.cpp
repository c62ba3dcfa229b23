#include "ConversationAPI/BroadsoftServiceConversationItemSource.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/ConversationItemFactory.h"
#include "ConversationAPI/ConversationItemSourceObserverIfc.h"
#include "ConversationAPI/ConversationSourceObserverIfc.h"
#include "Log.h"
#include "Observers.h"
#include "platform/BroadsoftServiceIfc.h"
#include "sources/BroadsoftServiceLog.h"
#include "sources/CallLogConversations.h"
#include "sources/CallLogLine.h"
#include "sources/PresetIDGenerator.h"

#include <cstdio>

namespace ConversationAPI
{
namespace
{
constexpr int CALL_HISTORY_STATE = 0;

/** The call history again, but made of items alone: the source's own list is left as it is. */
constexpr int COMBINED_HISTORY_STATE = 6;

constexpr const char* SHOW_ALL = "All";

/** One counter for all sources, so that no two items ever have the same id. */
std::string nextConversationId()
{
    static unsigned long counter = 0;
    return "BSDirItem-" + std::to_string(counter++);
}

/** Numbers of more than nine digits might not fit; they tell nothing. */
void logUpdatedDirectory(const std::string& text)
{
    int directory = 0;
    int count = 0;
    if (std::sscanf(text.c_str(), "%9d:%9d", &directory, &count) == 2)
    {
        CONVERSATION_LOG(BROADSOFT_SOURCE_LOG_FILE, 6, "broadsoftCallLogChanged() directory %d has %d entries",
                         directory, count);
    }
}

/** Null for a type that is unknown. A contact is a placeholder: no call, and without a time. */
ConversationItem* makeItem(ConversationItemFactory& factory, const CallLogLine& line)
{
    const std::string name = line.displayName();
    if (line.isOfDirectory())
    {
        return factory.getDummyConversationItem(0, line.number, name, "", CallPartyIdentifier::NO_ICON);
    }
    if (line.type == "Placed")
    {
        return factory.getDialledCallConversationItem(line.time, line.number, name, "");
    }
    if (line.type == "Missed")
    {
        return factory.getMissedCallConversationItem(line.time, line.number, name, "");
    }
    if (line.type == "Received")
    {
        return factory.getReceivedCallConversationItem(line.time, line.number, name, "");
    }
    return nullptr;
}

/** Where the service keeps calls of this kind; "", and a line in the log, for what is no call of a log. */
std::string pathOf(ConversationItemState state)
{
    switch (state)
    {
    case ConversationItemState::DIALLED:
        return "/Placed/";
    case ConversationItemState::RECEIVED:
        return "/Received/";
    case ConversationItemState::MISSED:
        return "/Missed/";
    default:
        CONVERSATION_LOG(BROADSOFT_SOURCE_LOG_FILE, 2,
                         "BroadsoftServiceConversationItemSource::deleteConversation unexpected Call log entry");
        return {};
    }
}

/** What only a contact of the group's and the enterprise's directory tells: a second number, and names apart. */
void completeContact(Conversation& contact, const CallLogLine& line)
{
    if (!line.secondNumber.empty() && line.secondNumber != "*")
    {
        contact.saveWorkNumber2(line.secondNumber);
    }
    const std::size_t separator = line.name.find('#');
    contact.saveFirstName(line.name.substr(0, separator));
    contact.saveLastName(separator == std::string::npos ? std::string() : line.name.substr(separator + 1));
}
} // namespace

BroadsoftServiceConversationItemSource::BroadsoftServiceConversationItemSource(BroadsoftServiceIfc* service,
                                                                               ConversationItemFactory* itemFactory,
                                                                               ConversationFactory* conversationFactory)
    : service_(service), itemFactory_(itemFactory), conversationFactory_(conversationFactory),
      idGenerator_(std::make_unique<PresetIDGenerator>()), round_([](bool) {}),
      conversations_(std::make_unique<CallLogConversations>()), filter_(SHOW_ALL)
{
}

BroadsoftServiceConversationItemSource::~BroadsoftServiceConversationItemSource() = default;

std::vector<ConversationItem*> BroadsoftServiceConversationItemSource::getConversationItems()
{
    std::vector<ConversationItem*> items;
    if (showState_ != CALL_HISTORY_STATE && showState_ != COMBINED_HISTORY_STATE)
    {
        return items;
    }
    items.reserve(entries_.size());
    for (const std::string& entry : entries_)
    {
        if (ConversationItem* item = stringToConversationItem(entry, false))
        {
            items.push_back(item);
        }
    }
    return items;
}

void BroadsoftServiceConversationItemSource::reloadCalls(const std::vector<std::string>&) {}

void BroadsoftServiceConversationItemSource::deleteAllCalls() {}

void BroadsoftServiceConversationItemSource::deleteCalls(const std::vector<std::string>&) {}

void BroadsoftServiceConversationItemSource::setObserver(ConversationItemSourceObserverIfc* observer)
{
    itemObserver_ = observer;
}

void BroadsoftServiceConversationItemSource::clearObserver()
{
    itemObserver_ = nullptr;
}

int BroadsoftServiceConversationItemSource::getItemSourceType()
{
    return NETWORK_CALL_LOGS;
}

bool BroadsoftServiceConversationItemSource::ageAllMissedCalls(const std::vector<std::string>&)
{
    return false;
}

/** An item observer that hears of the subscription reads the items by itself. */
void BroadsoftServiceConversationItemSource::init()
{
    if (!service_)
    {
        CONVERSATION_LOG(BROADSOFT_SOURCE_LOG_FILE, 3, "init() there is no service to read from");
        return;
    }
    takeEntries(service_->entries());
    const NotificationRound::Scope round(round_);
    tellEach(observers_, [](ConversationSourceObserverIfc& observer) { observer.conversationSourcesReady(); });
    notifyObserversConversationsChanged();
    if (itemObserver_)
    {
        itemObserver_->sourceSubscribed();
    }
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the operation is known with this signature.
void BroadsoftServiceConversationItemSource::broadsoftCallLogChanged(std::vector<std::string> updatedDirectories,
                                                                     std::vector<std::string> entries)
{
    CONVERSATION_LOG(BROADSOFT_SOURCE_LOG_FILE, 5,
                     "BroadsoftServiceConversationItemSource::broadsoftCallLogChanged updatedDirectories.size = %d, "
                     "entries.size = %d",
                     static_cast<int>(updatedDirectories.size()), static_cast<int>(entries.size()));
    for (const std::string& directory : updatedDirectories)
    {
        logUpdatedDirectory(directory);
    }
    takeEntries(std::move(entries));
    notifyObserversConversationsChanged();
    if (itemObserver_)
    {
        itemObserver_->conversationItemsChanged();
    }
}

/**
 * Lines that cannot be understood are dropped here, so that they are in the log once for each change that has them,
 * and not once more whenever items are made.
 */
void BroadsoftServiceConversationItemSource::takeEntries(std::vector<std::string> entries)
{
    const CriticalSection guard(lock_);
    entries_.clear();
    conversations_->retireAll(round_);
    for (std::string& entry : entries)
    {
        if (Conversation* conversation = stringToConversation(entry))
        {
            conversations_->add(conversation);
            entries_.push_back(std::move(entry));
        }
    }
    filterContent();
}

/**
 * In the combined history the list stays as it is, after a change of the log empty. The lock is held; the observers are
 * told in either case, after it was left.
 */
void BroadsoftServiceConversationItemSource::filterContent()
{
    if (showState_ != COMBINED_HISTORY_STATE)
    {
        conversations_->show(filter_);
    }
}

void BroadsoftServiceConversationItemSource::notifyObserversConversationsChanged()
{
    const NotificationRound::Scope round(round_);
    tellEach(observers_, [](ConversationSourceObserverIfc& observer) { observer.conversationsChanged(); });
}

std::string BroadsoftServiceConversationItemSource::getSubscribingService()
{
    return "ConversationAPI";
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the operation is known with this signature.
void BroadsoftServiceConversationItemSource::deleteItems(std::vector<ConversationItem*>) {}

void BroadsoftServiceConversationItemSource::showStateChanged(int state)
{
    {
        const CriticalSection guard(lock_);
        showState_ = state;
        filter_ = SHOW_ALL;
        filterContent();
    }
    notifyObserversConversationsChanged();
}

void BroadsoftServiceConversationItemSource::bwCallLogFilterChanged(std::string filter)
{
    {
        const CriticalSection guard(lock_);
        filter_ = std::move(filter);
        filterContent();
    }
    notifyObserversConversationsChanged();
}

ConversationList* BroadsoftServiceConversationItemSource::getConversations() const
{
    return &conversations_->shown();
}

Conversation* BroadsoftServiceConversationItemSource::getConversation(const std::string& conversationId)
{
    return conversations_->all().find(ConversationListConditions::ConversationIDCondition(conversationId));
}

void BroadsoftServiceConversationItemSource::addObserver(ConversationSourceObserverIfc* observer)
{
    addOnce(observers_, observer);
}

void BroadsoftServiceConversationItemSource::removeObserver(ConversationSourceObserverIfc* observer)
{
    removeOne(observers_, observer);
}

Conversation* BroadsoftServiceConversationItemSource::getConversationForUser(const std::string&)
{
    return nullptr;
}

std::vector<std::string> BroadsoftServiceConversationItemSource::getInUseConversationIds()
{
    std::vector<std::string> ids;
    conversations_->all().getInUseConversationIds(ids);
    return ids;
}

void BroadsoftServiceConversationItemSource::clearSearchResults() {}

void BroadsoftServiceConversationItemSource::voiceMailChanged(const std::string&, const std::string&) {}

/** The service may tell of the change before it returns: the conversation is not looked at after it was asked. */
void BroadsoftServiceConversationItemSource::deleteConversation(const std::string& conversationId)
{
    const Conversation* conversation = getConversation(conversationId);
    if (!conversation)
    {
        CONVERSATION_LOG(
            BROADSOFT_SOURCE_LOG_FILE, 5,
            "BroadsoftServiceConversationItemSource::deleteConversation unable to find conversation id = %s",
            conversationId.c_str());
        return;
    }
    const ConversationItem* item = conversation->shownItem();
    if (!item)
    {
        CONVERSATION_LOG(BROADSOFT_SOURCE_LOG_FILE, 2,
                         "BroadsoftServiceConversationItemSource::deleteConversation no initial item");
        return;
    }
    // An entry without a path is asked for by its bare id all the same: what cannot be deleted is the service's to say.
    const std::string path = pathOf(item->getState());
    const std::string callLogId = item->getItemId();
    if (callLogId.empty())
    {
        return;
    }
    CONVERSATION_LOG(BROADSOFT_SOURCE_LOG_FILE, 5, "deleteConversation callLogId = %s", callLogId.c_str());
    if (!service_)
    {
        CONVERSATION_LOG(BROADSOFT_SOURCE_LOG_FILE, 2, "m_pService is NULL");
        return;
    }
    service_->deleteCallLogEntry(path + callLogId);
}

void BroadsoftServiceConversationItemSource::deleteConversations() {}

void BroadsoftServiceConversationItemSource::sortBroadsoftCallLogs(int order)
{
    if (order == 0)
    {
        conversations_->shown().sort();
    }
    else if (order == 1)
    {
        conversations_->shown().sortAlphabetically();
    }
}

int BroadsoftServiceConversationItemSource::getSourceType()
{
    return 1;
}

void BroadsoftServiceConversationItemSource::conversationUpdated(Conversation*) {}

void BroadsoftServiceConversationItemSource::markAllMissedCallsRead() {}

ConversationItem* BroadsoftServiceConversationItemSource::stringToConversationItem(const std::string& entry,
                                                                                   bool giveConversationId)
{
    const std::optional<CallLogLine> line = readCallLogLine(entry);
    ConversationItem* item = line ? makeItem(*itemFactory_, *line) : nullptr;
    if (line && !item)
    {
        CONVERSATION_LOG(BROADSOFT_SOURCE_LOG_FILE, 2,
                         "There is a problem at BSCIS::stringToConversationItem s: %s, time:%s, number:%s, name:%s, "
                         "callLogId:%s, type:%s\n",
                         entry.c_str(), line->time.c_str(), line->number.c_str(), line->displayName().c_str(),
                         line->callLogId.c_str(), line->type.c_str());
    }
    if (!item)
    {
        return nullptr;
    }
    if (giveConversationId)
    {
        item->setConversationId(nextConversationId());
    }
    item->setDeleteOnConversationList(false);
    item->setEntryId(line->callLogId);
    return item;
}

/** The line is read twice: the item is made by the operation that a derived source may have changed. */
Conversation* BroadsoftServiceConversationItemSource::stringToConversation(const std::string& entry)
{
    const std::optional<CallLogLine> line = readCallLogLine(entry);
    ConversationItem* item = line ? stringToConversationItem(entry, true) : nullptr;
    if (!item)
    {
        return nullptr;
    }
    idGenerator_->setNextID(item->conversationId());
    Conversation* conversation = conversationFactory_->createConversation(item, *idGenerator_);
    if (line->type == "GroupDirectory" || line->type == "EnterpriseDirectory")
    {
        completeContact(*conversation, *line);
    }
    return conversation;
}
} // namespace ConversationAPI
