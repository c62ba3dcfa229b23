#include "aggregation/PhantomCalls.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/HoldsCallCondition.h"
#include "ConversationAPI/WellKnownNames.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_map>

namespace ConversationAPI
{
using namespace ConversationListConditions;

namespace
{
/** The calls of the two rows are different ones. */
constexpr Conversation::Folding UNITING{true, true, true, false};
} // namespace

bool PhantomCalls::needsPhantomConversation(const Conversation& existing, const Conversation& update)
{
    return existing.isActiveOrProgressingOrClearing() && update.isActiveOrProgressingOrClearing() &&
           existing.getCallId() != GROUP_PICKUP_CALL_ID && existing.getCallId() != update.getCallId();
}

bool PhantomCalls::needsCreatingNewPhantomConversation(const Conversation& existing, const Conversation& update) const
{
    return needsPhantomConversation(existing, update) && !list_.hasPhantomConversation();
}

bool PhantomCalls::needsPhantomConversationUpdate(const Conversation& existing, const Conversation& update) const
{
    return needsPhantomConversation(existing, update) && list_.hasPhantomConversation() &&
           list_.getPhantomConversation()->getCallId() == update.getCallId();
}

bool PhantomCalls::bringsPhantomsCall(const Conversation& existing, Conversation& update) const
{
    const Conversation* phantom = list_.getPhantomConversation();
    return phantom && phantom != &existing && HoldsCallCondition(phantom->getCallId())(&update);
}

bool PhantomCalls::needsToTransferJournalItemsToRootConversation(const Conversation& update) const
{
    const std::string callId = list_.getPhantomConversation()->getCallId();
    const auto& items = update.items();
    return list_.getPhantomConversation()->getConversationItemsSize() == 1 &&
           std::any_of(items.begin(), items.end(), [&callId](const auto& item) { return item->getCallId() != callId; });
}

bool PhantomCalls::needsDestroyingPhantomConversation(const std::string& callId) const
{
    const Conversation* phantom = list_.getPhantomConversation();
    return phantom && phantom->shownItem() && phantom->getCallId() == callId;
}

bool PhantomCalls::rootConversationsCallEndedFirst(const Conversation& row) const
{
    const Conversation* phantom = list_.getPhantomConversation();
    return phantom && phantom != &row && !row.isActiveOrProgressingOrClearing() && !phantom->storedIdText().empty() &&
           row.storedIdText() == phantom->storedIdText();
}

Conversation* PhantomCalls::root() const
{
    const Conversation* phantom = list_.getPhantomConversation();
    const auto found = std::find_if(list_.begin(), list_.end(),
                                    [phantom](const Conversation* row)
                                    { return row != phantom && row->storedIdText() == phantom->storedIdText(); });
    return found == list_.end() ? nullptr : *found;
}

std::unique_ptr<Conversation> PhantomCalls::giveCallTo(Conversation& receiver, const Conversation& update,
                                                       const std::string& callId)
{
    for (const auto& item : update.items())
    {
        if (item->getCallId() == callId)
        {
            receiver.updateInitialItem(item->copy().release());
        }
    }
    std::unique_ptr<Conversation> rest(update.clone());
    rest->removeItem(callId);
    return rest;
}

void PhantomCalls::unite(Conversation& root, Conversation& other)
{
    for (ConversationItem* item : root.foldIn(other, UNITING))
    {
        root.append(item);
    }
}

void PhantomCalls::takeRest(Conversation& root, Conversation& rest)
{
    if (!rest.items().empty() || rest.getContactSource() != Conversation::NO_CONTACT)
    {
        unite(root, rest);
    }
}

std::unique_ptr<Conversation> PhantomCalls::makePhantom(Conversation* row)
{
    std::unique_ptr<Conversation> rest(row->clone());
    rest->removeItem(row->getCallId());
    row->setConversationItems({row->initialItem()});
    list_.pop(row);
    row->setPhantom(true);
    list_.push_back_phantom(row);
    return rest;
}

void PhantomCalls::makeRowOfPhantom()
{
    Conversation* row = list_.getPhantomConversation();
    list_.pop(row);
    row->setPhantom(false);
    list_.push_back(row);
}

PhantomCalls::LiveRows PhantomCalls::liveRows() const
{
    LiveRows live;
    const Conversation* phantom = list_.getPhantomConversation();
    live.phantomCallId = phantom ? phantom->getCallId() : "";
    for (const Conversation* row : list_)
    {
        if (!row->holdsOnlyPlainItems() && row != phantom && row->isActiveOrProgressingOrClearing())
        {
            live.ids.emplace(row->getCallId(), row->storedIdText());
        }
    }
    return live;
}

std::vector<PhantomCalls::SameId> PhantomCalls::rowsOfOneId(const LiveRows& before) const
{
    std::vector<Conversation*> rows(list_.begin(), list_.end());
    const auto others = std::stable_partition(
        rows.begin(), rows.end(), [](const Conversation* row) { return row->isActiveOrProgressingOrClearing(); });
    const auto wasPhantom = [&before](const Conversation* row)
    { return !before.phantomCallId.empty() && row->getCallId() == before.phantomCallId; };
    const auto hadItsId = [&before](const Conversation* row)
    {
        const auto known = before.ids.find(row->getCallId());
        return known != before.ids.end() && known->second == row->storedIdText();
    };
    const auto phantom = std::stable_partition(rows.begin(), others, std::not_fn(wasPhantom)); // which is no root
    std::stable_partition(rows.begin(), phantom, hadItsId);
    std::unordered_map<std::string_view, Conversation*> roots;
    roots.reserve(rows.size());
    std::vector<SameId> found;
    for (Conversation* row : rows)
    {
        const std::string& id = row->getConversationId();
        const auto [root, isFirst] = roots.emplace(id, row);
        if (!isFirst && !id.empty())
        {
            found.push_back({root->second, row});
        }
    }
    std::stable_partition(found.begin(), found.end(), [&](const SameId& pair) { return wasPhantom(pair.other); });
    return found;
}
} // namespace ConversationAPI
