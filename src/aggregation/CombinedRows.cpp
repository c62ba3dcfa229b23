#include "aggregation/CombinedRows.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationCandidates.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationUnaryCondition.h"
#include "ConversationAPI/HoldsCallCondition.h"
#include "ConversationAPI/NotificationRound.h"
#include "ConversationAPI/WellKnownNames.h"
#include "Log.h"
#include "Observers.h"
#include "aggregation/ConversationAggregatorLog.h"
#include "aggregation/DisplayObservers.h"
#include "aggregation/RowMatching.h"
#include "aggregation/TemporaryConversations.h"

#include <algorithm>
#include <utility>

namespace ConversationAPI
{
using namespace ConversationListConditions;

namespace
{
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

/** A contact's own row stays; what was shown only because of the call goes with it. */
bool goesWithLastItem(const Conversation& row, const ConversationSourceIfc* source)
{
    return row.getSource() == source || row.extraActiveConversation() ||
           (row.getContactSource() == Conversation::DIRECTORY_CONTACT && row.isTemporary());
}

/** Whether a group's call rang in the row before the other one's call, which may be what has picked it up. */
bool isOfEarlierGroupCall(const Conversation& row, const Conversation& other)
{
    return row.getCallId() == GROUP_PICKUP_CALL_ID && !row.isLaterThan(other);
}

/** Besides those that ring for a group, which others may have picked up. */
bool holdsSeveralCalls(const Conversation& row)
{
    const auto& items = row.items();
    return std::count_if(items.begin(), items.end(),
                         [](const auto& item) {
                             return item->isActiveOrProgressingOrClearing() &&
                                    item->callIdText().view() != GROUP_PICKUP_CALL_ID;
                         }) > 1;
}

/** In a row that is not the contact's own. */
void showContact(Conversation& row, const Conversation& contact)
{
    if (!row.isGroupCall())
    {
        row.updateName(contact.getFirstName(), contact.getLastName());
    }
    else if (!row.isOtherContactThan(contact))
    {
        row.cloneContactInfo(contact);
    }
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
} // namespace

CombinedRows::CombinedRows(ConversationList& list, DisplayObservers& observers, TemporaryConversations& temporaries,
                           NotificationRound& round)
    : list_(list), observers_(observers), temporaries_(temporaries), round_(round), phantom_(list)
{
}

void CombinedRows::notifyObserversOfConversationDeleted(Conversation* row)
{
    temporaries_.retire(row->getConversationId());
    observers_.deleted(row);
}

/**
 * A source may have the live calls of one party, and a call that is being cleared and its party's history, in
 * different conversations of one id. One live call becomes the phantom, the one that was it before if any, and not the
 * one that had the id, so that no row changes its id; all else joins the row that keeps the id.
 */
void CombinedRows::separateRowsOfOneId(const PhantomCalls::LiveRows& before)
{
    const std::vector<PhantomCalls::SameId> rows = phantom_.rowsOfOneId(before);
    for (const PhantomCalls::SameId& same : rows)
    {
        const bool mayBePickup =
            !(before.showed(same.root->getCallId()) && before.showed(same.other->getCallId())) &&
            (isOfEarlierGroupCall(*same.root, *same.other) || isOfEarlierGroupCall(*same.other, *same.root));
        if (isLive(*same.other) && !list_.hasPhantomConversation() && !mayBePickup)
        {
            PhantomCalls::takeRest(*same.root, *phantom_.makePhantom(same.other));
            continue;
        }
        const std::unique_ptr<Conversation> rest =
            isLive(*same.other) ? PhantomCalls::giveCallTo(*same.root, *same.other, same.other->getCallId()) : nullptr;
        PhantomCalls::takeRest(*same.root, rest ? *rest : *same.other);
        list_.remove(same.other);
    }
    if (!rows.empty())
    {
        list_.sort();
    }
}

void CombinedRows::update(Conversation& update)
{
    const auto match = findMatchingConversation(update);
    if (!match.first)
    {
        CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5,
                         "conversationUpdated() creating new conversation for conversation.getCallId()='%s'",
                         update.getCallId().c_str());
        createNewConversation(update);
        return;
    }
    CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5,
                     "conversationUpdated() merging conversation for conversation.getCallId()='%s'",
                     update.getCallId().c_str());
    Conversation* existing = list_.atIndex(match.second);
    if (!existing)
    {
        CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 2,
                         "index should point to existing conversation, but it's NULL (doing nothing)");
    }
    else if (phantom_.needsCreatingNewPhantomConversation(*existing, update))
    {
        createPhantomConversation(*existing, update);
    }
    else
    {
        mergeUpdate(*existing, update);
    }
}

std::pair<Conversation*, unsigned> CombinedRows::findMatchingConversation(const Conversation& conversation) const
{
    return findRowOf(list_, conversation);
}

/** A contact that is new in the list may still join rows that other numbers of it have. */
void CombinedRows::createNewConversation(Conversation& update)
{
    CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 6, "createNewConversation clone");
    Conversation* created = update.clone();
    takeContactOfNumber(list_, *created);
    list_.push_back(created);
    list_.sort();
    observers_.created(created);
    if (update.getContactSource() == Conversation::DIRECTORY_CONTACT && list_.contains(created))
    {
        Gathered gathered;
        calculateConversationsThatNeedChanging(*created, update, gathered);
        if (!gathered.joined.empty() || !gathered.named.empty())
        {
            finishUpdate(created, update, gathered);
        }
    }
}

void CombinedRows::mergeUpdate(Conversation& existing, Conversation& update)
{
    Conversation* target = &existing;
    std::unique_ptr<Conversation> replacement;
    if (phantom_.needsPhantomConversationUpdate(existing, update) || phantom_.bringsPhantomsCall(existing, update))
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
    if (update.getContactSource() == Conversation::DIRECTORY_CONTACT)
    {
        CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5, "conversationUpdated() merging conversation from directory src");
    }
    if (update.getContactSource() != Conversation::NO_CONTACT)
    {
        calculateConversationsThatNeedChanging(*target, update, gathered);
    }
    mergeIntoExistingConversation(*target, source);
    finishUpdate(target, update, gathered);
}

/** What is no update but another row has calls of its own, and gives its id up. */
void CombinedRows::mergeIntoExistingConversation(Conversation& existing, Conversation& update, bool isUpdate)
{
    const std::string idBefore = existing.getConversationId();
    const std::vector<ConversationItem*> orphans = existing.foldIn(update, {isUpdate, true, true, isUpdate, isUpdate});
    const bool isGivenAnotherId = isUpdate && existing.getConversationId() != idBefore;
    if (isGivenAnotherId)
    {
        temporaries_.retire(idBefore); // a copy of the row as it was
    }
    if (isGivenAnotherId && update.getContactSource() == Conversation::NO_CONTACT &&
        existing.getConversationItemsSize() > update.getConversationItemsSize())
    {
        round_.rebuild(true); // its other items stand in a conversation of the former id, which would not find the row
    }
    CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 3, "mergeIntoExistingConversation %d orphan item(s) found",
                     static_cast<int>(orphans.size()));
    for (ConversationItem* orphan : orphans)
    {
        // A call goes on, whatever numbers another call of the party brings; a contact knows its own numbers.
        if (update.getContactSource() == Conversation::NO_CONTACT && orphan->isActiveOrProgressingOrClearing())
        {
            existing.append(orphan);
            continue;
        }
        round_.rebuild(true); // only the sources know where it belongs now
        delete orphan;
    }
}

/**
 * All rows of the contact's numbers, lest one hide behind another that is live; but an additional call that stands
 * beside a row of its number stays there. Also the contact's own row, if what its item matched is another one that
 * has a number in common.
 */
void CombinedRows::calculateConversationsThatNeedChanging(const Conversation& existing, const Conversation& contact,
                                                          Gathered& rows) const
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
        for (const std::string& number : contact.getConversationNumbers())
        {
            const Rows ofNumber = findRowsOfNumber(list_, number);
            const bool hasRowOfItsOwn =
                std::any_of(ofNumber.begin(), ofNumber.end(),
                            [](const Conversation* row)
                            { return !row->extraActiveConversation() && row->getConversationItemsSize() != 0; });
            for (Conversation* row : ofNumber)
            {
                if (row->isConferenceConversation())
                {
                    continue;
                }
                // A group's call is nobody's own: it only shows whose number it is.
                const bool staysApart = row->isGroupCall() || (hasRowOfItsOwn && row->extraActiveConversation());
                add(staysApart ? rows.named : rows.joined, row);
            }
        }
    }
    add(rows.joined, findRowById(list_, contact.getConversationId()));
}

/**
 * Folds the gathered rows into the one that was updated, puts the list in order and tells who changed. Two rows
 * that are live with different calls stay two, or one call would be lost.
 */
void CombinedRows::finishUpdate(Conversation* updated, Conversation& update, const Gathered& gathered)
{
    Rows named = gathered.named;
    for (Conversation* row : gathered.joined)
    {
        if (!list_.contains(row) || !list_.contains(updated) || row->isOtherContactThan(update))
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
    named.erase(std::remove_if(named.begin(), named.end(), [this](auto* row) { return !list_.contains(row); }),
                named.end());
    for (Conversation* row : named)
    {
        showContact(*row, update);
    }
    list_.sort();
    Conversation* match = findMatchingConversation(update).first;
    if (match != updated)
    {
        observers_.updatedAndMoved(updated);
    }
    observers_.updatedAndMoved(match);
    for (Conversation* row : named)
    {
        observers_.updatedAndMoved(row);
    }
}

/** What history the update has is the root's, as it is when the phantom is updated. */
void CombinedRows::createPhantomConversation(Conversation& existing, const Conversation& update)
{
    CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 6, "createPhantomConversation clone");
    Conversation* phantom = update.clone();
    list_.push_back(phantom);
    const std::unique_ptr<Conversation> rest = phantom_.makePhantom(phantom);
    phantom->cloneContactInfo(existing);
    list_.sort();
    observers_.created(phantom);
    const bool rootHeldTheCall = HoldsCallCondition(update.getCallId())(&existing);
    if ((rootHeldTheCall || rest->getConversationItemsSize() != 0) && list_.contains(&existing))
    {
        existing.removeItem(update.getCallId());
        PhantomCalls::unite(existing, *rest);
        list_.sort();
        observers_.updatedAndMoved(&existing);
    }
}

/**
 * The phantom shows its call; history that comes with it is the root's. Answers what remains for the target, null
 * when that is the whole update.
 */
std::unique_ptr<Conversation> CombinedRows::updateUsingPhantomConversation(Conversation*& target,
                                                                           const Conversation& update)
{
    Conversation* phantom = list_.getPhantomConversation();
    if (!phantom_.needsToTransferJournalItemsToRootConversation(update))
    {
        target = phantom;
        return nullptr;
    }
    CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 6, "updateUsingPhantomConversation clone");
    std::unique_ptr<Conversation> replacement = PhantomCalls::giveCallTo(*phantom, update, phantom->getCallId());
    list_.sort();
    observers_.updatedAndMoved(phantom);
    return replacement;
}

void CombinedRows::removeActiveItemForCall(const std::string& callId, const ConversationSourceIfc* source)
{
    const NotificationRound::Scope round(round_);
    const std::string id = callId;
    CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5, "removeActiveItemForCall() callId='%s'", id.c_str());
    temporaries_.removeCall(id);
    const auto [row, index] = findRowOfCall(list_, id);
    if (!row)
    {
        return;
    }
    const bool phantomGoes = phantom_.needsDestroyingPhantomConversation(id);
    row->removeItem(id);
    forgetCallElsewhere(id);
    if (phantom_.rootConversationsCallEndedFirst(*row))
    {
        foldPhantomInto(*row);
        observers_.updatedAndMoved(row, index); // from before the sorting that follows
    }
    if (!list_.contains(row))
    {
        return;
    }
    CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5,
                     "\tremoveActiveItemForCall() c->getConversationItemsSize()=%d getSource=%p source=%p  "
                     "c->toString()='%s'",
                     static_cast<int>(row->getConversationItemsSize()), static_cast<void*>(row->getSource()),
                     static_cast<const void*>(source), row->toString().c_str());
    if (row->getConversationItemsSize() == 0 &&
        (phantomGoes || goesWithLastItem(*row, source) || hasContactRowBeside(*row)))
    {
        CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5, "removeActiveItemForCall() conversation %s will be deleted",
                         row->getShortConversationId().c_str());
        notifyObserversOfConversationDeleted(row);
        if (row->getConversationItemsSize() == 0)
        {
            const Conversation* root = phantomGoes ? findRowById(list_, row->storedIdText()) : nullptr;
            if (root && holdsSeveralCalls(*root))
            {
                round_.rebuild(true); // one of them takes the phantom's place
            }
            round_.retireFrom(list_, row);
            return;
        }
    }
    settleRowAfterCall(row->isPhantomConversation() && !isLive(*row) ? foldPhantomBack() : row);
}

/** A contact that two live rows have turned out to be shows in both, but only one of them is its own. */
bool CombinedRows::hasContactRowBeside(const Conversation& row) const
{
    const bool isOfContact = row.getContactSource() != Conversation::NO_CONTACT;
    const Conversation* own = isOfContact ? findRowById(list_, row.contactId()) : nullptr;
    return own && own != &row;
}

/** While a phantom is being folded into its root, both hold its call. */
void CombinedRows::forgetCallElsewhere(const std::string& callId)
{
    while (Conversation* other = list_.find(HoldsCallCondition(callId)))
    {
        other->removeItem(callId);
    }
}

/** Of the calls of one contact the root's has ended: the root goes on with the other one. */
void CombinedRows::foldPhantomInto(Conversation& root)
{
    Conversation* phantom = list_.getPhantomConversation();
    PhantomCalls::unite(root, *phantom);
    notifyObserversOfConversationDeleted(phantom);
    if (list_.contains(phantom))
    {
        list_.pop(phantom);
        temporaries_.retire(std::unique_ptr<Conversation>(phantom));
    }
}

/** The phantom's call has ended and left history: that is the root's. Answers the row that shows it now. */
Conversation* CombinedRows::foldPhantomBack()
{
    Conversation* phantom = list_.getPhantomConversation();
    Conversation* root = phantom_.root();
    if (!root)
    {
        phantom_.makeRowOfPhantom();
        return phantom;
    }
    foldPhantomInto(*root);
    return root;
}

void CombinedRows::settleRowAfterCall(Conversation* row)
{
    list_.sort();
    Conversation* match = list_.contains(row) ? findMatchingConversation(*row).first : nullptr;
    if (!match)
    {
        CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 2,
                         "removeActiveItemForCall() findMatchingConversation returned NULL !!!");
        return;
    }
    CONVERSATION_LOG(AGGREGATOR_LOG_FILE, 5,
                     "removeActiveItemForCall() notifyObserversOfConversationUpdatedAndMoved()");
    if (match != row)
    {
        observers_.updatedAndMoved(row);
    }
    observers_.updatedAndMoved(match);
}

/** Told while it is still listed; whoever is telling something meanwhile may have it for that long. */
void CombinedRows::removeRow(Conversation* row)
{
    const NotificationRound::Scope round(round_);
    notifyObserversOfConversationDeleted(row);
    round_.retireFrom(list_, row);
}

bool CombinedRows::isAnyLive() const
{
    return list_.find(IsLive()) != nullptr;
}
} // namespace ConversationAPI
