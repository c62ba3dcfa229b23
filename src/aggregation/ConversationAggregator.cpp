#include "ConversationAPI/ConversationAggregator.h"

#include "ConversationAPI/CallIDCondition.h"
#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationCandidates.h"
#include "ConversationAPI/ConversationListMerger.h"
#include "ConversationAPI/ConversationSourceIfc.h"
#include "ConversationAPI/ConversationUnaryCondition.h"
#include "ConversationAPI/HasConversationAnyNumberMatchingCondition.h"
#include "ConversationAPI/HoldsCallCondition.h"
#include "ConversationAPI/UserIdMatchesAndIsDirectType.h"
#include "ConversationAPI/WellKnownNames.h"
#include "Log.h"
#include "Observers.h"
#include "aggregation/ConversationSources.h"
#include "aggregation/DisplayObservers.h"
#include "aggregation/PhantomCalls.h"
#include "aggregation/RowMatching.h"
#include "aggregation/TemporaryConversations.h"
#include "lists/ContactLookup.h"

#include <algorithm>
#include <utility>

namespace ConversationAPI
{
using namespace ConversationListConditions;

namespace
{
constexpr const char* LOG_FILE = "./src/ConversationAggregator";

constexpr int ALPHABETICALLY = 1;

bool isLive(const Conversation& conversation)
{
    return conversation.isActiveOrProgressingOrClearing();
}

/** Whether a call of the row would have to give way to the one that the update shows, and which does not know it. */
bool hasCallOfItsOwn(const Conversation& row, Conversation& update)
{
    const auto& items = row.items();
    return !update.getCallId().empty() && std::any_of(items.begin(), items.end(),
                                                      [&update](const auto& item)
                                                      {
                                                          const std::string callId = item->getCallId();
                                                          return !callId.empty() &&
                                                                 !HoldsCallCondition(callId)(&update);
                                                      });
}

class IsLive : public ConversationUnaryCondition
{
  public:
    bool operator()(Conversation* row) const override { return isLive(*row); }

    bool gatherCandidates(ConversationCandidates& candidates) const override
    {
        candidates.thatAreLive();
        return true;
    }
};

/** A contact's own row stays; what was shown only because of the call goes with it. */
bool goesWithLastItem(const Conversation& row, const ConversationSourceIfc* source)
{
    return row.getSource() == source || row.extraActiveConversation() ||
           (row.getContactSource() == Conversation::DIRECTORY_CONTACT && row.isTemporary());
}
} // namespace

ConversationAggregator::ConversationAggregator() : ConversationAggregator(nullptr) {}

ConversationAggregator::ConversationAggregator(ConversationItemFactory* factory)
    : sources_(std::make_unique<ConversationSources>()), list_(std::make_unique<ConversationList>()),
      observers_(std::make_unique<DisplayObservers>(*list_, round_)),
      temporaries_(std::make_unique<TemporaryConversations>()), itemFactory_(factory),
      phantom_(std::make_unique<PhantomCalls>(*list_)), round_([this](bool) { rebuild(); }, [this] { start(); })
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

void ConversationAggregator::notifyObserversOfConversationsChanged()
{
    CONVERSATION_LOG(5, "notifyObserversOfConversationsChanged() IN");
    if (sortType_ == ALPHABETICALLY)
    {
        list_->sortAlphabetically();
        CONVERSATION_LOG(5, "notifyObserversOfConversationsChanged() sorted");
    }
    observers_->listChanged();
    list_->clearModifiedConversations();
    CONVERSATION_LOG(5, "notifyObserversOfConversationsChanged() OUT");
}

void ConversationAggregator::notifyObserversOfConversationDeleted(Conversation* row)
{
    temporaries_->retire(row->getConversationId());
    observers_->deleted(row);
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
    const Conversation* phantom = list_->getPhantomConversation();
    const std::string phantomCallId = phantom ? phantom->getCallId() : "";
    list_->removeAndDeleteAll();
    temporaries_->release();
    sources_->forEach(
        [this](ConversationSourceIfc& source)
        {
            ConversationListMerger merger(*source.getConversations());
            list_->foreach (merger);
            copyUnmergedConversationsInto(merger.notMerged());
        });
    list_->sort();
    separateRowsOfOneId(phantomCallId);
    hasDroppedItems_ = false;
}

void ConversationAggregator::copyUnmergedConversationsInto(const Rows& unmerged)
{
    for (const Conversation* conversation : unmerged)
    {
        CONVERSATION_LOG(6, "copyUnmergedConversationsInto clone");
        list_->push_back(conversation->clone());
    }
}

/**
 * A source may have the live calls of one party, and a call that is being cleared and its party's history, in
 * different conversations of one id. One live call becomes the phantom, the one that was it before if any, so that
 * no row changes its id; all else joins the row that keeps the id.
 */
void ConversationAggregator::separateRowsOfOneId(const std::string& phantomCallId)
{
    const std::vector<PhantomCalls::SameId> rows = phantom_->rowsOfOneId(phantomCallId);
    for (const PhantomCalls::SameId& same : rows)
    {
        const bool isBesideGroupCall =
            same.root->getCallId() == GROUP_PICKUP_CALL_ID || same.other->getCallId() == GROUP_PICKUP_CALL_ID;
        if (isLive(*same.other) && !list_->hasPhantomConversation() && !isBesideGroupCall)
        {
            PhantomCalls::unite(*same.root, *phantom_->makePhantom(same.other));
            continue;
        }
        const std::unique_ptr<Conversation> rest =
            isLive(*same.other) ? PhantomCalls::giveCallTo(*same.root, *same.other, same.other->getCallId()) : nullptr;
        PhantomCalls::unite(*same.root, rest ? *rest : *same.other);
        list_->remove(same.other);
    }
    if (!rows.empty())
    {
        list_->sort();
    }
}

void ConversationAggregator::conversationUpdated(Conversation* conversation)
{
    if (!conversation)
    {
        return;
    }
    const NotificationRound::Scope round(round_);
    CONVERSATION_LOG(5, "conversationUpdated() for conversation.getCallId()='%s', updateReason=%d",
                     conversation->getCallId().c_str(), static_cast<int>(conversation->getUpdateReason()));
    if (conversation->getUpdateReason() == Conversation::PRESENCE_UPDATED)
    {
        updatePresence(*conversation);
        return;
    }
    updateContent(*conversation);
    if (conversation->getContactSource() == Conversation::DIRECTORY_CONTACT)
    {
        updateSourcesWithContact(*conversation);
    }
    if (std::exchange(hasDroppedItems_, false))
    {
        round_.rebuild(true); // only the sources know where they belong now
    }
}

void ConversationAggregator::updatePresence(const Conversation& update)
{
    Conversation* row = findRowById(*list_, update.getConversationId());
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

void ConversationAggregator::updateContent(Conversation& update)
{
    const auto match = findMatchingConversation(update);
    if (!match.first)
    {
        CONVERSATION_LOG(5, "conversationUpdated() creating new conversation for conversation.getCallId()='%s'",
                         update.getCallId().c_str());
        createNewConversation(update);
        return;
    }
    CONVERSATION_LOG(5, "conversationUpdated() merging conversation for conversation.getCallId()='%s'",
                     update.getCallId().c_str());
    Conversation* existing = getConversation(match.second);
    if (!existing)
    {
        CONVERSATION_LOG(2, "index should point to existing conversation, but it's NULL (doing nothing)");
    }
    else if (phantom_->needsCreatingNewPhantomConversation(*existing, update))
    {
        createPhantomConversation(*existing, update);
    }
    else
    {
        mergeUpdate(*existing, update);
    }
}

std::pair<Conversation*, unsigned>
ConversationAggregator::findMatchingConversation(const Conversation& conversation) const
{
    return findRowOf(*list_, conversation);
}

/** A contact that is new in the list may still join rows that other numbers of it have. */
void ConversationAggregator::createNewConversation(Conversation& update)
{
    CONVERSATION_LOG(6, "createNewConversation clone");
    Conversation* created = update.clone();
    takeContactOfNumber(*list_, *created);
    list_->push_back(created);
    list_->sort();
    observers_->created(created);
    if (update.getContactSource() == Conversation::DIRECTORY_CONTACT && list_->contains(created))
    {
        Gathered gathered;
        calculateConversationsThatNeedChanging(*created, update, gathered);
        if (!gathered.joined.empty() || !gathered.named.empty())
        {
            finishUpdate(created, update, gathered);
        }
    }
}

void ConversationAggregator::mergeUpdate(Conversation& existing, Conversation& update)
{
    Conversation* target = &existing;
    std::unique_ptr<Conversation> replacement;
    if (phantom_->needsPhantomConversationUpdate(existing, update) || phantom_->bringsPhantomsCall(existing, update))
    {
        replacement = updateUsingPhantomConversation(target, update);
    }
    for (Conversation* left = replacement ? replacement.get() : &update; hasCallOfItsOwn(*target, *left);
         left = replacement.get())
    {
        // A group call, or one more call than a row and the phantom can show: the row holds two, lest one be lost.
        replacement = PhantomCalls::giveCallTo(*target, *left, left->getCallId());
    }
    Conversation& source = replacement ? *replacement : update;
    Gathered gathered;
    if (update.getContactSource() != Conversation::NO_CONTACT)
    {
        calculateConversationsThatNeedChanging(*target, update, gathered);
    }
    mergeIntoExistingConversation(*target, source);
    finishUpdate(target, update, gathered);
}

/** What is no update but another row has calls of its own, and gives its id up. */
void ConversationAggregator::mergeIntoExistingConversation(Conversation& existing, Conversation& update, bool isUpdate)
{
    const std::vector<ConversationItem*> orphans = existing.foldIn(update, {isUpdate, true, true, isUpdate});
    CONVERSATION_LOG(3, "mergeIntoExistingConversation %d orphan item(s) found", static_cast<int>(orphans.size()));
    for (ConversationItem* orphan : orphans)
    {
        // A call goes on, whatever numbers another call of the party brings; a contact knows its own numbers.
        if (update.getContactSource() == Conversation::NO_CONTACT && orphan->isActiveOrProgressingOrClearing())
        {
            existing.append(orphan);
            continue;
        }
        hasDroppedItems_ = true;
        delete orphan;
    }
}

/**
 * All rows of the contact's numbers, lest one hide behind another that is live. An additional call that stands
 * beside a row of its number stays beside it. Also the contact's own row when its
 * item matched another one, one that has a number in common.
 */
void ConversationAggregator::calculateConversationsThatNeedChanging(const Conversation& existing,
                                                                    const Conversation& contact, Gathered& rows) const
{
    const auto add = [&](Rows& to, Conversation* row)
    {
        if (row && row != &existing && !isAmong(rows.joined, row) && !isAmong(rows.named, row))
        {
            to.push_back(row);
        }
    };
    if (contact.getContactSource() == Conversation::DIRECTORY_CONTACT)
    {
        CONVERSATION_LOG(5, "conversationUpdated() merging conversation from directory src");
        for (const std::string& number : contact.getConversationNumbers())
        {
            const Rows ofNumber = findRowsOfNumber(*list_, number);
            const bool hasRowOfItsOwn =
                std::any_of(ofNumber.begin(), ofNumber.end(),
                            [](const Conversation* row)
                            { return !row->extraActiveConversation() && row->getConversationItemsSize() != 0; });
            for (Conversation* row : ofNumber)
            {
                if (row->isGroupCall() || row->isConferenceConversation())
                {
                    continue; // which are nobody's own
                }
                add(hasRowOfItsOwn && row->extraActiveConversation() ? rows.named : rows.joined, row);
            }
        }
    }
    add(rows.joined, findRowById(*list_, contact.getConversationId()));
}

/**
 * Folds the gathered rows into the one that was updated, puts the list in order and tells who changed. Two rows
 * that are live with different calls stay two, or one call would be lost.
 */
void ConversationAggregator::finishUpdate(Conversation* updated, Conversation& update, const Gathered& gathered)
{
    Rows named = gathered.named;
    for (Conversation* row : gathered.joined)
    {
        if (!list_->contains(row) || !list_->contains(updated) || row->isOtherContactThan(update))
        {
            continue;
        }
        if (isLive(*row) && isLive(*updated) && row->getCallId() != updated->getCallId())
        {
            named.push_back(row);
            continue;
        }
        // Without the contact's numbers the row would not cover what the contact has on other ones. It is reported
        // deleted under the id by which displays know it.
        mergeIntoExistingConversation(*row, update, false);
        mergeIntoExistingConversation(*updated, *row, false);
        removeRow(row);
    }
    named.erase(std::remove_if(named.begin(), named.end(), [this](auto* row) { return !list_->contains(row); }),
                named.end());
    for (Conversation* row : named)
    {
        row->updateName(update.getFirstName(), update.getLastName());
    }
    list_->sort();
    Conversation* match = findMatchingConversation(update).first;
    if (match != updated)
    {
        observers_->updatedAndMoved(updated);
    }
    observers_->updatedAndMoved(match);
    for (Conversation* row : named)
    {
        observers_->updatedAndMoved(row);
    }
}

void ConversationAggregator::updateSourcesWithContact(Conversation& contact)
{
    CONVERSATION_LOG(4, "conversationUpdated DIRECTORY svc source conversation. Updating %d source(s)",
                     static_cast<int>(sources_->size()));
    sources_->forEach([&contact](ConversationSourceIfc& source) { source.conversationUpdated(&contact); });
    if (list_->find(IsLive()))
    {
        round_.rebuild(true); // calls keep rows apart that the sources have united by now
    }
    else if (sourcesReady_ && !hasDroppedItems_)
    {
        notifyObserversOfConversationsChanged();
    }
}

/** What history the update has is the root's, as it is when the phantom is updated. */
void ConversationAggregator::createPhantomConversation(Conversation& existing, const Conversation& update)
{
    CONVERSATION_LOG(6, "createPhantomConversation clone");
    Conversation* phantom = update.clone();
    list_->push_back(phantom);
    const std::unique_ptr<Conversation> rest = phantom_->makePhantom(phantom);
    phantom->cloneContactInfo(existing);
    list_->sort();
    observers_->created(phantom);
    const bool rootHeldTheCall = HoldsCallCondition(update.getCallId())(&existing);
    if ((rootHeldTheCall || rest->getConversationItemsSize() != 0) && list_->contains(&existing))
    {
        existing.removeItem(update.getCallId());
        PhantomCalls::unite(existing, *rest);
        list_->sort();
        observers_->updatedAndMoved(&existing);
    }
}

/**
 * The phantom shows its call; history that comes with it is the root's. Answers what remains for the target, null
 * when that is the whole update.
 */
std::unique_ptr<Conversation> ConversationAggregator::updateUsingPhantomConversation(Conversation*& target,
                                                                                     const Conversation& update)
{
    Conversation* phantom = list_->getPhantomConversation();
    if (!phantom_->needsToTransferJournalItemsToRootConversation(update))
    {
        target = phantom;
        return nullptr;
    }
    CONVERSATION_LOG(6, "updateUsingPhantomConversation clone");
    std::unique_ptr<Conversation> replacement = PhantomCalls::giveCallTo(*phantom, update, phantom->getCallId());
    list_->sort();
    observers_->updatedAndMoved(phantom);
    return replacement;
}

void ConversationAggregator::removeActiveItemForCall(const std::string& callId, ConversationSourceIfc* source)
{
    const NotificationRound::Scope round(round_);
    const std::string id = callId;
    CONVERSATION_LOG(5, "removeActiveItemForCall() callId='%s'", id.c_str());
    temporaries_->removeCall(id);
    const auto [row, index] = findRowOfCall(*list_, id);
    if (!row)
    {
        return;
    }
    const bool phantomGoes = phantom_->needsDestroyingPhantomConversation(id);
    row->removeItem(id);
    forgetCallElsewhere(id);
    if (phantom_->rootConversationsCallEndedFirst(*row))
    {
        foldPhantomInto(*row);
        observers_->updatedAndMoved(row, index); // from before the sorting that follows
    }
    if (!list_->contains(row))
    {
        return;
    }
    CONVERSATION_LOG(5,
                     "\tremoveActiveItemForCall() c->getConversationItemsSize()=%d getSource=%p source=%p  "
                     "c->toString()='%s'",
                     static_cast<int>(row->getConversationItemsSize()), static_cast<void*>(row->getSource()),
                     static_cast<void*>(source), row->toString().c_str());
    if (row->getConversationItemsSize() == 0 && (phantomGoes || goesWithLastItem(*row, source)))
    {
        CONVERSATION_LOG(5, "removeActiveItemForCall() conversation %s will be deleted",
                         row->getShortConversationId().c_str());
        notifyObserversOfConversationDeleted(row);
        if (row->getConversationItemsSize() == 0)
        {
            retireRow(row);
            return;
        }
    }
    settleRowAfterCall(row->isPhantomConversation() && !isLive(*row) ? foldPhantomBack() : row);
}

/** While a phantom is being folded into its root, both hold its call. */
void ConversationAggregator::forgetCallElsewhere(const std::string& callId)
{
    while (Conversation* other = list_->find(HoldsCallCondition(callId)))
    {
        other->removeItem(callId);
    }
}

/** Of the calls of one contact the root's has ended: the root goes on with the other one. */
void ConversationAggregator::foldPhantomInto(Conversation& root)
{
    Conversation* phantom = list_->getPhantomConversation();
    PhantomCalls::unite(root, *phantom);
    notifyObserversOfConversationDeleted(phantom);
    if (list_->contains(phantom))
    {
        list_->pop(phantom);
        temporaries_->retire(std::unique_ptr<Conversation>(phantom));
    }
}

/** The phantom's call has ended and left history: that is the root's. Answers the row that shows it now. */
Conversation* ConversationAggregator::foldPhantomBack()
{
    Conversation* phantom = list_->getPhantomConversation();
    Conversation* root = phantom_->root();
    if (!root)
    {
        phantom_->makeRowOfPhantom();
        return phantom;
    }
    foldPhantomInto(*root);
    return root;
}

void ConversationAggregator::settleRowAfterCall(Conversation* row)
{
    list_->sort();
    Conversation* match = list_->contains(row) ? findMatchingConversation(*row).first : nullptr;
    if (!match)
    {
        CONVERSATION_LOG(2, "removeActiveItemForCall() findMatchingConversation returned NULL !!!");
        return;
    }
    CONVERSATION_LOG(5, "removeActiveItemForCall() notifyObserversOfConversationUpdatedAndMoved()");
    if (match != row)
    {
        observers_->updatedAndMoved(row);
    }
    observers_->updatedAndMoved(match);
}

void ConversationAggregator::voiceMailChanged(const std::string& oldNumber, const std::string& newNumber)
{
    const std::string before = oldNumber;
    const std::string after = newNumber;
    CONVERSATION_LOG(5, "voiceMailChanged() - old number = [%s], new number = [%s]", before.c_str(), after.c_str());
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
        CONVERSATION_LOG(5, "removeConversationWithNumber() - Conversation found for number = [%s]", number.c_str());
        removeRow(row);
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
        removeRow(left);
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

/** Told while it is still listed; whoever is telling something meanwhile may have it for that long. */
void ConversationAggregator::removeRow(Conversation* row)
{
    const NotificationRound::Scope round(round_);
    notifyObserversOfConversationDeleted(row);
    retireRow(row);
}

void ConversationAggregator::retireRow(Conversation* row)
{
    if (list_->contains(row))
    {
        list_->pop(row);
        round_.retire(row);
    }
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
    CONVERSATION_LOG(5, "getConversationByConversationID %s", conversationId.c_str());
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
        CONVERSATION_LOG(5, "getConversationThatHasAnyNumberMatching() - No conversation found");
    }
    else
    {
        CONVERSATION_LOG(5, "getConversationThatHasAnyNumberMatching() - Found matching conversation short id = %s",
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
    CONVERSATION_LOG(5, "findConversation %s", id.c_str());
    if (Conversation* row = findRowById(*list_, id))
    {
        Conversation* contact = row->getContactSource() == Conversation::NO_CONTACT ? sources_->contact(id) : nullptr;
        return contact ? cloneTogether({row, contact}) : row;
    }
    Conversation* temporary = temporaries_->find(id);
    return temporary ? temporary : cloneTogether(sources_->conversations(id));
}

/** A copy of the first with the others folded in, among the temporary conversations; null when there are none. */
Conversation* ConversationAggregator::cloneTogether(const Rows& conversations)
{
    std::unique_ptr<Conversation> clone;
    for (Conversation* conversation : conversations)
    {
        if (!clone)
        {
            CONVERSATION_LOG(6, "findConversation clone");
            clone.reset(conversation->clone());
            continue;
        }
        for (ConversationItem* orphan : clone->foldIn(*conversation, {}))
        {
            CONVERSATION_LOG(3, "findConversation orphaned item found %s", orphan->getItemId().c_str());
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
        mergeIntoExistingConversation(*row, *temporary);
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
        if (list_->contains(row) && row->isTemporary() && !isLive(*row))
        {
            removeRow(row);
        }
    }
    temporaries_->clear(round_);
    sources_->forEach([](ConversationSourceIfc& source) { source.clearSearchResults(); });
}
} // namespace ConversationAPI
