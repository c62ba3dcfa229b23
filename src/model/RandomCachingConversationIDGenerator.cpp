#include "ConversationAPI/RandomCachingConversationIDGenerator.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationSourceIfc.h"
#include "ConversationAPI/IdsInUseIfc.h"
#include "Log.h"
#include "model/ConversationIDCache.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iterator>

namespace ConversationAPI
{
namespace
{
constexpr const char* ID_GENERATOR_LOG_FILE = "./src/RandomCachingConversationIDGenerator";

// The digit 0 stands in it twice and is drawn twice as often: identifiers have always been made so.
constexpr char ALPHABET[] = "01234567890ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr int ALPHABET_LENGTH = sizeof ALPHABET - 1;
constexpr int ID_LENGTH = 36;

bool isPlaceholder(const ConversationItem& item)
{
    return item.getState() == ConversationItemState::PLACEHOLDER;
}

/** Whether two placeholders stand for one contact: two contacts may well share a number. */
bool isSameContact(const ConversationItem& a, const ConversationItem& b)
{
    if (a.participants().empty() || b.participants().empty())
    {
        return true;
    }
    const ConversationParticipant& mine = a.participants().front();
    const ConversationParticipant& theirs = b.participants().front();
    const bool sameNames = mine.firstNameText() == theirs.firstNameText() && mine.surnameText() == theirs.surnameText();
    return sameNames || (mine.hasContactNumbers() && mine.hasSameContactNumbers(theirs));
}

/** Whether a placeholder says what is known of a contact. */
bool says(const ConversationItem& placeholder, const SharedText& exchangeContactId, const std::string& firstName,
          const std::string& lastName, const PartyNumbers& numbers)
{
    if (!isPlaceholder(placeholder) || placeholder.participants().size() != 1 ||
        placeholder.exchangeContactIdText() != exchangeContactId)
    {
        return false;
    }
    const ConversationParticipant& party = placeholder.participants().front();
    return party.firstNameText() == firstName && party.surnameText() == lastName && party.numbers() == numbers;
}

/** Whether two placeholders are of one contact of which nothing has changed. */
bool saysTheSame(const ConversationItem& a, const ConversationItem& b)
{
    if (!isPlaceholder(b) || b.participants().size() != 1)
    {
        return false;
    }
    const ConversationParticipant& party = b.participants().front();
    return says(a, b.exchangeContactIdText(), party.firstNameText(), party.surnameText(), party.numbers());
}

/** Remembered by one of its calls, a contact would not be recognised by its other numbers. */
bool isCallOfContact(const ConversationItem& item, const ConversationItem& known)
{
    return isPlaceholder(known) && !isPlaceholder(item) && known.isSameConversationAs(item);
}

/** Of the ids that the source, which may be null, uses. */
void appendIdHashes(ConversationSourceIfc* source, std::vector<std::uint32_t>& hashes)
{
    if (const auto* holder = dynamic_cast<const IdsInUseIfc*>(source))
    {
        holder->appendIdHashes(hashes);
    }
    else if (source)
    {
        const std::vector<std::string> ids = source->getInUseConversationIds();
        std::transform(ids.begin(), ids.end(), std::back_inserter(hashes), hashOfText);
    }
}
} // namespace

bool RandomCachingConversationIDGenerator::isSameConversation(const ConversationItem* cached,
                                                              const ConversationItem* candidate)
{
    return cached->isSameConversationAs(*candidate) &&
           (!isPlaceholder(*cached) || !isPlaceholder(*candidate) || isSameContact(*cached, *candidate));
}

bool RandomCachingConversationIDGenerator::isSameConversationAtSameTime(const ConversationItem* cached,
                                                                        const ConversationItem* candidate)
{
    return cached->isSameConversationAs(*candidate) && cached->timeStampUTC() == candidate->timeStampUTC();
}

RandomCachingConversationIDGenerator::RandomCachingConversationIDGenerator()
    : RandomCachingConversationIDGenerator(&RandomCachingConversationIDGenerator::isSameConversation)
{
}

RandomCachingConversationIDGenerator::RandomCachingConversationIDGenerator(SamenessTest test)
    : cache_(
          std::make_unique<ConversationIDCache>(test == &isSameConversation || test == &isSameConversationAtSameTime)),
      test_(test)
{
}

RandomCachingConversationIDGenerator::~RandomCachingConversationIDGenerator() = default;

std::string RandomCachingConversationIDGenerator::getConversationID(Conversation* conversation)
{
    return getSharedConversationID(conversation).str();
}

std::string RandomCachingConversationIDGenerator::knownConversationID(Conversation* conversation)
{
    const CriticalSection guard(lock_);
    return findConversationIDForItem(conversation);
}

SharedText RandomCachingConversationIDGenerator::getSharedConversationID(Conversation* conversation)
{
    const CriticalSection guard(lock_);
    const ConversationItem* item = conversation ? conversation->shownItem() : nullptr;
    if (!item)
    {
        return SharedText(generateConversationId());
    }
    const ConversationIDCache::Entry* known = cache_->findFirst(*item, test_);
    if (!known)
    {
        SharedText newId(generateConversationId());
        cache_->put(newId, item->copy());
        CONVERSATION_LOG(ID_GENERATOR_LOG_FILE, 6, "getConversationID new id [%s]", newId.str().c_str());
        return newId;
    }
    SharedText id = known->id;
    // A contact is remembered as such, with all its numbers, even where one of its calls came first: otherwise the
    // next contact that shares the call's number would be taken for this one.
    const bool isNewsOfContact = isPlaceholder(*item) && !isPlaceholder(*known->item);
    if (isNewsOfContact || itemNeedsUpdating(known->item.get(), item))
    {
        cache_->put(id, item->copy());
    }
    CONVERSATION_LOG(ID_GENERATOR_LOG_FILE, 6, "getConversationID [%s]", id.str().c_str());
    return id;
}

/**
 * A replaced entry goes to the end, where a walk by index meets it once more and replaces it again: the log
 * tells of two updates, and readers of logs count on the pair. Only the last entry is not met again.
 */
void RandomCachingConversationIDGenerator::updateCache(const std::string& id, ConversationItem* item)
{
    const CriticalSection guard(lock_);
    const ConversationIDCache::Entry* entry = item ? cache_->find(id) : nullptr;
    if (!entry)
    {
        return;
    }
    const bool wasLast = entry == &cache_->entries().back();
    cache_->put(SharedText(entry->id), item->copy());
    for (int updates = wasLast ? 1 : 2; updates > 0; --updates)
    {
        CONVERSATION_LOG(ID_GENERATOR_LOG_FILE, 6, "updateCache updated id [%s]", id.c_str());
    }
}

void RandomCachingConversationIDGenerator::garbageCollect()
{
    const CriticalSection guard(lock_);
    if (cache_->empty())
    {
        return;
    }
    std::vector<std::uint32_t> inUse;
    for (ConversationSourceIfc* source : sources_)
    {
        appendIdHashes(source, inUse);
    }
    // That two ids have one hash is all but impossible, and only keeps one that nobody needs.
    cache_->removeUnused(inUse,
                         [](const std::string& id) {
                             CONVERSATION_LOG(ID_GENERATOR_LOG_FILE, 6, "garbageCollect removing id [%s]", id.c_str());
                         });
}

void RandomCachingConversationIDGenerator::remember(const std::string& id, const ConversationItem* item)
{
    {
        const CriticalSection guard(lock_);
        const ConversationIDCache::Entry* known = item && !id.empty() ? cache_->find(id) : nullptr;
        if (known && (saysTheSame(*known->item, *item) || isCallOfContact(*item, *known->item)))
        {
            return;
        }
        if (item && !id.empty() && !known && isPlaceholder(*item))
        {
            cache_->put(SharedText(id), item->copy());
            return;
        }
    }
    ConversationIDGenerator::remember(id, item);
}

bool RandomCachingConversationIDGenerator::remembersContact(const SharedText& id,
                                                            const ConversationContact& contact) const
{
    const CriticalSection guard(lock_);
    const ConversationIDCache::Entry* known = cache_->find(id);
    const ContactDetails& details = *contact.contactDetails();
    return known &&
           says(*known->item, contact.exchangeContactIdText(), details.firstName, details.lastName, details.numbers);
}

void RandomCachingConversationIDGenerator::expect(const std::vector<const ConversationItem*>& items,
                                                  std::vector<std::uint32_t>& likelyIds) const
{
    const CriticalSection guard(lock_);
    cache_->expect(items, likelyIds);
}

void RandomCachingConversationIDGenerator::expectIds(const std::vector<std::uint32_t>& idHashes) const
{
    const CriticalSection guard(lock_);
    cache_->expectIds(idHashes);
}

void RandomCachingConversationIDGenerator::callEnded(const std::string& id, const std::string& callId,
                                                     const ConversationItem* remaining)
{
    const CriticalSection guard(lock_);
    const ConversationIDCache::Entry* entry = remaining ? cache_->find(id) : nullptr;
    if (entry && entry->item->getCallId() == callId)
    {
        cache_->put(SharedText(entry->id), remaining->copy());
    }
}

void RandomCachingConversationIDGenerator::callJoinedOther(const std::string& id)
{
    const CriticalSection guard(lock_);
    const ConversationIDCache::Entry* entry = cache_->find(id);
    if (entry && !isPlaceholder(*entry->item))
    {
        cache_->remove(id);
    }
}

bool RandomCachingConversationIDGenerator::isRememberedAs(const std::string& id, const ConversationItem& item) const
{
    const CriticalSection guard(lock_);
    const ConversationIDCache::Entry* entry = cache_->find(id);
    return entry && test_(entry->item.get(), &item);
}

void RandomCachingConversationIDGenerator::setConversationSources(const std::vector<ConversationSourceIfc*>& sources)
{
    sources_ = sources;
}

bool RandomCachingConversationIDGenerator::remembers(const ConversationItem& item) const
{
    const CriticalSection guard(lock_);
    return cache_->findFirst(item, test_) != nullptr;
}

std::string RandomCachingConversationIDGenerator::findConversationIDForItem(Conversation* conversation)
{
    const ConversationItem* item = conversation ? conversation->shownItem() : nullptr;
    if (!item)
    {
        return {};
    }
    const ConversationIDCache::Entry* entry = cache_->findFirst(*item, test_);
    return entry ? entry->id.str() : std::string();
}

int RandomCachingConversationIDGenerator::getIndexOfConversationItem(const std::string& id)
{
    int index = 0;
    for (const auto& entry : cache_->entries())
    {
        if (entry.id.view() == id)
        {
            return index;
        }
        ++index;
    }
    return -1;
}

bool RandomCachingConversationIDGenerator::itemNeedsUpdating(const ConversationItem* cached,
                                                             const ConversationItem* fresh)
{
    return cached && fresh && cached->callIdText() == fresh->callIdText() && !cached->doParticipantsMatch(*fresh);
}

std::string RandomCachingConversationIDGenerator::generateConversationId() const
{
    std::string id;
    id.reserve(ID_LENGTH);
    for (int i = 0; i < ID_LENGTH; ++i)
    {
        id += ALPHABET[std::rand() % ALPHABET_LENGTH];
    }
    return id;
}
} // namespace ConversationAPI
