#include "sources/FoundContacts.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/GatherTemporaryConversationIds.h"
#include "ConversationAPI/NotificationRound.h"
#include "Log.h"
#include "sources/ContactConversations.h"
#include "sources/DirectoryServiceConversationSourceLog.h"

namespace ConversationAPI
{
using namespace ConversationListConditions;

namespace
{
/** Thousands of results go at once: they are not taken out one by one. */
template <typename Condition>
void retireIf(ConversationList& list, NotificationRound& round, Condition goes)
{
    const std::vector<Conversation*> all(list.begin(), list.end());
    list.clear();
    for (Conversation* conversation : all)
    {
        if (goes(*conversation))
        {
            round.retire(conversation);
        }
        else
        {
            list.push_back(conversation);
        }
    }
}

Conversation* append(ConversationList& list, FoundContacts::Made found)
{
    Conversation* added = found.release();
    list.push_back(added);
    return added;
}
} // namespace

FoundContacts::FoundContacts(ContactConversations& maker, const ConversationList& stored, NotificationRound& round)
    : maker_(maker), stored_(stored), round_(round)
{
}

Conversation* FoundContacts::find(const std::string& conversationId) const
{
    const ConversationIDCondition hasId(conversationId);
    Conversation* hit = directory_.find(hasId);
    return hit ? hit : webService_.find(hasId);
}

bool FoundContacts::contains(Conversation* conversation) const
{
    return directory_.contains(conversation) || webService_.contains(conversation);
}

bool FoundContacts::isOthers(const std::string& conversationId, const Conversation& contact) const
{
    const Conversation* holder = find(conversationId);
    const ConversationItem* item = contact.shownItem();
    return holder && !(item && holder->claims(*item) && haveSameName(*holder, contact));
}

void FoundContacts::appendIds(std::vector<std::string>& ids) const
{
    directory_.getInUseConversationIds(ids);
    webService_.getInUseConversationIds(ids);
}

void FoundContacts::appendIdHashes(std::vector<std::uint32_t>& hashes) const
{
    directory_.appendIdHashes(hashes);
    webService_.appendIdHashes(hashes);
}

std::vector<std::string> FoundContacts::temporaryIds() const
{
    ConversationListExecutors::GatherTemporaryConversationIds gather;
    directory_.foreach (gather);
    webService_.foreach (gather);
    return gather.ids;
}

Conversation* FoundContacts::webServiceContactOf(const std::string& searchId, const std::string& number) const
{
    return number.empty() ? nullptr : webService_.findBySearchIdWithNumber(searchId, number);
}

std::string FoundContacts::addDirectoryResult(Made found)
{
    const Conversation* known = findPerson(stored_, *found);
    if (!known)
    {
        known = findPerson(directory_, *found, haveSameName); // two entries of one person
    }
    return known ? known->getConversationId() : append(directory_, std::move(found))->getConversationId();
}

std::string FoundContacts::addWebServiceResult(Made found)
{
    if (const Conversation* stored = findPerson(stored_, *found))
    {
        return stored->getConversationId();
    }
    Conversation* known = find(found->getConversationId());
    if (!known)
    {
        return append(webService_, std::move(found))->getConversationId();
    }
    takeNews(*known, *found);
    return known->getConversationId();
}

/** Who answers to a call's number is its caller: of others with the number, only the first is shown. */
Conversation* FoundContacts::takeDirectoryHit(Made hit)
{
    Conversation* known = findConversationOf(directory_, *hit);
    if (known)
    {
        CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5,
                         "directorySearchResponseEvent: found existing matching contact, let's merge them together");
        if (haveSameName(*known, *hit))
        {
            maker_.complete(*known, contactOfConversation(*hit));
        }
        else
        {
            mergeContact(*known, *hit);
        }
        return known;
    }
    Conversation* added = append(directory_, std::move(hit));
    CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 5, "directorySearchResponseEvent[id=[%p]%s]", static_cast<void*>(added),
                     added->getShortConversationId().c_str());
    return added;
}

/** What the user has stored is the user's own: the web service fills in what that lacks, and tells the presence. */
Conversation* FoundContacts::takeWebServiceContact(Made contact)
{
    if (Conversation* stored = findPerson(stored_, *contact))
    {
        maker_.addWSINews(*stored, *contact);
        return stored;
    }
    if (Conversation* known = webService_.find(ConversationIDCondition(contact->getConversationId())))
    {
        takeNews(*known, *contact);
        return known;
    }
    Conversation* namesake = findPerson(webService_, *contact, haveSameName);
    if (!namesake)
    {
        return append(webService_, std::move(contact));
    }
    maker_.addWSINews(*namesake, *contact);
    return namesake;
}

bool FoundContacts::removeWebServiceContact(const std::string& conversationId)
{
    Conversation* contact = webService_.find(ConversationIDCondition(conversationId));
    if (contact)
    {
        webService_.pop(contact);
        round_.retire(contact);
    }
    return contact != nullptr;
}

void FoundContacts::keepOnly(const std::string& searchId)
{
    const auto isOfOther = [&searchId](const Conversation& found) { return found.getSearchId() != searchId; };
    retireIf(directory_, round_, isOfOther);
    retireIf(webService_, round_, isOfOther);
}

void FoundContacts::clearTemporary()
{
    const auto isTemporary = [](const Conversation& found)
    {
        if (found.isTemporary())
        {
            CONVERSATION_LOG(DIRECTORY_SOURCE_LOG_FILE, 6, "find and delete temp id=%s",
                             found.getConversationId().c_str());
        }
        return found.isTemporary();
    };
    retireIf(directory_, round_, isTemporary);
    retireIf(webService_, round_, isTemporary);
}
} // namespace ConversationAPI
