#include "ConversationAPI/ConversationAggregator.h"

#include "ConversationAPI/CallIDCondition.h"
#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationListMerger.h"
#include "ConversationAPI/ConversationSourceIfc.h"
#include "ConversationAPI/HasConversationAnyNumberMatchingCondition.h"
#include "ConversationAPI/UserIdMatchesAndIsDirectType.h"
#include "Log.h"
#include "aggregation/CombinedRows.h"
#include "aggregation/ConversationAggregatorLog.h"
#include "aggregation/ConversationSources.h"
#include "aggregation/DisplayObservers.h"
#include "aggregation/RowIds.h"
#include "aggregation/RowMatching.h"
#include "aggregation/TemporaryConversations.h"
#include "lists/ContactLookup.h"
#include "model/Prefetch.h"

#include <utility>

namespace ConversationAPI
{
using namespace ConversationListConditions;

namespace
{
constexpr int ALPHABETICALLY = 1;

constexpr Conversation::Folding UNREMEMBERED{true, true, true, true, false};
} // namespace

ConversationAggregator::ConversationAggregator() : ConversationAggregator(nullptr) {}

ConversationAggregator::ConversationAggregator(ConversationItemFactory* factory)
    : sources_(std::make_unique<ConversationSources>()), list_(std::make_unique<ConversationList>()),
      observers_(std::make_unique<DisplayObservers>(*list_, round_)),
      temporaries_(std::make_unique<TemporaryConversations>()), itemFactory_(factory),
      rows_(std::make_unique<CombinedRows>(*list_, *observers_, *temporaries_, round_)),
      round_([this](bool) { rebuild(); }, [this] { notifyObserversOfConversationsChanged(); })
{
    list_->setName("ConversationAggregatorList");
}

ConversationAggregator::~ConversationAggregator() = default;

void ConversationAggregator::setConversationItemFactory(ConversationItemFactory* factory)
{
    itemFactory_ = factory;
}

void ConversationAggregator::setSortType(int sortType)
{
    sortType_ = sortType;
}

void ConversationAggregator::addObserver(ConversationObserver* observer)
{
    observers_->add(observer);
}

void ConversationAggregator::removeObserver(ConversationObserver* observer)
{
    observers_->remove(observer);
}

void ConversationAggregator::setSourcesInPreferredOrder(ConversationSourceIfc* first, ConversationSourceIfc* second,
                                                        bool combineNow)
{
    setSources({first, second}, combineNow);
}

void ConversationAggregator::setSources(std::vector<ConversationSourceIfc*> sources, bool combineNow)
{
    sources_->set(std::move(sources), *this);
    if (combineNow)
    {
        conversationsChanged();
    }
}

void ConversationAggregator::conversationSourcesReady()
{
    if (!sourcesReady_)
    {
        notifySourceSubscribed();
        sourcesReady_ = true;
    }
}

void ConversationAggregator::start()
{
    if (sourcesReady_)
    {
        list_->clearModifiedConversations();
        notifyObserversOfConversationsChanged();
    }
}

/** Not before the sources are ready. */
void ConversationAggregator::notifyObserversOfConversationsChanged()
{
    if (!sourcesReady_)
    {
        return;
    }
    CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5, "notifyObserversOfConversationsChanged() IN");
    if (sortType_ == ALPHABETICALLY)
    {
        list_->sortAlphabetically();
        CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5, "notifyObserversOfConversationsChanged() sorted");
    }
    observers_->listChanged();
    list_->clearModifiedConversations();
    CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5, "notifyObserversOfConversationsChanged() OUT");
}

void ConversationAggregator::conversationsChanged()
{
    round_.rebuild(true);
}

void ConversationAggregator::rebuild()
{
    combineSources();
    start();
}

void ConversationAggregator::combineSources()
{
    const PhantomCalls::LiveRows before = rows_->liveRows();
    list_->removeAndDeleteAll();
    temporaries_->release();
    RowIds ids;
    Rows groupCalls;
    sources_->forEach([&](ConversationSourceIfc& source)
                      { copyUnmergedConversationsInto(mergeIntoRows(*source.getConversations()), ids, groupCalls); });
    for (Conversation* row : groupCalls) // which no contact is merged into, though it may be a contact's
    {
        takeContactOfNumber(*list_, *row);
    }
    list_->sort();
    if (ids.mayBeShared()) // what was merged into a row has not changed its id
    {
        rows_->separateRowsOfOneId(before);
    }
}

/** Answers those that no row took in. */
ConversationAggregator::Rows ConversationAggregator::mergeIntoRows(const ConversationList& source)
{
    ConversationListMerger merger(source);
    merger.expectRowsOf(*list_);
    list_->foreach (merger);
    return merger.notMerged();
}

void ConversationAggregator::copyUnmergedConversationsInto(const Rows& unmerged, RowIds& ids, Rows& groupCalls)
{
    const std::size_t count = list_->size() + unmerged.size();
    list_->reserve(count);
    ids.reserve(count);
    for (std::size_t place = 0; place < unmerged.size(); ++place)
    {
        prefetchAhead<Needed::OWNERS>(unmerged, place);
        ids.expect(unmerged[std::min(place + PREFETCH_DISTANCE, unmerged.size() - 1)]->storedIdText());
        CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 6, "copyUnmergedConversationsInto clone");
        ids.add(unmerged[place]->storedIdText());
        Conversation* row = unmerged[place]->clone();
        list_->push_back(row);
        if (row->isGroupCall())
        {
            groupCalls.push_back(row);
        }
    }
}

void ConversationAggregator::conversationUpdated(Conversation* conversation)
{
    if (!conversation)
    {
        return;
    }
    const NotificationRound::Scope round(round_);
    CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5, "conversationUpdated() for conversation.getCallId()='%s', updateReason=%d",
                     conversation->getCallId().c_str(), static_cast<int>(conversation->getUpdateReason()));
    if (conversation->getUpdateReason() == Conversation::PRESENCE_UPDATED)
    {
        updatePresence(*conversation);
        return;
    }
    rows_->update(*conversation);
    if (conversation->getContactSource() == Conversation::DIRECTORY_CONTACT)
    {
        updateSourcesWithContact(*conversation);
    }
}

void ConversationAggregator::removeActiveItemForCall(const std::string& callId, ConversationSourceIfc* source)
{
    rows_->removeActiveItemForCall(callId, source);
}

void ConversationAggregator::updatePresence(const Conversation& update)
{
    Conversation* row = findListed(update.getConversationId());
    if (!row)
    {
        return;
    }
    row->setPresenceState(update.getPresenceState());
    if (sourcesReady_)
    {
        observers_->presenceUpdated(row);
    }
}

void ConversationAggregator::updateSourcesWithContact(Conversation& contact)
{
    CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 4,
                     "conversationUpdated DIRECTORY svc source conversation. Updating %d source(s)",
                     static_cast<int>(sources_->size()));
    sources_->forEach([&contact](ConversationSourceIfc& source) { source.conversationUpdated(&contact); });
    if (rows_->isAnyLive())
    {
        round_.rebuild(true); // calls keep rows apart that the sources have united by now
    }
    else
    {
        round_.tellListAtEnd();
    }
}

void ConversationAggregator::voiceMailChanged(const std::string& oldNumber, const std::string& newNumber)
{
    const std::string before = oldNumber;
    const std::string after = newNumber;
    CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5, "voiceMailChanged() - old number = [%s], new number = [%s]",
                     before.c_str(), after.c_str());
    if (before == after)
    {
        return;
    }
    const NotificationRound::Scope round(round_);
    removeConversationWithNumber(before);
    removeConversationWithNumber(after);
    sources_->forEach([&](ConversationSourceIfc& source) { source.voiceMailChanged(before, after); });
}

void ConversationAggregator::removeConversationWithNumber(const std::string& number)
{
    Conversation* row = number.empty() ? nullptr : list_->find(HasConversationAnyNumberMatchingCondition(number));
    if (row)
    {
        CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5,
                         "removeConversationWithNumber() - Conversation found for number = [%s]", number.c_str());
        rows_->removeRow(row);
    }
}

/** Of a row with history only that goes: the directory would delete the contact itself. */
void ConversationAggregator::deleteConversation(const std::string& conversationId)
{
    if (conversationId.empty())
    {
        return;
    }
    const NotificationRound::Scope round(round_);
    const std::string id = conversationId;
    const Conversation* row = findRowById(*list_, id);
    sources_->deleteConversation(id, row && row->getConversationItemsSize() != 0);
    if (Conversation* left = findRowById(*list_, id))
    {
        rows_->removeRow(left);
    }
    conversationsChanged();
}

void ConversationAggregator::deleteConversations()
{
    const NotificationRound::Scope round(round_);
    sources_->forEach([](ConversationSourceIfc& source) { source.deleteConversations(); });
    conversationsChanged();
}

bool ConversationAggregator::markAllMissedCallsRead()
{
    list_->setAllConversationsAsViewed();
    const bool hasSources = sources_->size() != 0;
    sources_->forEach([](ConversationSourceIfc& source) { source.markAllMissedCallsRead(); });
    return hasSources;
}

Conversation* ConversationAggregator::getConversation(unsigned int index) const
{
    return list_->atIndex(index);
}

Conversation* ConversationAggregator::getConversation(std::string callId) const
{
    return callId.empty() ? nullptr : list_->find(CallIDCondition(callId));
}

bool ConversationAggregator::hasConversationWithConversationId(const std::string& conversationId)
{
    return findRowById(*list_, conversationId) != nullptr;
}

Conversation* ConversationAggregator::getConversationByConversationID(const std::string& conversationId)
{
    CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5, "getConversationByConversationID %s", conversationId.c_str());
    return findConversation(conversationId);
}

Conversation* ConversationAggregator::getConversationByContact(const std::string& firstName,
                                                               const std::string& lastName,
                                                               const std::string& number) const
{
    return findByContact(*list_, itemFactory_, firstName, lastName, number);
}

Conversation* ConversationAggregator::getDirectConversationByContact(const std::string& firstName,
                                                                     const std::string& lastName,
                                                                     const std::string& number) const
{
    return findDirectByContact(*list_, itemFactory_, firstName, lastName, number);
}

Conversation* ConversationAggregator::getConversationForUser(const std::string& userId) const
{
    if (userId.empty())
    {
        return nullptr;
    }
    Conversation* found = list_->find(UserIdMatchesAndIsDirectType(userId));
    return found ? found : sources_->conversationForUser(userId);
}

Conversation* ConversationAggregator::getConversationThatHasAnyNumberMatching(const std::string& number) const
{
    Conversation* found = number.empty() ? nullptr : list_->find(HasConversationAnyNumberMatchingCondition(number));
    if (!found)
    {
        CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5, "getConversationThatHasAnyNumberMatching() - No conversation found");
    }
    else
    {
        CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5,
                         "getConversationThatHasAnyNumberMatching() - Found matching conversation short id = %s",
                         found->getShortConversationId().c_str());
    }
    return found;
}

Conversation* ConversationAggregator::findConversation(const std::string& conversationId)
{
    if (conversationId.empty())
    {
        return nullptr;
    }
    const std::string id = conversationId;
    if (Conversation* row = findListed(id))
    {
        Conversation* contact = row->getContactSource() == Conversation::NO_CONTACT ? sources_->contact(id) : nullptr;
        return contact ? cloneTogether({row, contact}) : row;
    }
    Conversation* temporary = temporaries_->find(id);
    return temporary ? temporary : cloneTogether(sources_->conversations(id));
}

/** Among the rows alone. */
Conversation* ConversationAggregator::findListed(const std::string& conversationId) const
{
    if (conversationId.empty())
    {
        return nullptr;
    }
    CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5, "findConversation %s", conversationId.c_str());
    return findRowById(*list_, conversationId);
}

/**
 * A copy of the first with the others folded in, among the temporary conversations; null when there are none. That
 * somebody looks at a person whom a search has found must not group the calls of that person's numbers.
 */
Conversation* ConversationAggregator::cloneTogether(const Rows& conversations)
{
    std::unique_ptr<Conversation> clone;
    for (Conversation* conversation : conversations)
    {
        if (!clone)
        {
            CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 6, "findConversation clone");
            clone.reset(conversation->clone());
            continue;
        }
        for (ConversationItem* orphan : clone->foldIn(*conversation, UNREMEMBERED))
        {
            CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 3, "findConversation orphaned item found %s",
                             orphan->getItemId().c_str());
            delete orphan;
        }
    }
    return clone ? temporaries_->add(std::move(clone)) : nullptr;
}

void ConversationAggregator::makeConversationPermanent(const std::string& conversationId)
{
    makeTemporaryConversationPermanent(findConversation(conversationId));
}

void ConversationAggregator::makeTemporaryConversationPermanent(Conversation* conversation)
{
    if (!conversation)
    {
        return;
    }
    const NotificationRound::Scope round(round_);
    conversation->setTemporary(false);
    std::unique_ptr<Conversation> temporary = temporaries_->take(conversation);
    if (!temporary)
    {
        return;
    }
    if (Conversation* row = findRowById(*list_, temporary->getConversationId()))
    {
        rows_->mergeIntoExistingConversation(*row, *temporary);
        temporaries_->retire(std::move(temporary));
        list_->sort();
        observers_->updatedAndMoved(row);
        return;
    }
    list_->push_back(temporary.release());
    list_->sort();
    observers_->created(conversation);
}

void ConversationAggregator::clearTemporaryConversations()
{
    const NotificationRound::Scope round(round_);
    const Rows rows(list_->begin(), list_->end());
    for (Conversation* row : rows)
    {
        if (list_->contains(row) && row->isTemporary() && !row->isActiveOrProgressingOrClearing())
        {
            rows_->removeRow(row);
        }
    }
    temporaries_->clear(round_);
    sources_->forEach([](ConversationSourceIfc& source) { source.clearSearchResults(); });
}
} // namespace ConversationAPI
