#include "ConversationAPI/ConversationList.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationExecutor.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/ConversationUnaryCondition.h"
#include "ConversationAPI/WellKnownNames.h"
#include "lists/AlphabeticalOrder.h"
#include "lists/IndexedConversations.h"
#include "lists/NumberIndex.h"
#include "model/Prefetch.h"

#include <algorithm>
#include <iterator>

namespace ConversationAPI
{
ConversationList::ConversationList()
    : conversations_(std::make_unique<IndexedConversations>()), numbers_(std::make_unique<NumberIndex>())
{
}

ConversationList::~ConversationList()
{
    removeAndDeleteAll();
}

const std::vector<Conversation*>& ConversationList::sequence() const
{
    return conversations_->inOrder();
}

void ConversationList::conversationNumberUpdated(numberUpdateReason reason, Conversation* conversation,
                                                 std::string first, std::string second)
{
    switch (reason)
    {
    case numberUpdateReason::UPDATED:
        numbers_->remove(second);
        numbers_->associate(first, conversation);
        break;
    case numberUpdateReason::ADDED:
        numbers_->associate(first, conversation);
        break;
    case numberUpdateReason::DELETED:
        numbers_->remove(second);
        break;
    case numberUpdateReason::DUMMY:
        if (first.empty() && second.empty())
        {
            for (const std::string& number : conversation->getConversationNumbers())
            {
                numbers_->associate(number, conversation);
            }
        }
        else
        {
            numbers_->associate(second, conversation);
        }
        break;
    }
}

void ConversationList::conversationRegistered(Conversation* conversation)
{
    numbers_->associate(conversation);
    conversations_->setObserved(conversation, true);
}

void ConversationList::conversationUnregistered(Conversation* conversation)
{
    numbers_->remove(conversation);
    conversations_->setObserved(conversation, false);
}

void ConversationList::conversationModified(const std::string& conversationId)
{
    modified_.insert(conversationId);
}

void ConversationList::conversationKeysChanged(Conversation* conversation)
{
    conversations_->keysChanged(conversation);
}

void ConversationList::reserve(std::size_t count)
{
    const CriticalSection guard(lock_);
    conversations_->reserve(count);
    numbers_->reserve(count);
}

void ConversationList::push_back(Conversation* conversation)
{
    const CriticalSection guard(lock_);
    if (!conversation || conversation->isPhantomConversation() || holds(*conversation))
    {
        return;
    }
    conversation->addObserver(this);
    if (conversation->getLastName() == ANONYMOUS_NAME)
    {
        anonymous_ = conversation;
    }
    conversations_->pushBack(conversation, true);
}

void ConversationList::push_front(Conversation* conversation)
{
    const CriticalSection guard(lock_);
    pushFront(conversation);
}

/** Of one that is alive; nearly all that are asked about are new, which they tell themselves. */
bool ConversationList::holds(Conversation& conversation) const
{
    return (conversation.isObservedBy(this) || conversations_->hasUnobserved()) &&
           conversations_->contains(&conversation);
}

void ConversationList::pushFront(Conversation* conversation)
{
    if (conversation && !holds(*conversation))
    {
        conversation->addObserver(this);
        conversations_->pushFront(conversation, true);
    }
}

void ConversationList::push_back_phantom(Conversation* conversation)
{
    const CriticalSection guard(lock_);
    if (!phantom_ && conversation && conversation->isPhantomConversation() && !conversations_->contains(conversation))
    {
        phantom_ = conversation;
        conversations_->pushBack(conversation, false);
    }
}

void ConversationList::moveConversationToTop(unsigned index)
{
    const CriticalSection guard(lock_);
    if (index >= sequence().size())
    {
        return;
    }
    Conversation* conversation = sequence()[index];
    conversations_->removeAt(index);
    pushFront(conversation);
}

Conversation* ConversationList::atIndex(unsigned index) const
{
    const CriticalSection guard(lock_);
    return index < sequence().size() ? sequence()[index] : nullptr;
}

std::size_t ConversationList::size() const
{
    const CriticalSection guard(lock_);
    return sequence().size();
}

bool ConversationList::empty() const
{
    const CriticalSection guard(lock_);
    return sequence().empty();
}

bool ConversationList::contains(Conversation* conversation) const
{
    const CriticalSection guard(lock_);
    return conversations_->contains(conversation);
}

std::size_t ConversationList::indexOf(Conversation* conversation) const
{
    const CriticalSection guard(lock_);
    return conversations_->position(conversation);
}

ConversationList::iterator ConversationList::begin()
{
    return sequence().begin();
}

ConversationList::iterator ConversationList::end()
{
    return sequence().end();
}

ConversationList::const_iterator ConversationList::begin() const
{
    return sequence().begin();
}

ConversationList::const_iterator ConversationList::end() const
{
    return sequence().end();
}

Conversation* ConversationList::find(const ConversationUnaryCondition& condition) const
{
    const CriticalSection guard(lock_);
    return conversations_->findFirst(condition);
}

std::pair<Conversation*, unsigned> ConversationList::findWithIndex(const ConversationUnaryCondition& condition) const
{
    const CriticalSection guard(lock_);
    Conversation* found = conversations_->findFirst(condition);
    return {found, static_cast<unsigned>(conversations_->position(found))};
}

void ConversationList::foreach (ConversationExecutor& executor) const
{
    const CriticalSection guard(lock_);
    for (std::size_t place = 0; place < sequence().size(); ++place)
    {
        prefetchAhead<Needed::FIRST_ITEMS>(sequence(), place);
        executor(sequence()[place]);
    }
}

Conversation* ConversationList::findByNumber(const std::string& number) const
{
    const CriticalSection guard(lock_);
    Conversation* found = number.empty() ? nullptr : numbers_->find(number);
    return found && !found->isGroupCall() ? found : nullptr;
}

Conversation* ConversationList::findBySearchIdWithNumber(const std::string& searchId, const std::string& number) const
{
    const CriticalSection guard(lock_);
    return numbers_->findFirst(
        [&](const Conversation& conversation)
        {
            return conversation.getSearchId() == searchId && conversation.getWorkNumber1() == number &&
                   !conversation.getSearchIdUsed();
        });
}

Conversation* ConversationList::findByConversationId(const std::string& id) const
{
    return numbers_->findLast([&id](const Conversation& conversation)
                              { return conversation.getConversationId() == id; });
}

void ConversationList::getInUseConversationIds(std::vector<std::string>& ids) const
{
    ids.reserve(ids.size() + sequence().size());
    for (std::size_t place = 0; place < sequence().size(); ++place)
    {
        prefetchAhead<Needed::OWNERS>(sequence(), place);
        ids.push_back(sequence()[place]->getConversationId());
    }
}

void ConversationList::appendIdHashes(std::vector<std::uint32_t>& hashes) const
{
    conversations_->appendIdHashes(hashes);
}

void ConversationList::expectIds(const std::vector<std::uint32_t>& idHashes) const
{
    conversations_->expectIds(idHashes);
}

Conversation* ConversationList::getAnonymousConversation() const
{
    const CriticalSection guard(lock_);
    return anonymous_;
}

void ConversationList::sort()
{
    const CriticalSection guard(lock_);
    conversations_->sort();
}

void ConversationList::sortAlphabetically()
{
    const CriticalSection guard(lock_);
    conversations_->reorder(inAlphabeticalOrder(sequence()));
}

ConversationList::ConversationSet ConversationList::asSet() const
{
    const CriticalSection guard(lock_);
    return ConversationSet(sequence().begin(), sequence().end(), ConversationListComparison(sequence()));
}

void ConversationList::setAllConversationsAsViewed()
{
    const CriticalSection guard(lock_);
    for (Conversation* conversation : sequence())
    {
        const ConversationItemState state = conversation->getState();
        if (state == ConversationItemState::MISSED || state == ConversationItemState::MISSED_GROUP_CALL)
        {
            conversation->setAllItemsAsViewed();
        }
    }
}

std::pair<int, int> ConversationList::getCurrentEventNotifications() const
{
    const CriticalSection guard(lock_);
    int missed = 0;
    int voicemails = 0;
    for (const Conversation* conversation : sequence())
    {
        const int newEvents = conversation->numberOfNewEvents();
        const ConversationItemState state = conversation->getState();
        if (newEvents != 0 && state == ConversationItemState::VOICEMAIL)
        {
            voicemails = newEvents;
        }
        const bool isMissed = state == ConversationItemState::MISSED ||
                              state == ConversationItemState::MISSED_ANSWERED_ELSEWHERE ||
                              state == ConversationItemState::MISSED_GROUP_CALL;
        if (newEvents != 0 && isMissed)
        {
            ++missed;
        }
    }
    return {missed, voicemails};
}

/** Out of the sequence and of everything that points to it; the caller decides what becomes of it. */
Conversation* ConversationList::detach(std::size_t position)
{
    Conversation* conversation = sequence()[position];
    modified_.remove(conversation->getConversationId());
    conversations_->removeAt(position);
    conversation->removeObserver(this);
    numbers_->remove(conversation);
    if (anonymous_ == conversation)
    {
        anonymous_ = nullptr;
    }
    if (phantom_ == conversation)
    {
        phantom_ = nullptr;
    }
    return conversation;
}

Conversation* ConversationList::detach(Conversation* conversation)
{
    return conversations_->contains(conversation) ? detach(conversations_->position(conversation)) : nullptr;
}

void ConversationList::pop(Conversation* conversation)
{
    const CriticalSection guard(lock_);
    detach(conversation);
}

void ConversationList::remove(Conversation* conversation)
{
    const CriticalSection guard(lock_);
    delete detach(conversation);
}

void ConversationList::erase(Conversation* conversation)
{
    const CriticalSection guard(lock_);
    if (!conversation)
    {
        return;
    }
    const std::string id = conversation->getConversationId();
    std::size_t position = conversations_->position(conversation);
    if (!id.empty())
    {
        const ConversationListConditions::ConversationIDCondition sameId(id);
        position = std::min(position, conversations_->position(conversations_->findFirst(sameId)));
    }
    if (position < sequence().size())
    {
        delete detach(position);
    }
}

void ConversationList::removeConversationAndDelete(unsigned index)
{
    const CriticalSection guard(lock_);
    if (index < sequence().size())
    {
        delete detach(index);
    }
}

std::vector<Conversation*> ConversationList::matching(const ConversationUnaryCondition& condition) const
{
    std::vector<Conversation*> found;
    std::copy_if(sequence().begin(), sequence().end(), std::back_inserter(found),
                 [&condition](Conversation* conversation) { return condition(conversation); });
    return found;
}

void ConversationList::findAndRemoveConversationsThatMatch(const ConversationUnaryCondition& condition)
{
    const CriticalSection guard(lock_);
    for (Conversation* conversation : matching(condition))
    {
        detach(conversation);
    }
}

void ConversationList::findAndDeleteConversationsThatMatch(const ConversationUnaryCondition& condition)
{
    const CriticalSection guard(lock_);
    for (Conversation* conversation : matching(condition))
    {
        delete detach(conversation);
    }
}

void ConversationList::forgetAll()
{
    numbers_->clear();
    anonymous_ = nullptr;
    phantom_ = nullptr;
}

/**
 * In the order of their memory, and what the list remembers of each together with it: both share texts, which would
 * otherwise have to be fetched twice.
 */
void ConversationList::removeAndDeleteAll()
{
    const CriticalSection guard(lock_);
    ListMembers::Detached members = conversations_->detachAll();
    forgetAll();
    std::vector<Conversation*> all;
    all.reserve(members.size());
    std::transform(members.begin(), members.end(), std::back_inserter(all),
                   [](const ListMember& member) { return member.conversation; });
    all.erase(std::remove(all.begin(), all.end(), nullptr), all.end());
    std::size_t place = 0;
    for (ListMember& member : members)
    {
        if (member.conversation)
        {
            prefetchAhead<Needed::EVERYTHING>(all, place++);
            delete member.conversation;
            member = ListMember();
        }
    }
}

void ConversationList::clear()
{
    const CriticalSection guard(lock_);
    const std::vector<Conversation*> all = sequence();
    conversations_->clear();
    forgetAll();
    for (Conversation* conversation : all)
    {
        conversation->removeObserver(this);
    }
}

ModifiedConversationsList::Ids ConversationList::getModifiedConversations() const
{
    const CriticalSection guard(lock_);
    return modified_.getModifiedConversations();
}

void ConversationList::clearModifiedConversations()
{
    modified_.clear();
}

std::string ConversationList::toString() const
{
    const CriticalSection guard(lock_);
    std::string text = "ConversationList[" + std::to_string(sequence().size()) + "]";
    for (const Conversation* conversation : sequence())
    {
        text += conversation->toDebugString();
    }
    return text + "\n";
}
} // namespace ConversationAPI
