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

FoundContacts::FoundContacts(const ConversationList& stored, NotificationRound& round) : stored_(stored), round_(round)
{
}

Conversation* FoundContacts::findStored(const Conversation& contact) const
{
    return findConversationOf(stored_, contact);
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

void FoundContacts::appendIds(std::vector<std::string>& ids) const
{
    directory_.getInUseConversationIds(ids);
    webService_.getInUseConversationIds(ids);
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
    const Conversation* known = findStored(*found);
    if (!known)
    {
        known = find(found->getConversationId()); // two entries of one person
    }
    return known ? known->getConversationId() : append(directory_, std::move(found))->getConversationId();
}

std::string FoundContacts::addWebServiceResult(Made found)
{
    if (const Conversation* stored = findStored(*found))
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

Conversation* FoundContacts::takeDirectoryHit(Made hit)
{
    Conversation* known = findConversationOf(directory_, *hit);
    if (known)
    {
        CONVERSATION_LOG(5, "directorySearchResponseEvent: found existing matching contact, let's merge them together");
        mergeContact(*known, *hit);
        return known;
    }
    Conversation* added = append(directory_, std::move(hit));
    CONVERSATION_LOG(5, "directorySearchResponseEvent[id=[%p]%s]", static_cast<void*>(added),
                     added->getShortConversationId().c_str());
    return added;
}

/**
 * A stored contact that only has the number in common is the user's own entry, and may be a colleague's who shares the
 * line: the web service tells its presence and nothing else.
 */
Conversation* FoundContacts::takeWebServiceContact(Made contact)
{
    if (Conversation* stored = findStored(*contact))
    {
        stored->setPresenceState(contact->getPresenceState());
        return stored;
    }
    Conversation* known = findConversationOf(webService_, *contact);
    if (!known)
    {
        return append(webService_, std::move(contact));
    }
    if (known->isOtherContactThan(*contact))
    {
        mergeContact(*known, *contact);
    }
    else
    {
        takeNews(*known, *contact);
    }
    return known;
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
            CONVERSATION_LOG(6, "find and delete temp id=%s", found.getConversationId().c_str());
        }
        return found.isTemporary();
    };
    retireIf(directory_, round_, isTemporary);
    retireIf(webService_, round_, isTemporary);
}
} // namespace ConversationAPI
