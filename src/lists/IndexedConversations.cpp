#include "lists/IndexedConversations.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationCandidates.h"
#include "ConversationAPI/ConversationUnaryCondition.h"
#include "ConversationAPI/WellKnownNames.h"

#include <boost/container/small_vector.hpp>

#include <algorithm>
#include <utility>

namespace ConversationAPI
{
namespace
{
template <typename Group, typename Member>
void setMembership(Group& group, Member* member, bool belongs)
{
    if (belongs)
    {
        group.insert(member);
    }
    else
    {
        group.erase(member);
    }
}

bool isLiveOrHeld(const ConversationItem& item)
{
    return item.isActiveOrProgressingOrClearing() || item.isRepresentedHeldCall();
}
} // namespace

class IndexedConversations::Candidates : public ConversationCandidates
{
  public:
    explicit Candidates(IndexedConversations& all) : all_(all)
    {
        members_.assign(all.unobserved_.begin(), all.unobserved_.end());
    }

    void withNumber(const std::string& number) override
    {
        all_.refreshStaleNumbers();
        all_.byNumber_.collect(number, members_);
    }
    void withConversationId(const SharedText& id) override { all_.byId_.collect(id, members_); }
    void withExchangeContactId(const SharedText& id) override { all_.byExchangeContactId_.collect(id, members_); }
    void withCallId(const std::string& callId) override { all_.byCallId_.collect(callId, members_); }
    void thatAreAnonymous() override { add(all_.anonymous_); }
    void thatAreLive() override { add(all_.live_); }

    /** In list order; a conversation may stand in it more than once. */
    const auto& inListOrder()
    {
        if (members_.size() > 1)
        {
            std::sort(members_.begin(), members_.end(),
                      [](const Member* a, const Member* b) { return a->order < b->order; });
        }
        return members_;
    }

  private:
    void add(const Group& group) { members_.insert(members_.end(), group.begin(), group.end()); }

    IndexedConversations& all_;
    boost::container::small_vector<const Member*, 8> members_;
};

std::size_t IndexedConversations::position(Conversation* conversation) const
{
    const Member* member = members_.find(conversation);
    return member ? sequence_.placeOf(*member) : inOrder().size();
}

Conversation* IndexedConversations::findFirst(const ConversationUnaryCondition& condition)
{
    refreshStaleMembers();
    Candidates candidates(*this);
    if (condition.gatherCandidates(candidates))
    {
        const auto& members = candidates.inListOrder();
        const auto found = std::find_if(members.begin(), members.end(),
                                        [&condition](const Member* member) { return condition(member->conversation); });
        return found == members.end() ? nullptr : (*found)->conversation;
    }
    const auto found = std::find_if(inOrder().begin(), inOrder().end(),
                                    [&condition](Conversation* conversation) { return condition(conversation); });
    return found == inOrder().end() ? nullptr : *found;
}

void IndexedConversations::reserve(std::size_t count)
{
    sequence_.reserve(count);
    expected_ = count;
}

void IndexedConversations::pushBack(Conversation* conversation, bool isObserved)
{
    sequence_.pushBack(newMember(conversation, isObserved));
}

void IndexedConversations::pushFront(Conversation* conversation, bool isObserved)
{
    sequence_.pushFront(newMember(conversation, isObserved));
}

IndexedConversations::Member& IndexedConversations::newMember(Conversation* conversation, bool isObserved)
{
    Member& member = members_.add(conversation);
    member.isObserved = isObserved;
    if (isObserved)
    {
        markStale(member);
    }
    else
    {
        unobserved_.insert(&member);
    }
    return member;
}

void IndexedConversations::removeAt(std::size_t position)
{
    Member& member = sequence_.at(position);
    sequence_.removeAt(position);
    forget(member);
    members_.remove(member);
}

ListMembers::Detached IndexedConversations::detachAll()
{
    sequence_.clear();
    stale_.clear();
    staleNumbers_.clear();
    areAllStale_ = true;
    areAllNumbersStale_ = true;
    unobserved_.clear();
    anonymous_.clear();
    live_.clear();
    byNumber_.clear();
    byId_.clear();
    byExchangeContactId_.clear();
    byCallId_.clear();
    return members_.detachAll();
}

void IndexedConversations::appendIdHashes(std::vector<std::uint32_t>& hashes)
{
    refreshStaleMembers();
    byId_.appendHashes(hashes);
    for (const Member* member : unobserved_)
    {
        hashes.push_back(hashOfText(member->conversation->getConversationId()));
    }
}

void IndexedConversations::sort()
{
    if (sequence_.isSorted() || !stale_.empty()) // without a question in between, much would gather there
    {
        refreshStaleMembers();
    }
    for (Member* member : unobserved_)
    {
        sequence_.changed(*member);
    }
    sequence_.sort();
}

void IndexedConversations::reorder(const std::vector<Conversation*>& sequence)
{
    ListSequence::Members members;
    members.reserve(sequence.size());
    for (Conversation* conversation : sequence)
    {
        members.push_back(members_.find(conversation));
    }
    sequence_.reorder(std::move(members));
}

void IndexedConversations::setObserved(Conversation* conversation, bool isObserved)
{
    Member* member = isObserved && !hasUnobserved() ? nullptr : members_.find(conversation);
    if (!member || member->isObserved == isObserved)
    {
        return;
    }
    member->isObserved = isObserved;
    setMembership(unobserved_, member, !isObserved);
    if (isObserved)
    {
        markStale(*member);
    }
}

void IndexedConversations::keysChanged(Conversation* conversation)
{
    Member* member = areAllStale_ ? nullptr : members_.find(conversation);
    if (member && member->isObserved)
    {
        markStale(*member);
    }
}

void IndexedConversations::markStale(Member& member)
{
    if (areAllStale_)
    {
        return;
    }
    if (!member.isStale)
    {
        member.isStale = true;
        stale_.push_back(&member);
    }
    if (!member.hasStaleNumbers && !areAllNumbersStale_)
    {
        member.hasStaleNumbers = true;
        staleNumbers_.push_back(&member);
    }
}

/** The first question since the list was empty: from now on it is known which members are stale. */
void IndexedConversations::refreshAllMembers()
{
    areAllStale_ = false;
    byId_.reserve(expected_);
    for (std::size_t place = 0; place < inOrder().size(); ++place)
    {
        if (sequence_.at(place).isObserved)
        {
            refresh(sequence_.at(place));
        }
    }
}

void IndexedConversations::refreshStaleMembers()
{
    if (areAllStale_)
    {
        refreshAllMembers();
    }
    for (Member* member : stale_)
    {
        if (member->isStale)
        {
            refresh(*member);
        }
    }
    stale_.clear();
    if (staleNumbers_.size() > 2 * inOrder().size()) // of members that have left, before anybody asked for a number
    {
        refreshStaleNumbers();
    }
}

/** The first question for a number since the list was empty. */
void IndexedConversations::refreshAllNumbers()
{
    areAllNumbersStale_ = false;
    for (std::size_t place = 0; place < inOrder().size(); ++place)
    {
        if (sequence_.at(place).isObserved)
        {
            refreshNumbers(sequence_.at(place));
        }
    }
}

void IndexedConversations::refreshStaleNumbers()
{
    if (areAllNumbersStale_)
    {
        refreshAllNumbers();
    }
    for (Member* member : staleNumbers_)
    {
        if (member->hasStaleNumbers)
        {
            refreshNumbers(*member);
        }
    }
    staleNumbers_.clear();
}

void IndexedConversations::refreshNumbers(Member& member)
{
    member.hasStaleNumbers = false;
    if (!member.contact.sharesWith(member.conversation->contactDetails()))
    {
        eraseContact(byNumber_, member);
        member.contact = member.conversation->contactDetails();
        insertContact(byNumber_, member);
    }
}

void IndexedConversations::refresh(Member& member)
{
    const Conversation& conversation = *member.conversation;
    member.isStale = false;
    sequence_.changed(member);
    if (member.isAnonymous != (conversation.getLastName() == ANONYMOUS_NAME))
    {
        member.isAnonymous = !member.isAnonymous;
        setMembership(anonymous_, &member, member.isAnonymous);
    }
    const bool isPhantom = conversation.isPhantomConversation();
    reindex(byId_, member, member.idHash,
            isPhantom ? hashOfText(conversation.getConversationId()) : conversation.storedIdText().hash());
    reindex(byExchangeContactId_, member, member.exchangeContactIdHash, conversation.exchangeContactIdText().hash());
    if (!member.callIds->empty() || member.isLive || !conversation.holdsOnlyPlainItems())
    {
        refreshCallIds(member);
    }
}

/** Of another key with the same hash the index would not know the difference. */
void IndexedConversations::reindex(Index& index, Member& member, std::uint32_t& hash, std::uint32_t newHash)
{
    if (hash == newHash)
    {
        return;
    }
    if (hash != 0)
    {
        index.removeHash(hash, &member);
    }
    hash = newHash;
    if (hash != 0)
    {
        index.addHash(hash, &member);
    }
}

void IndexedConversations::refreshCallIds(Member& member)
{
    std::vector<SharedText> callIds;
    for (const auto& item : member.conversation->items())
    {
        const SharedText& callId = item->callIdText();
        const bool isKnown = std::find(callIds.begin(), callIds.end(), callId) != callIds.end();
        if (!isKnown && (!callId.empty() || isLiveOrHeld(*item)))
        {
            callIds.push_back(callId);
        }
    }
    if (callIds != *member.callIds)
    {
        forgetCallIds(member);
        member.callIds.write() = std::move(callIds);
        for (const SharedText& callId : *member.callIds)
        {
            byCallId_.add(callId, &member);
        }
    }
    if (member.isLive != member.conversation->isActiveOrProgressingOrClearing())
    {
        member.isLive = !member.isLive;
        setMembership(live_, &member, member.isLive);
    }
}

void IndexedConversations::forgetCallIds(Member& member)
{
    for (const SharedText& callId : *member.callIds)
    {
        byCallId_.remove(callId, &member);
    }
    member.callIds.reset();
}

void IndexedConversations::insertContact(Index& index, Member& member)
{
    member.contact->numbers.forEach([&](const std::string& number) { index.add(number, &member); });
}

void IndexedConversations::eraseContact(Index& index, Member& member)
{
    member.contact->numbers.forEach([&](const std::string& number) { index.remove(number, &member); });
}

void IndexedConversations::forget(Member& member)
{
    eraseContact(byNumber_, member);
    reindex(byId_, member, member.idHash, 0);
    reindex(byExchangeContactId_, member, member.exchangeContactIdHash, 0);
    forgetCallIds(member);
    unobserved_.erase(&member);
    anonymous_.erase(&member);
    live_.erase(&member);
}
} // namespace ConversationAPI
